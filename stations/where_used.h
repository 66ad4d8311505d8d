// SPDX-License-Identifier: MIT
//
// What points at a station.

#ifndef STATIONS_WHERE_USED_H_
#define STATIONS_WHERE_USED_H_

#include <cstdint>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "model/system_model.h"

namespace stations {

// One place that points at a station.
struct Use {
  enum class Kind : std::uint8_t {
    Button,       // button `part` of station `station` has it as a target
    Opto,         // the opto of this number has it as a target
    OptoChannel,  // the opto of this number is associated with its channel
    Inhibit,      // output `station` must not hear input `part`; one of both is the station's own
  };

  Kind kind = Kind::Button;
  int station = 0;
  int part = 0;
  int type = 0;  // the code of a button's or an opto's operation

  bool operator==(const Use&) const = default;
};

// Finds what points at a station: the buttons, then the optos, then the inhibits, each in the order
// of their numbers.  What is inactive points nowhere.  It moves in `stations`: the caller holds a
// db::KeepPosition.  What cannot be read is left out, and the first such failure is the outcome.
model::Status FindUses(jet::RecordSet& stations, int station, const model::SystemModel& model,
                       std::vector<Use>* uses);

}  // namespace stations

#endif  // STATIONS_WHERE_USED_H_
