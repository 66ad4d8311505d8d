// SPDX-License-Identifier: MIT

#ifndef VIEWS_INHIBIT_SENDER_H_
#define VIEWS_INHIBIT_SENDER_H_

namespace views {

// Sends the table of crosspoint inhibits to the switcher.
class InhibitSender {
 public:
  virtual ~InhibitSender() = default;

  // Sends the inhibits of one output (from 1), or of all with model::kAll.  Reports a failure
  // to the operator itself; then returns false.
  virtual bool SendInhibits(int output) = 0;
};

}  // namespace views

#endif  // VIEWS_INHIBIT_SENDER_H_
