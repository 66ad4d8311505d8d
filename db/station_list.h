// SPDX-License-Identifier: MIT

#ifndef DB_STATION_LIST_H_
#define DB_STATION_LIST_H_

#include <string>
#include <vector>

namespace db {

// Stations in words: "11 to 15, 20, 21".  `stations` rise.
std::string StationList(const std::vector<int>& stations);

}  // namespace db

#endif  // DB_STATION_LIST_H_
