// SPDX-License-Identifier: MIT

#include "stations/button_program.h"

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/record.h"

namespace stations {
namespace {

using stations::Record;

// The lowest target of a button that has none.
constexpr int kFirstOfNone = 1;

std::string TypeField(int button) { return db::ButtonField(button, db::kButtonType); }
std::string FirstField(int button) { return db::ButtonField(button, db::kButtonFirst); }
std::string TargetsField(int button) { return db::ButtonField(button, db::kButtonTargets); }

}  // namespace

model::Status ReadButton(jet::RecordSet& stations, int button, ButtonProgram* program) {
  Record record(stations);
  program->type = record.Number(TypeField(button), kNoType);
  program->first = record.Number(FirstField(button));
  program->targets = record.Flags(TargetsField(button));
  return record.Outcome();
}

Reading<std::string> ButtonCaption(const Reading<ButtonProgram>& button,
                                   const TargetLabels& labels) {
  const ButtonProgram& program = button.value;
  if (!button.status.ok() || program.first == 0) return {kNoTarget, button.status};
  return labels.Of(program.type, program.first, /*input=*/false);
}

Reading<std::string> EditedCaption(const Reading<ButtonProgram>& button, int targetCount,
                                   const TargetLabels& labels) {
  const int first = model::FirstFlag(button.value.targets, targetCount);
  if (!button.status.ok() || first == 0) return {kNoTarget, button.status};
  return labels.Of(button.value.type, first, /*input=*/false);
}

Reading<std::string> ChosenCaption(const Reading<ButtonProgram>& button,
                                   const TargetLabels& labels) {
  const auto& [type, first, targets] = button.value;
  if (!button.status.ok()) return {kNoTarget, button.status};
  if (type == kInactive || !IsOperation(type)) return {.value = kInactiveCaption};
  return labels.Of(type, first, /*input=*/OperationOf(type).targets == TargetKind::Sources);
}

model::Status StoreTarget(jet::RecordSet& stations, int button, int target, bool set,
                          int targetCount, const Author& author, bool* isInactive) {
  *isInactive = false;
  Record record(stations);
  const std::string text =
      model::WithFlag(record.Text(TargetsField(button)), target, set, targetCount);
  const int first = model::FirstFlag(model::PlainFlags(text), targetCount);
  record.Set(TargetsField(button), text);
  record.Set(FirstField(button), first != 0 ? first : kFirstOfNone);
  if (first == 0) record.Set(TypeField(button), kInactive);
  model::Status status = record.Commit(author);
  *isInactive = first == 0 && status.ok();
  return status;
}

model::Status StoreType(jet::RecordSet& stations, int button, int type, const Author& author,
                        bool* changed) {
  Record record(stations);
  record.Set(TypeField(button), type);
  return record.Commit(author, changed);
}

model::Status StoreInactive(jet::RecordSet& stations, int button, const Author& author,
                            bool* changed) {
  *changed = false;
  Record record(stations);
  const bool hasTarget = record.Flags(TargetsField(button)).find('1') != std::string::npos;
  if (hasTarget || !record.Outcome().ok()) return record.Outcome();
  record.Set(FirstField(button), kFirstOfNone);
  record.Set(TypeField(button), kInactive);
  return record.Commit(author, changed);
}

}  // namespace stations
