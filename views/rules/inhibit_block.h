// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_INHIBIT_BLOCK_H_
#define VIEWS_RULES_INHIBIT_BLOCK_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "views/rules/xmap_grid.h"

namespace rules {

// A rectangle of crosspoints: its outputs and inputs from the first to the last, from 1.
struct CellBlock {
  int firstOutput = 0;
  int lastOutput = -1;
  int firstInput = 0;
  int lastInput = -1;

  int Outputs() const { return lastOutput - firstOutput + 1; }
  int Inputs() const { return lastInput - firstInput + 1; }
  int Cells() const { return Outputs() * Inputs(); }

  bool operator==(const CellBlock&) const = default;
};

// What inhibiting the crosspoints of a block, or taking their inhibits away, comes to.
struct InhibitPlan {
  // The new text of "Inhibits" of an output.
  struct Row {
    int output = 0;
    std::string flags;
    std::vector<int> inputs;  // whose flag is another one then
  };

  std::vector<Row> rows;  // those in which something changes
  int changes = 0;        // crosspoints whose flag changes
  int leftOut = 0;        // crosspoints that cannot be inhibited, because they are made
};

// What setting the inhibits of all cells of a block comes to, or clearing them.  Element r of
// `inhibits` is the text of output `block.firstOutput` + r as the database has it, none where
// there is no record: such an output stays as it is.  A cell that shows a crosspoint is not
// inhibited, as with a single one.
InhibitPlan PlanInhibits(const XmapGrid& grid, const CellBlock& block, bool inhibit,
                         std::span<const std::optional<std::string>> inhibits);

}  // namespace rules

#endif  // VIEWS_RULES_INHIBIT_BLOCK_H_
