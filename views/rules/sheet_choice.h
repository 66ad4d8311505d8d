// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_SHEET_CHOICE_H_
#define VIEWS_RULES_SHEET_CHOICE_H_

#include <cstdint>
#include <vector>

namespace rules {

// Whose key sheets are wanted.
enum class SheetChoice : std::uint8_t { This, Chosen, All };

// Stations by their numbers, from 1.
struct SheetStations {
  int current = 0;               // the one that is worked at; 0 for none
  std::vector<int> ticked = {};  // in rising order
  std::vector<int> all = {};     // those that have a sheet, in rising order
};

// Whether the station that is worked at has a sheet.
bool CurrentHasSheet(const SheetStations& stations);

// What is proposed: the station that is worked at, or all when it has no sheet.
SheetChoice ProposedChoice(const SheetStations& stations);

// Whose sheets these are, in rising order; a station without a sheet is none of them.
std::vector<int> StationsOf(SheetChoice choice, const SheetStations& stations);

}  // namespace rules

#endif  // VIEWS_RULES_SHEET_CHOICE_H_
