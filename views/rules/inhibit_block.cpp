// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_block.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "model/flag_string.h"

namespace rules {
namespace {

bool HoldsCrosspoint(Mark mark) {
  return mark == Mark::Crosspoint || mark == Mark::Priority || mark == Mark::Reserved;
}

}  // namespace

InhibitPlan PlanInhibits(const XmapGrid& grid, const CellBlock& block, bool inhibit,
                         std::span<const std::optional<std::string>> inhibits) {
  InhibitPlan plan;
  for (int output = block.firstOutput; output <= block.lastOutput; ++output) {
    const auto& text = inhibits[static_cast<std::size_t>(output - block.firstOutput)];
    if (!text) continue;
    std::vector<std::uint8_t> members = model::FlagMembers(*text);
    members.resize(std::max(members.size(), static_cast<std::size_t>(block.lastInput)));
    InhibitPlan::Row row{.output = output, .flags = {}, .inputs = {}};
    for (int input = block.firstInput; input <= block.lastInput; ++input) {
      std::uint8_t& member = members[static_cast<std::size_t>(input - 1)];
      if ((member != 0) == inhibit) continue;
      if (inhibit && HoldsCrosspoint(grid.MarkAt(output + 1, input + 1))) {
        ++plan.leftOut;
        continue;
      }
      member = inhibit ? 1 : 0;
      row.inputs.push_back(input);
    }
    if (row.inputs.empty()) continue;
    // As many members are written as storing the last of them alone would write.
    members.resize(static_cast<std::size_t>(row.inputs.back()));
    row.flags = model::WithFirstFlags(*text, members);
    plan.changes += static_cast<int>(row.inputs.size());
    plan.rows.push_back(std::move(row));
  }
  return plan;
}

}  // namespace rules
