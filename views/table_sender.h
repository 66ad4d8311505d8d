// SPDX-License-Identifier: MIT

#ifndef VIEWS_TABLE_SENDER_H_
#define VIEWS_TABLE_SENDER_H_

#include <optional>

namespace views {

// Sends tables of the configuration to the switcher, each at once and to its end.  Whoever
// calls switches the poll off around it where that is wanted.  The operations return how many
// messages were handed to the line; nothing after a failure, which is reported to the operator
// here.
class TableSender {
 public:
  virtual ~TableSender() = default;

  // The labels of `selector`, switcher::kOutputLabels or kInputLabels.
  virtual std::optional<int> SendLabels(int selector) = 0;

  // The table of one output or station (from 1), or of all with model::kAll.
  virtual std::optional<int> SendInhibits(int output) = 0;
  virtual std::optional<int> SendRelays(int station) = 0;
  virtual std::optional<int> SendButtons(int station) = 0;

  // All optos.
  virtual std::optional<int> SendOptos() = 0;
};

}  // namespace views

#endif  // VIEWS_TABLE_SENDER_H_
