// SPDX-License-Identifier: MIT

#ifndef STATIONS_SNAPSHOT_H_
#define STATIONS_SNAPSHOT_H_

#include <string>
#include <vector>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "stations/button_program.h"
#include "stations/opto_program.h"
#include "stations/reading.h"
#include "stations/target_labels.h"

namespace stations {

// All that is programmed of a station, as it was at one moment.  What cannot be read spoils no more
// than itself.
struct StationSnapshot {
  // Of the current record of `stations`, to which it goes back; null: the database is not open.
  StationSnapshot(jet::RecordSet* stations, int buttonCount);

  Reading<jet::Value> number;
  Reading<std::string> label;
  Reading<std::string> inputLabel;
  std::vector<ButtonProgram> buttons;  // from button 1 on
  Reading<std::string> relays;         // a flag string of "0" and "1" alone
  Reading<OptoProgram> opto;
  TargetLabels targets;
};

}  // namespace stations

#endif  // STATIONS_SNAPSHOT_H_
