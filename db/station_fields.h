// SPDX-License-Identifier: MIT
//
// The names of the fields of the table "Stations".

#ifndef DB_STATION_FIELDS_H_
#define DB_STATION_FIELDS_H_

#include <string>
#include <string_view>

namespace db {

inline constexpr char kStationNumField[] = "StationNum";
inline constexpr char kHiddenField[] = "Hidden";
inline constexpr char kLabelField[] = "Label";
inline constexpr char kNotesField[] = "Notes";
inline constexpr char kInLabelField[] = "InLabel";
inline constexpr char kSysOutputField[] = "SysOutput";
inline constexpr char kSysInputField[] = "SysInput";
inline constexpr char kInhibitsField[] = "Inhibits";
inline constexpr char kRelaysField[] = "Relays";
inline constexpr char kOptoTypeField[] = "OptoType";
inline constexpr char kOptoChannelField[] = "OptoChannel";
inline constexpr char kOptoFirstField[] = "OptoFirst";
inline constexpr char kOptoStationsField[] = "OptoStations";

// What the names of a button's three fields end in.
inline constexpr char kButtonType[] = "Type";
inline constexpr char kButtonFirst[] = "First";
inline constexpr char kButtonTargets[] = "Prog";

// The name of a button's field, for example "B1 Type" for (1, kButtonType).  Buttons count from 1.
std::string ButtonField(int button, std::string_view suffix);

// The button (from 1) that a field is of; 0 for one that is no button's.
int ButtonOfField(std::string_view field);

}  // namespace db

#endif  // DB_STATION_FIELDS_H_
