// SPDX-License-Identifier: MIT

#ifndef STATIONS_HISTORY_H_
#define STATIONS_HISTORY_H_

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <vector>

#include "db/jet/database.h"
#include "model/status.h"
#include "stations/carry_out.h"
#include "stations/change.h"

namespace stations {

// What was stored at once, folded: at least one change, all of one origin.
using Step = std::vector<Change>;

// The steps of a run that can be taken back (Direction::Back) and done again (Direction::Again),
// the latest first.
//
// Edits and what is stored from an unsaved run, a comparison or a backup are steps; a new one ends
// what could be done again.  What navigation stores joins the newest step that led to what it found
// in a field, else it is a step of its own; it ends nothing.  What the switcher reports is none; it
// may make one stale.
class History : public ChangeObserver {
 public:
  // Above these the oldest steps go; the latest one is kept, however large it is.
  struct Limits {
    std::size_t steps = 1000;
    std::size_t bytes = 32 << 20;  // about, of all steps together
  };

  // `changes` must outlive the object.
  explicit History(Changes& changes) : History(changes, Limits()) {}
  History(Changes& changes, const Limits& limits)
      : ChangeObserver(changes), changes_(changes), limits_(limits) {}

  // Who is told whenever Next() may be another; null for nobody.
  void SetListener(std::function<void()> listener) { listener_ = std::move(listener); }

  // The step that goes next in that direction; null when there is none.  It stays until something
  // is stored, taken back, done again or dropped.
  const Step* Next(Direction direction) const;

  // What became of a step that was to go.
  enum class Outcome : std::uint8_t {
    Gone,     // carried out; it is the next one of the other direction
    Refused,  // `may` said no; it stays where it is
    Stale,    // it is dropped: a field holds something else since, a station has no record any
              // more, or nothing of it is left to do
  };

  // Carries the next step out in that direction, as one act with the origin Undo or Redo, if it is
  // not stale and `may`.  After a failure nothing is stored, and it stays where it is.
  // REQUIRES: Next(direction)
  model::Status Go(jet::Database& database, Direction direction,
                   const std::function<bool(const Step&)>& may, Outcome* outcome);

  void Changed(std::span<const Change> changes) override;

 private:
  struct Entry {
    Step step;
    std::size_t bytes;
  };
  using Entries = std::deque<Entry>;

  void Add(Step step);
  void Append(Step step);
  void Join(const Change& change);
  void ForgetOldest();
  void Tell() const;
  void Drop(Entries* from);

  Changes& changes_;
  const Limits limits_;
  std::function<void()> listener_;
  Entries done_;            // the latest last
  Entries undone_;          // the next one last
  bool hasStored_ = false;  // the step that goes has changed something
};

}  // namespace stations

#endif  // STATIONS_HISTORY_H_
