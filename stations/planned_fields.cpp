// SPDX-License-Identifier: MIT

#include "stations/planned_fields.h"

#include <utility>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/operations.h"

namespace stations {

void PlannedFields::Add(std::string_view field, const jet::Value& value) {
  jet::Value before;
  const bool isRead = stations_.Get(field, &before).ok();
  if (!isRead) before.SetNull();
  if (isRead && before == value) return;
  changes.push_back({.field = std::string(field), .before = std::move(before), .after = value});
}

void PlannedFields::AddFlags(std::string_view field, const std::string& flags) {
  jet::Value before;
  const bool isRead = stations_.Get(field, &before).ok();
  if (!isRead) before.SetNull();
  const std::string text = model::WithFirstFlags(before.Text(), model::FlagMembers(flags));
  const std::string plain = model::PlainFlags(text);
  if (isRead && plain == model::FilledFlags(model::PlainFlags(before.Text()), plain.size())) return;
  changes.push_back({.field = std::string(field), .before = std::move(before), .after = text});
}

void PlannedFields::AddButton(int button, int type, const std::string& targets) {
  const int first = model::FirstFlag(targets, static_cast<int>(targets.size()));
  AddFlags(db::ButtonField(button, db::kButtonTargets), targets);
  Add(db::ButtonField(button, db::kButtonFirst), first != 0 ? first : kFirstOfNone);
  Add(db::ButtonField(button, db::kButtonType), first != 0 ? type : kInactive);
}

}  // namespace stations
