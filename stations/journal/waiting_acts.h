// SPDX-License-Identifier: MIT

#ifndef STATIONS_JOURNAL_WAITING_ACTS_H_
#define STATIONS_JOURNAL_WAITING_ACTS_H_

#include <cstddef>
#include <deque>
#include <string>

namespace stations {

// Acts that are not in the journal's file yet, as WriteAct() writes them, the oldest first.
//
// A disk may be full for days.  When they are many they are folded: every field keeps what it held
// before all of them and what it holds after, so that they take no more room than a few copies of
// the records, and nothing is lost but the steps in between.
class WaitingActs {
 public:
  // They are folded when they have more bytes than this, or than twice what the last folding left.
  static constexpr std::size_t kMostBytes = 2 << 20;

  void Add(std::string act);

  bool IsEmpty() const { return acts_.empty(); }
  const std::deque<std::string>& Acts() const { return acts_; }

  // REQUIRES: !IsEmpty()
  const std::string& First() const { return acts_.front(); }
  void RemoveFirst();

  void Clear();

 private:
  void Fold();

  std::deque<std::string> acts_;
  std::size_t bytes_ = 0;
  std::size_t most_ = kMostBytes;
};

}  // namespace stations

#endif  // STATIONS_JOURNAL_WAITING_ACTS_H_
