// SPDX-License-Identifier: MIT
//
// How the grid of station labels shows its columns.

#ifndef VIEWS_RULES_LABEL_HEADINGS_H_
#define VIEWS_RULES_LABEL_HEADINGS_H_

#include <array>

#include "stations/label_texts.h"

namespace rules {

// The head of a column.
struct LabelHeading {
  const char* caption;
  const char* key;
  int twips;  // the width of the column
};

// In the order of stations::LabelColumn.
inline constexpr std::array<LabelHeading, stations::kLabelColumnCount> kLabelHeadings = {{
    {"Station", "StaNum", 960},
    {"Station Label", "StaLabel", 1400},
    {"Input Label", "SysInLabel", 1400},
    {"Hidden", "StaHidden", 1000},
    {"System Input", "SysInput", 1400},
    {"System Output", "SysOutput", 1500},
    {"Station Notes", "StaNotes", 3500},
}};

constexpr const LabelHeading& Heading(stations::LabelColumn column) {
  return kLabelHeadings[static_cast<std::size_t>(column)];
}

}  // namespace rules

#endif  // VIEWS_RULES_LABEL_HEADINGS_H_
