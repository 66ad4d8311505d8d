// SPDX-License-Identifier: MIT

#ifndef SWITCHER_UNSENT_CONFIRMATION_H_
#define SWITCHER_UNSENT_CONFIRMATION_H_

#include <map>
#include <vector>

#include "switcher/table.h"
#include "switcher/unsent/digest.h"

namespace switcher {

// Which messages the switcher has confirmed.  It does not acknowledge tables; but the poll behind
// them passes the same line, and when that and every poll since is answered, they arrived.  A gap
// in the answers may have swallowed a message, too.
class Confirmation {
 public:
  // So many polls may go by without an answer to all of them, then nothing is confirmed and their
  // answers are given up.  A link that is slow to answer is lost by then.
  static constexpr int kMostPolls = 10;

  // A message was handed to the line whole, while the switcher answered.  An earlier one of the
  // part is not confirmed any more: the switcher will not keep it.
  void Sent(const TablePart& part, Digest digest);

  // What was sent of the part counts no more.
  void Forget(const TablePart& part);

  // The switcher was polled, behind all that was sent.  Returns what is given up.
  std::vector<TablePart> Polled();

  // So many polls were answered.  Returns what is confirmed.
  std::map<TablePart, Digest> Answered(int answers);

  // The line is gone.  Returns what is given up.
  std::vector<TablePart> Lost();

  // Whether something waits to be confirmed.
  bool IsWaiting() const { return !sent_.empty() || !asked_.empty(); }

 private:
  std::map<TablePart, Digest> sent_;   // since the last poll
  std::map<TablePart, Digest> asked_;  // before it
  // Also while nothing is asked: the answer to an earlier poll says nothing of a later message.
  int polls_ = 0;       // since all were answered
  int unanswered_ = 0;  // of them
};

}  // namespace switcher

#endif  // SWITCHER_UNSENT_CONFIRMATION_H_
