// SPDX-License-Identifier: MIT
//
// What is called the same wherever the console speaks of it.

#ifndef VIEWS_WORDS_H_
#define VIEWS_WORDS_H_

#include <QString>
#include <chrono>
#include <cstdint>
#include <span>

#include "switcher/table.h"

namespace views {

// A table: "inhibits".
QString TableName(switcher::Table table);

// What a part of the tables is of: "inhibits", "buttons 12".
QString TableWords(const switcher::TablePart& part);

// The same when it was sent in so many messages: "inhibits, 64 outputs", "buttons 12".
QString SentTableWords(const switcher::TablePart& part, int messages);

// Messages of tables, which rise: "station labels, inhibits of outputs 3, 5 to 9, buttons of
// station 12".
QString PartWords(std::span<const switcher::TablePart> parts);

// A day: "21 Nov", or "21 Nov 2025" when it is not of this year.
QString DayWords(const std::chrono::year_month_day& day);

// A byte: "0xCD".
QString ByteWords(std::uint8_t byte);

}  // namespace views

#endif  // VIEWS_WORDS_H_
