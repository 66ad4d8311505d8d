// SPDX-License-Identifier: MIT
//
// What is changed in the records of the stations, for whoever wants to know.

#ifndef STATIONS_CHANGE_H_
#define STATIONS_CHANGE_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "db/jet/value.h"
#include "model/locks.h"
#include "model/observers.h"

namespace stations {

// Where a change comes from.
enum class Origin : std::uint8_t {
  Operator,    // an edit in a view, or a paste
  Navigation,  // what going to a station stores by itself; it belongs to the act before it
  Switcher,    // a table of the switcher
  Undo,        // an act taken back
  Redo,        // an act carried out once more
  Restore,     // what was edited in a run that ended without saving
  Comparison,  // what the operator took over from the switcher, row by row
  Backup,      // what he took over from a copy of the database
  File,        // labels or programming from a spreadsheet
};

// A field that has another value now; null stands for one that could not be read, too.
struct FieldChange {
  std::string field;
  jet::Value before;
  jet::Value after;

  bool operator==(const FieldChange&) const = default;
};

// What was stored in the record of a station at once.
struct Change {
  Origin origin;
  int station;                      // its number; 0 when that cannot be read
  std::vector<FieldChange> fields;  // at least one, in the order in which they were set

  bool operator==(const Change&) const = default;
};

class Changes;

// Whether any of the changes is one of that field.
bool Touches(std::span<const Change> changes, std::string_view field);

// Hears of every change as long as it lives.
class ChangeObserver {
 public:
  // `changes` must outlive the observer.
  explicit ChangeObserver(Changes& changes);
  virtual ~ChangeObserver();
  ChangeObserver(const ChangeObserver&) = delete;
  ChangeObserver& operator=(const ChangeObserver&) = delete;

  // All of these have been stored at once, for one author; there is at least one.  The shared
  // record set may stand anywhere meanwhile, and no observer begins or ends.
  virtual void Changed(std::span<const Change> changes) = 0;

 private:
  Changes& changes_;
};

// The stream of all changes: Record::Commit() announces each when it is stored, and the observers
// hear of it at once, in the order in which they came.
class Changes {
 public:
  // Changes that nobody is kept from.
  Changes() = default;
  // While `locks`, which must outlive the object, lock the console, only the switcher changes
  // records.
  explicit Changes(const model::Locks& locks) : locks_(&locks) {}

  // Whether records may be changed for that reason.  What navigation stores by itself is left out
  // quietly where it may not; anything else has failed.
  bool MayStore(Origin origin) const {
    return locks_ == nullptr || !locks_->IsConsoleLocked() || origin == Origin::Switcher;
  }

  void Add(ChangeObserver& observer) { observers_.Add(observer); }
  void Remove(const ChangeObserver& observer) { observers_.Remove(observer); }

  void Announce(Change change);

  // Keeps what is announced from now on, for records that are stored together: Release() tells of
  // it at once, Drop() forgets it.
  void Hold() { isHeld_ = true; }
  void Release();
  void Drop();

 private:
  void Tell(std::span<const Change> changes) { observers_.Tell(&ChangeObserver::Changed, changes); }

  const model::Locks* locks_ = nullptr;
  model::Observers<ChangeObserver> observers_;
  bool isHeld_ = false;
  std::vector<Change> held_;
};

// For whom a record is changed, and who is to hear of it.
struct Author {
  Changes& changes;
  Origin origin;
};

}  // namespace stations

#endif  // STATIONS_CHANGE_H_
