// SPDX-License-Identifier: MIT

#include "stations/button_program.h"

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/record.h"

namespace stations {
namespace {

std::string TypeField(int button) { return db::ButtonField(button, db::kButtonType); }
std::string FirstField(int button) { return db::ButtonField(button, db::kButtonFirst); }
std::string TargetsField(int button) { return db::ButtonField(button, db::kButtonTargets); }

// A button without a target is inactive.
void SetInactive(Record& record, int button) {
  record.Set(FirstField(button), kFirstOfNone);
  record.Set(TypeField(button), kInactive);
}

}  // namespace

model::Status ButtonProgram::Outcome() const {
  return !type.status.ok() ? type.status : !first.status.ok() ? first.status : targets.status;
}

ButtonProgram ReadButton(jet::RecordSet& stations, int button) {
  Record type(stations);
  Record first(stations);
  Record targets(stations);
  ButtonProgram program;
  program.type.value = type.Number(TypeField(button), kNoType);
  program.type.status = type.Outcome();
  program.first.value = first.Number(FirstField(button));
  program.first.status = first.Outcome();
  program.targets.value = targets.Flags(TargetsField(button));
  program.targets.status = targets.Outcome();
  return program;
}

Reading<std::string> ButtonCaption(const ButtonProgram& button, const TargetLabels& labels) {
  if (!button.type.status.ok()) return {kNoTarget, button.type.status};
  if (button.first.value == 0) return {kNoTarget, button.first.status};
  return labels.Of(button.type.value, button.first.value, /*input=*/false);
}

Reading<std::string> EditedCaption(const ButtonProgram& button, int targetCount,
                                   const TargetLabels& labels) {
  const int first = model::FirstFlag(button.targets.value, targetCount);
  if (!button.Outcome().ok() || first == 0) return {kNoTarget, button.Outcome()};
  return labels.Of(button.type.value, first, /*input=*/false);
}

Reading<std::string> ChosenCaption(const ButtonProgram& button, const TargetLabels& labels) {
  const int type = button.type.value;
  if (!button.type.status.ok()) return {kNoTarget, button.type.status};
  if (!button.first.status.ok()) return {kNoTarget, button.first.status};
  if (type == kInactive || !IsOperation(type)) return {.value = kInactiveCaption};
  return labels.Of(type, button.first.value,
                   /*input=*/OperationOf(type).targets == TargetKind::Sources);
}

model::Status StoreTarget(jet::RecordSet& stations, int button, int target, bool set,
                          int targetCount, const Author& author, bool* isInactive) {
  *isInactive = false;
  Record record(stations);
  const std::string text =
      model::WithFlag(record.Text(TargetsField(button)), target, set, targetCount);
  const int first = model::FirstFlag(model::PlainFlags(text), targetCount);
  record.Set(TargetsField(button), text);
  if (first != 0) {
    record.Set(FirstField(button), first);
  } else {
    SetInactive(record, button);
  }
  model::Status status = record.Commit(author);
  *isInactive = first == 0 && status.ok();
  return status;
}

model::Status StoreType(jet::RecordSet& stations, int button, int type, const Author& author) {
  Record record(stations);
  record.Set(TypeField(button), type);
  return record.Commit(author);
}

model::Status StoreInactive(jet::RecordSet& stations, int button, const Author& author,
                            bool* changed) {
  *changed = false;
  Record record(stations);
  const bool hasTarget = record.Flags(TargetsField(button)).find('1') != std::string::npos;
  if (hasTarget || !record.Outcome().ok()) return record.Outcome();
  SetInactive(record, button);
  return record.Commit(author, changed);
}

}  // namespace stations
