// SPDX-License-Identifier: MIT

#include "stations/target_labels.h"

#include "db/database_files.h"
#include "db/keep_position.h"
#include "db/station_fields.h"
#include "model/padded.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/record.h"
#include "stations/texts.h"

namespace stations {
namespace {

const char* FieldOf(bool input) { return input ? db::kInLabelField : db::kLabelField; }

Reading<std::string> ReadLabel(jet::RecordSet& stations, int number, const char* field) {
  Reading<std::string> label{.value = kNoTarget, .status = FindStation(stations, number)};
  if (!label.status.ok() || stations.NoMatch()) return label;
  Record record(stations);
  const jet::Value value = record.Get(field);
  if (!value.IsNull()) label.value = value.Text();
  label.status = record.Outcome();
  return label;
}

}  // namespace

const TargetLabels::Texts& TargetLabels::Captions(int code, int count) const {
  const TargetKind targets = OperationOf(code).targets;
  const auto [entry, isNew] = captions_.try_emplace({targets, count});
  if (isNew) entry->second = MakeCaptions(targets, count);
  return entry->second;
}

TargetLabels::Texts TargetLabels::MakeCaptions(TargetKind targets, int count) const {
  if (stations_ == nullptr) return {.status = db::NotOpen()};
  Texts captions;
  if (targets == TargetKind::Channels) {
    for (int target = 1; target <= count; ++target) {
      captions.value.push_back("Chan " + model::Padded(target, 2));
    }
    return captions;
  }
  const db::KeepPosition keep(*stations_);
  std::vector<std::optional<std::string>> labels;
  captions.status =
      ReadAvailableTexts(*stations_, FieldOf(targets == TargetKind::Sources), count, &labels);
  labels.resize(static_cast<std::size_t>(count));
  for (const std::optional<std::string>& label : labels) {
    const int target = static_cast<int>(captions.value.size()) + 1;
    captions.value.push_back(label.value_or("Sta. " + model::Padded(target, 3)));
  }
  return captions;
}

Reading<std::string> TargetLabels::Of(int code, int target, bool input) const {
  if (stations_ == nullptr) return {.value = kNoTarget, .status = db::NotOpen()};
  const int number = code == kExternal ? target + kBeforeExternal : target;
  const auto [entry, isNew] = single_.try_emplace({FieldOf(input), number});
  if (isNew) {
    const db::KeepPosition keep(*stations_);
    entry->second = ReadLabel(*stations_, number, FieldOf(input));
  }
  return entry->second;
}

}  // namespace stations
