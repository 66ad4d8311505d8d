// SPDX-License-Identifier: MIT

#ifndef VIEWS_TABLE_SENDER_H_
#define VIEWS_TABLE_SENDER_H_

namespace views {

// Sends tables of the configuration to the switcher, each at once and to its end.  Whoever
// calls switches the poll off around it where that is wanted.  A failure is reported to the
// operator here; the operation then returns false.
class TableSender {
 public:
  virtual ~TableSender() = default;

  // The labels of `selector`, switcher::kOutputLabels or kInputLabels.
  virtual bool SendLabels(int selector) = 0;

  // The table of one output or station (from 1), or of all with model::kAll.
  virtual bool SendInhibits(int output) = 0;
  virtual bool SendRelays(int station) = 0;
  virtual bool SendButtons(int station) = 0;

  // All optos.
  virtual bool SendOptos() = 0;
};

}  // namespace views

#endif  // VIEWS_TABLE_SENDER_H_
