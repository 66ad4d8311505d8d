// SPDX-License-Identifier: MIT
//
// The programming of a station's buttons, in the station's record.
//
// Buttons and targets count from 1.  Each operation works on the current record of `stations`
// and ends on it, so that no caller has to go back; a change is stored whole or not at all.

#ifndef STATIONS_BUTTON_PROGRAM_H_
#define STATIONS_BUTTON_PROGRAM_H_

#include <string>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/change.h"
#include "stations/operations.h"
#include "stations/reading.h"
#include "stations/target_labels.h"

namespace stations {

// The caption of a button that is inactive.
inline constexpr char kInactiveCaption[] = "INACTIVE";

// What is stored of a button; null fields read as 0 and "".
struct ButtonProgram {
  Reading<int> type{.value = kNoType};  // an operation's code, or another
  Reading<int> first;                   // its lowest target
  Reading<std::string> targets;         // a flag string of "0" and "1" alone

  // The first failure of the three, or ok.
  model::Status Outcome() const;
};

// Reads what is stored of a button of the current record.
ButtonProgram ReadButton(jet::RecordSet& stations, int button);

// The caption of a button: the label of its first target, or kNoTarget, also when it could not be
// read.
Reading<std::string> ButtonCaption(const ButtonProgram& button, const TargetLabels& labels);

// The caption of a button after its targets were edited: the label of its lowest target, looking
// at the first `targetCount`.
Reading<std::string> EditedCaption(const ButtonProgram& button, int targetCount,
                                   const TargetLabels& labels);

// The caption of a button whose operation was chosen: the input label for those that listen,
// kInactiveCaption for the inactive and for codes that are no operation's.
Reading<std::string> ChosenCaption(const ButtonProgram& button, const TargetLabels& labels);

// Adds target `target` to a button or takes it away, and stores the lowest of the first
// `targetCount` targets; a button without one becomes inactive, which sets *isInactive.
model::Status StoreTarget(jet::RecordSet& stations, int button, int target, bool set,
                          int targetCount, const Author& author, bool* isInactive);

// Stores a button's operation.
model::Status StoreType(jet::RecordSet& stations, int button, int type, const Author& author);

// Stores a button that has no target as inactive.  *changed tells whether it was not yet.
model::Status StoreInactive(jet::RecordSet& stations, int button, const Author& author,
                            bool* changed);

}  // namespace stations

#endif  // STATIONS_BUTTON_PROGRAM_H_
