// SPDX-License-Identifier: MIT
//
// The result of a salvage in words.

#ifndef TOOLS_MDBDUMP_SALVAGE_REPORT_H_
#define TOOLS_MDBDUMP_SALVAGE_REPORT_H_

#include <string>

#include "db/salvage.h"

namespace mdbdump {

// A line for each table, then one for all stations that are missing and one for each that is not
// whole:
//
//   DbInfo: 1 of 1 records
//   Stations: 123 of 128 records
//   wrong: the count of stations; put right in the new file
//   doubtful: stations 1101, above the count; left out of the new file
//   missing: stations 6, 7, 8, 9, 10; without a record in the new file
//   missing: station 77: Relays; empty in the new file
//   doubtful: station 80: Relays; as found in the new file
std::string Describe(const db::SalvageReport& report, db::Fill fill);

}  // namespace mdbdump

#endif  // TOOLS_MDBDUMP_SALVAGE_REPORT_H_
