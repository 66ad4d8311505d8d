// SPDX-License-Identifier: MIT

#include "views/rules/button_program.h"

#include <string_view>
#include <utility>

#include "db/keep_position.h"
#include "db/schema.h"
#include "switcher/station_records.h"
#include "switcher/stored_forms.h"
#include "views/rules/operations.h"
#include "views/rules/station_navigation.h"
#include "views/rules/store_fields.h"
#include "views/rules/target_flags.h"

namespace rules {
namespace {

constexpr char kType[] = "Type";
constexpr char kFirst[] = "First";
constexpr char kProg[] = "Prog";

// The lowest target of a button that has none.
constexpr int kFirstOfNone = 1;

// External switcher destinations are numbered after the stations.
constexpr int kBeforeExternal = 64;

model::Status ReadNumber(const jet::RecordSet& stations, int button, const char* suffix,
                         int* number) {
  jet::Value value;
  const jet::Status status = stations.Get(db::ButtonField(button, suffix), &value);
  *number = status.ok() ? value.Int() : 0;
  return status;
}

// The text of a target's record, or kNoTarget without a record or a text.  Moves.
model::Status ReadTargetText(jet::RecordSet& stations, int type, int target, const char* field,
                             std::string* text) {
  *text = kNoTarget;
  const int number = type == kExternal ? target + kBeforeExternal : target;
  if (model::Status status = FindStation(stations, number); !status.ok()) return status;
  if (stations.NoMatch()) return {};
  jet::Value value;
  const jet::Status status = stations.Get(field, &value);
  if (status.ok() && !value.IsNull()) *text = value.Text();
  return status;
}

}  // namespace

model::Status ReadButton(const jet::RecordSet& stations, int button, ButtonProgram* program) {
  *program = {};
  model::Status status = ReadNumber(stations, button, kType, &program->type);
  if (status.ok()) status = ReadNumber(stations, button, kFirst, &program->first);
  jet::Value targets;
  if (status.ok()) status = stations.Get(db::ButtonField(button, kProg), &targets);
  if (status.ok()) program->targets = switcher::PlainFlags(targets.Text());
  return status;
}

model::Status ReadButtonTypes(const jet::RecordSet& stations, int count, std::vector<int>* types) {
  types->assign(static_cast<std::size_t>(count), kNoType);
  model::Status result;
  for (int button = 1; button <= count; ++button) {
    int type = 0;
    const model::Status status = ReadNumber(stations, button, kType, &type);
    if (status.ok()) (*types)[static_cast<std::size_t>(button - 1)] = type;
    if (result.ok()) result = status;
  }
  return result;
}

model::Status ReadButtonCaptions(jet::RecordSet& stations, int count,
                                 std::vector<std::string>* captions) {
  const db::KeepPosition keep(stations);
  captions->assign(static_cast<std::size_t>(count), kNoTarget);
  model::Status result;
  const auto check = [&result](const model::Status& status) {
    if (result.ok()) result = status;
    return status.ok();
  };
  // All of the record first, and then what it points to: moving back and forth for each button
  // would read the record of the station many times over.
  std::vector<std::pair<int, int>> targets(static_cast<std::size_t>(count));
  for (int button = 1; button <= count; ++button) {
    auto& [type, first] = targets[static_cast<std::size_t>(button - 1)];
    if (!check(ReadNumber(stations, button, kType, &type)) ||
        !check(ReadNumber(stations, button, kFirst, &first))) {
      first = 0;
    }
  }
  for (std::size_t i = 0; i < targets.size(); ++i) {
    const auto& [type, first] = targets[i];
    if (first == 0) continue;
    check(ReadTargetText(stations, type, first, switcher::kLabelField, &(*captions)[i]));
  }
  return result;
}

model::Status ReadEditedCaption(jet::RecordSet& stations, int button, int targetCount,
                                std::string* caption) {
  *caption = kNoTarget;
  ButtonProgram program;
  if (model::Status status = ReadButton(stations, button, &program); !status.ok()) return status;
  const int first = FirstTarget(program.targets, targetCount);
  if (first == 0) return {};
  const db::KeepPosition keep(stations);
  return ReadTargetText(stations, program.type, first, switcher::kLabelField, caption);
}

model::Status ReadChosenCaption(jet::RecordSet& stations, int button, std::string* caption) {
  *caption = kNoTarget;
  int type = 0;
  int first = 0;
  model::Status status = ReadNumber(stations, button, kType, &type);
  if (status.ok()) status = ReadNumber(stations, button, kFirst, &first);
  if (!status.ok()) return status;
  if (type == kInactive || !IsOperation(type)) {
    *caption = kInactiveCaption;
    return {};
  }
  const db::KeepPosition keep(stations);
  const bool listens = OperationOf(type).targets == TargetKind::Sources;
  return ReadTargetText(stations, type, first,
                        listens ? switcher::kInLabelField : switcher::kLabelField, caption);
}

model::Status StoreTarget(jet::RecordSet& stations, int button, int target, bool set,
                          int targetCount, bool* isInactive) {
  *isInactive = false;
  const std::string progField = db::ButtonField(button, kProg);
  jet::Value stored;
  if (const jet::Status status = stations.Get(progField, &stored); !status.ok()) return status;
  const std::string text = WithMember(stored.Text(), target, set, targetCount);
  const int first = FirstTarget(switcher::PlainFlags(text), targetCount);
  const std::string firstField = db::ButtonField(button, kFirst);
  if (first != 0) return StoreFields(stations, {{progField, text}, {firstField, first}});
  model::Status status = StoreFields(
      stations,
      {{progField, text}, {firstField, kFirstOfNone}, {db::ButtonField(button, kType), kInactive}});
  *isInactive = status.ok();
  return status;
}

model::Status StoreType(jet::RecordSet& stations, int button, int type, bool* changed) {
  *changed = false;
  const std::string field = db::ButtonField(button, kType);
  jet::Value stored;
  if (const jet::Status status = stations.Get(field, &stored); !status.ok()) return status;
  if (!stored.IsNull() && stored.Int() == type) return {};
  model::Status status = StoreFields(stations, {{field, type}});
  *changed = status.ok();
  return status;
}

model::Status StoreInactive(jet::RecordSet& stations, int button, bool* changed) {
  *changed = false;
  ButtonProgram program;
  if (model::Status status = ReadButton(stations, button, &program); !status.ok()) return status;
  if (program.targets.find('1') != std::string::npos) return {};
  if (program.type == kInactive && program.first == kFirstOfNone) return {};
  model::Status status = StoreFields(stations, {{db::ButtonField(button, kFirst), kFirstOfNone},
                                                {db::ButtonField(button, kType), kInactive}});
  *changed = status.ok();
  return status;
}

model::Status ReadRelays(const jet::RecordSet& stations, std::string* relays) {
  jet::Value value;
  const jet::Status status = stations.Get(switcher::kRelaysField, &value);
  *relays = status.ok() ? switcher::PlainFlags(value.Text()) : std::string();
  return status;
}

model::Status StoreRelay(jet::RecordSet& stations, int relay, bool set, int relayCount) {
  jet::Value stored;
  if (const jet::Status status = stations.Get(switcher::kRelaysField, &stored); !status.ok()) {
    return status;
  }
  return StoreFields(stations,
                     {{switcher::kRelaysField, WithMember(stored.Text(), relay, set, relayCount)}});
}

}  // namespace rules
