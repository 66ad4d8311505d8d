// SPDX-License-Identifier: MIT
//
// The programming of one station's panel given to others.

#ifndef STATIONS_COPY_PROGRAMMING_H_
#define STATIONS_COPY_PROGRAMMING_H_

#include <span>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// What is copied, and how.
struct CopyOrder {
  int from = 0;  // the number of the station

  // Its buttons from the first to the last of these, counted from 1; none when the last is 0.
  int firstButton = 1;
  int lastButton = 0;
  bool relays = false;

  // Of a button that points at the station itself the copy points at the copy's own station.
  bool pointsAtOwn = false;

  int targetCount = 0;  // of a button
};

// What a copy comes to.
struct CopyPlan {
  // What has to be stored: one change for each station that does not have all of it already.
  std::vector<Change> changes;
  // Stations that no target stands for, and which are left as they are: a button of theirs cannot
  // point at themselves.
  std::vector<int> cannotPoint;
};

// Finds out what has to be stored for the stations `to` to have what is ordered, and stores
// nothing.  A button gets the operation and the targets of the one that is copied, and the lowest
// of these as its first; one without a target is inactive in the copy, as it would be stored when
// the operator leaves it.  Targets beyond the count are none.  The station itself, and a station
// without a record, is passed over.
//
// It moves in `stations`: the caller holds a db::KeepPosition.  What cannot be read of the station
// that is copied is a failure, and so is a station that is not there (3021).
model::Status PlanCopy(jet::RecordSet& stations, const CopyOrder& order, std::span<const int> to,
                       CopyPlan* plan);

}  // namespace stations

#endif  // STATIONS_COPY_PROGRAMMING_H_
