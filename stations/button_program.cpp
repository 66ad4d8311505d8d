// SPDX-License-Identifier: MIT

#include "stations/button_program.h"

#include <string_view>
#include <utility>

#include "db/keep_position.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/record.h"

namespace stations {
namespace {

using stations::Record;

// The lowest target of a button that has none.
constexpr int kFirstOfNone = 1;

// External switcher destinations are numbered after the stations.
constexpr int kBeforeExternal = 64;

std::string TypeField(int button) { return db::ButtonField(button, db::kButtonType); }
std::string FirstField(int button) { return db::ButtonField(button, db::kButtonFirst); }
std::string TargetsField(int button) { return db::ButtonField(button, db::kButtonTargets); }

// The text of a target's record, or kNoTarget without a record or a text.  Moves.
model::Status ReadTargetText(jet::RecordSet& stations, int type, int target, const char* field,
                             std::string* text) {
  *text = kNoTarget;
  const int number = type == kExternal ? target + kBeforeExternal : target;
  if (model::Status status = FindStation(stations, number); !status.ok()) return status;
  if (stations.NoMatch()) return {};
  Record record(stations);
  const jet::Value value = record.Get(field);
  if (!value.IsNull()) *text = value.Text();
  return record.Outcome();
}

}  // namespace

model::Status ReadButton(jet::RecordSet& stations, int button, ButtonProgram* program) {
  Record record(stations);
  program->type = record.Number(TypeField(button));
  program->first = record.Number(FirstField(button));
  program->targets = record.Flags(TargetsField(button));
  return record.Outcome();
}

model::Status ReadButtonTypes(jet::RecordSet& stations, int count, std::vector<int>* types) {
  Record record(stations);
  types->clear();
  for (int button = 1; button <= count; ++button) {
    types->push_back(record.Number(TypeField(button), kNoType));
  }
  return record.Outcome();
}

model::Status ReadButtonCaptions(jet::RecordSet& stations, int count,
                                 std::vector<std::string>* captions) {
  const db::KeepPosition keep(stations);
  captions->assign(static_cast<std::size_t>(count), kNoTarget);
  model::Status result;
  const auto keepFirst = [&result](const model::Status& status) {
    if (result.ok()) result = status;
  };
  // All of the record first, and then what it points to: moving back and forth for each button
  // would read the record of the station many times over.
  std::vector<std::pair<int, int>> targets;
  for (int button = 1; button <= count; ++button) {
    Record record(stations);
    const int type = record.Number(TypeField(button));
    const int first = record.Number(FirstField(button));
    targets.emplace_back(type, record.Outcome().ok() ? first : 0);
    keepFirst(record.Outcome());
  }
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const auto& [type, first] = targets[i];
    if (first == 0) continue;
    keepFirst(ReadTargetText(stations, type, first, db::kLabelField, &(*captions)[i]));
  }
  return result;
}

model::Status ReadEditedCaption(jet::RecordSet& stations, int button, int targetCount,
                                std::string* caption) {
  *caption = kNoTarget;
  ButtonProgram program;
  if (model::Status status = ReadButton(stations, button, &program); !status.ok()) return status;
  const int first = model::FirstFlag(program.targets, targetCount);
  if (first == 0) return {};
  const db::KeepPosition keep(stations);
  return ReadTargetText(stations, program.type, first, db::kLabelField, caption);
}

model::Status ReadChosenCaption(jet::RecordSet& stations, int button, std::string* caption) {
  *caption = kNoTarget;
  Record record(stations);
  const int type = record.Number(TypeField(button));
  const int first = record.Number(FirstField(button));
  if (!record.Outcome().ok()) return record.Outcome();
  if (type == kInactive || !IsOperation(type)) {
    *caption = kInactiveCaption;
    return {};
  }
  const db::KeepPosition keep(stations);
  const bool listens = OperationOf(type).targets == TargetKind::Sources;
  return ReadTargetText(stations, type, first, listens ? db::kInLabelField : db::kLabelField,
                        caption);
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
