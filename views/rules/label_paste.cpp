// SPDX-License-Identifier: MIT

#include "views/rules/label_paste.h"

#include <utility>

namespace rules {
namespace {

using Reason = PasteRefusal::Reason;
using stations::LabelColumn;
using stations::LabelRecord;

// The change that a text makes in a cell; the reason why it must not.
Reason PlanCell(LabelColumn column, const std::string& text, const LabelRecord& record,
                std::vector<stations::LabelChange>* changes, stations::TextCheck* check) {
  const LabelRecord::Field& field = record.At(column);
  if (field.isReadable && text == stations::CellText(column, field.value)) return Reason::None;
  if (column == LabelColumn::Station) return Reason::StationNumber;
  if (!field.isReadable) return Reason::Unreadable;
  if (column == LabelColumn::Hidden) {
    const std::optional<int> hidden = stations::ParseHidden(text);
    if (!hidden) return Reason::NotAChoice;
    if (stations::HiddenText(*hidden) != stations::HiddenText(field.value))
      changes->push_back({column, *hidden});
    return Reason::None;
  }
  *check = stations::CheckText(column, text);
  if (!check->ok()) return Reason::Text;
  changes->push_back({column, text});
  return Reason::None;
}

}  // namespace

PastePlan PlanPaste(const TextBlock& block, std::span<const LabelRecord> rows, std::size_t firstRow,
                    LabelColumn firstColumn) {
  PastePlan plan;
  const auto refuse = [&plan](PasteRefusal refusal) {
    plan.changes.clear();
    plan.refusal = std::move(refusal);
  };
  const auto columnOffset = static_cast<std::size_t>(firstColumn);
  if (block.empty() || firstRow >= rows.size()) {
    refuse({.reason = Reason::Empty});
    return plan;
  }
  if (block.size() > rows.size() - firstRow) {
    refuse({.reason = Reason::TooManyRows, .row = rows.size() - firstRow});
    return plan;
  }
  for (std::size_t r = 0; r < block.size(); ++r) {
    const LabelRecord& record = rows[firstRow + r];
    stations::LabelEdit change{record.Station(), {}};
    for (std::size_t c = 0; c < block[r].size(); ++c) {
      if (columnOffset + c >= stations::kLabelColumns.size()) {
        refuse({.reason = Reason::TooManyColumns, .row = firstRow + r});
        return plan;
      }
      const auto column = static_cast<LabelColumn>(columnOffset + c);
      stations::TextCheck check;
      const Reason reason = PlanCell(column, block[r][c], record, &change.changes, &check);
      if (reason != Reason::None) {
        refuse({.reason = reason, .row = firstRow + r, .column = column, .text = check});
        return plan;
      }
    }
    if (!change.changes.empty()) plan.changes.push_back(std::move(change));
  }
  return plan;
}

}  // namespace rules
