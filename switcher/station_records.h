// SPDX-License-Identifier: MIT

#ifndef SWITCHER_STATION_RECORDS_H_
#define SWITCHER_STATION_RECORDS_H_

#include <memory>

#include "db/jet/database.h"
#include "db/jet/record_set.h"
#include "model/status.h"

namespace switcher {

// The fields of a station's record that travel, besides the buttons' (db::ButtonField).
inline constexpr char kStationNumField[] = "StationNum";
inline constexpr char kHiddenField[] = "Hidden";
inline constexpr char kLabelField[] = "Label";
inline constexpr char kInLabelField[] = "InLabel";
inline constexpr char kInhibitsField[] = "Inhibits";
inline constexpr char kRelaysField[] = "Relays";
inline constexpr char kOptoTypeField[] = "OptoType";
inline constexpr char kOptoChannelField[] = "OptoChannel";
inline constexpr char kOptoFirstField[] = "OptoFirst";
inline constexpr char kOptoStationsField[] = "OptoStations";

// Opens the stations in the order of their numbers, on the first of them.  It is a record set
// of its own: the shared one stays where it stands, and a change begun in it stays begun.
model::Status OpenStations(jet::Database& database, std::unique_ptr<jet::RecordSet>* stations);

// The field of a label table: InLabel for selector kInputLabels, Label for any other.
const char* LabelFieldOf(int selector);

}  // namespace switcher

#endif  // SWITCHER_STATION_RECORDS_H_
