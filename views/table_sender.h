// SPDX-License-Identifier: MIT

#ifndef VIEWS_TABLE_SENDER_H_
#define VIEWS_TABLE_SENDER_H_

#include <optional>

#include "switcher/table.h"

namespace views {

// Sends tables of the configuration to the switcher, each at once and to its end.  Whoever calls
// switches the poll off around it where that is wanted.
class TableSender {
 public:
  virtual ~TableSender() = default;

  // Sends what `part` names: the inhibits or relays of an output, the buttons of a station, or a
  // whole table.  Of the optos and of the labels there are no parts.  Returns how many messages
  // were handed to the line; nothing after a failure, which is reported to the operator here.
  virtual std::optional<int> Send(const switcher::TablePart& part) = 0;
};

}  // namespace views

#endif  // VIEWS_TABLE_SENDER_H_
