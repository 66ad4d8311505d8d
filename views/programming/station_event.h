// SPDX-License-Identifier: MIT

#ifndef VIEWS_PROGRAMMING_STATION_EVENT_H_
#define VIEWS_PROGRAMMING_STATION_EVENT_H_

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "stations/snapshot.h"
#include "views/services.h"

namespace views {

// The station that the programming view shows, the current record, and what was reported of it.
struct ShownStation {
  const Services services;
  std::string lastReport = {};  // empty once all went well
};

// One thing that happens to the programming view.  It works on the current record, and what it
// shows it takes from one look at it.  However much fails, it makes one report: the first.
class StationEvent {
 public:
  // What the operator does is reported whenever it fails.  Of refreshes that come by themselves,
  // one after the other, the same report is made once until one of them succeeds.
  enum class Cause { Operator, Refresh };

  // `station` must outlive the event.
  StationEvent(ShownStation& station, Cause cause) : shown_(station), cause_(cause) {}
  // Makes the report.
  ~StationEvent();
  StationEvent(const StationEvent&) = delete;
  StationEvent& operator=(const StationEvent&) = delete;

  // Edits the current record, or moves to another.  A failure is reported under `line`, a literal.
  bool Do(std::string_view line, const std::function<model::Status(jet::RecordSet&)>& work);

  // The station as it is now.
  const stations::StationSnapshot& Station();

  // What was read; that it could not be is reported under `line`, a literal.
  template <typename T>
  T Use(std::string_view line, stations::Reading<T> reading) {
    Note(line, reading.status);
    return std::move(reading.value);
  }

 private:
  void Note(std::string_view line, const model::Status& status);

  ShownStation& shown_;
  const Cause cause_;
  std::optional<stations::StationSnapshot> snapshot_;
  std::string_view line_;  // of the failure
  model::Status failure_;
};

}  // namespace views

#endif  // VIEWS_PROGRAMMING_STATION_EVENT_H_
