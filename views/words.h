// SPDX-License-Identifier: MIT
//
// What is called the same wherever the console speaks of it.

#ifndef VIEWS_WORDS_H_
#define VIEWS_WORDS_H_

#include <QString>
#include <cstdint>

#include "switcher/table.h"

namespace views {

// A table: "inhibits".
QString TableName(switcher::Table table);

// What a part of the tables is of: "inhibits", "buttons 12".
QString TableWords(const switcher::TablePart& part);

// The same when it was sent in so many messages: "inhibits, 64 outputs", "buttons 12".
QString SentTableWords(const switcher::TablePart& part, int messages);

// A byte: "0xCD".
QString ByteWords(std::uint8_t byte);

}  // namespace views

#endif  // VIEWS_WORDS_H_
