// SPDX-License-Identifier: MIT
//
// The programming of a station's buttons, in the station's record.
//
// Buttons and targets count from 1.  Each operation works on the current record of `stations`
// and ends on it, so that no caller has to go back; a change is stored whole or not at all.

#ifndef STATIONS_BUTTON_PROGRAM_H_
#define STATIONS_BUTTON_PROGRAM_H_

#include <string>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// The caption of a button whose first target is no station's, and of one that is inactive.
inline constexpr char kNoTarget[] = "NONE";
inline constexpr char kInactiveCaption[] = "INACTIVE";

// What is stored of a button; null fields read as 0 and "".
struct ButtonProgram {
  int type = 0;         // an operation's code, or another
  int first = 0;        // its lowest target
  std::string targets;  // a flag string of "0" and "1" alone
};

// Reads what is stored of a button.  On a failure, which is the first one met, *program
// holds what can be read.
model::Status ReadButton(jet::RecordSet& stations, int button, ButtonProgram* program);

// The operation codes of buttons 1 to `count`; kNoType for one that cannot be read.  On a failure,
// which is the first one met, *types holds `count` codes all the same.
model::Status ReadButtonTypes(jet::RecordSet& stations, int count, std::vector<int>* types);

// The captions of buttons 1 to `count`: the label of the first target, or kNoTarget.  On a
// failure, which is the first one met, *captions holds `count` captions all the same.
model::Status ReadButtonCaptions(jet::RecordSet& stations, int count,
                                 std::vector<std::string>* captions);

// The caption of a button after its targets were edited: the label of its lowest target, looking
// at the first `targetCount`.
model::Status ReadEditedCaption(jet::RecordSet& stations, int button, int targetCount,
                                std::string* caption);

// The caption of a button whose operation was chosen: the input label for those that listen,
// kInactiveCaption for the inactive and for codes that are no operation's.
model::Status ReadChosenCaption(jet::RecordSet& stations, int button, std::string* caption);

// Adds target `target` to a button or takes it away, and stores the lowest of the first
// `targetCount` targets; a button without one becomes inactive, which sets *isInactive.
model::Status StoreTarget(jet::RecordSet& stations, int button, int target, bool set,
                          int targetCount, const Author& author, bool* isInactive);

// Stores a button's operation.  *changed tells whether it was another.
model::Status StoreType(jet::RecordSet& stations, int button, int type, const Author& author,
                        bool* changed);

// Stores a button that has no target as inactive.  *changed tells whether it was not yet.
model::Status StoreInactive(jet::RecordSet& stations, int button, const Author& author,
                            bool* changed);

}  // namespace stations

#endif  // STATIONS_BUTTON_PROGRAM_H_
