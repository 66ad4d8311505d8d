// SPDX-License-Identifier: MIT
//
// What belongs together as one thing that was done, as the journal has it.

#ifndef STATIONS_JOURNAL_ACT_H_
#define STATIONS_JOURNAL_ACT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stations/change.h"

namespace stations {

struct Act {
  std::string title;      // "Label of station 17"
  std::string time = {};  // of the clock on the wall: "2026-11-21T18:05:12+01:00"; for people only
  Origin origin = Origin::Operator;
  std::int64_t group = 0;       // acts of one retrieval have one number; 0: belongs to none
  std::vector<Change> changes;  // each of the act's origin
};

// The word of an origin in it: "operator".
std::string_view WordOf(Origin origin);

// The act as a JSON object on one line:
//
//   {"title":"Label of station 17","time":"2026-11-21T18:05:12+01:00","origin":"operator",
//    "changes":[{"station":17,"fields":{"Label":["Sta. 017","CAM 4"]}}]}
//
// with "group" where there is one.  A field's values are those before and after: a number, a text,
// or null.  A field with a value of another kind, which no field of a station has, is left out, and
// so is a station whose number is not known.
std::string WriteAct(const Act& act);

// Reads such an object; members that are not known are passed over.  False when it is none, and
// when what it says cannot be carried out: no such origin, a station below 1, a field without two
// values.
bool ReadAct(std::string_view text, Act* act);

}  // namespace stations

#endif  // STATIONS_JOURNAL_ACT_H_
