// SPDX-License-Identifier: MIT
//
// Pastes arbitrary bytes as a block of cells.  A block that is written comes back as it was, and
// what a plan stores is what the fields take.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "stations/label_texts.h"
#include "views/rules/label_paste.h"

namespace {

using stations::LabelColumn;

constexpr std::size_t kRows = 40;

void Require(bool holds) {
  if (!holds) std::abort();
}

std::vector<stations::LabelRecord> Rows() {
  std::vector<stations::LabelRecord> rows(kRows);
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (stations::LabelRecord::Field& field : rows[r].fields) {
      field.value = "old";
      field.isReadable = true;
    }
    rows[r].At(LabelColumn::Station).value = static_cast<int>(r) + 1;
    rows[r].At(LabelColumn::Hidden).value = 0;
  }
  return rows;
}

void CheckPlan(const rules::PastePlan& plan) {
  Require(plan.refusal.ok() || plan.changes.empty());
  for (const stations::LabelEdit& change : plan.changes) {
    Require(!change.changes.empty());
    for (const stations::LabelChange& each : change.changes) {
      Require(each.column != LabelColumn::Station);
      if (each.column == LabelColumn::Hidden) {
        Require(each.value == jet::Value(0) || each.value == jet::Value(1));
      } else {
        const int length = stations::LengthOf(each.value.Text());
        Require(length >= 0 && length <= stations::Spec(each.column).maxLength);
        const bool hasEnd = each.value.Text().find("\xC3\xBF") != std::string::npos;
        Require(!hasEnd || !stations::IsLabel(each.column));
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const rules::TextBlock block = rules::ParseBlock(text);
  Require(block.empty() == text.empty());
  Require(std::none_of(block.begin(), block.end(), [](const auto& row) { return row.empty(); }));
  Require(rules::ParseBlock(rules::WriteBlock(block)) == block);
  const std::vector<stations::LabelRecord> rows = Rows();
  for (int column = 0; column < stations::kLabelColumnCount; ++column) {
    CheckPlan(rules::PlanPaste(block, rows, 0, static_cast<LabelColumn>(column)));
  }
  return 0;
}
