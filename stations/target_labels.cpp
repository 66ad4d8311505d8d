// SPDX-License-Identifier: MIT

#include "stations/target_labels.h"

#include <algorithm>

#include "db/database_files.h"
#include "db/keep_position.h"
#include "db/station_fields.h"
#include "model/padded.h"
#include "stations/operations.h"

namespace stations {
namespace {

// External switcher destinations are numbered after the stations.
constexpr int kBeforeExternal = 64;

Reading<std::optional<std::string>> ReadLabel(jet::RecordSet& stations, const char* field) {
  jet::Value value;
  const jet::Status read = stations.Get(field, &value);
  if (!read.ok() || value.IsNull()) return {.status = read};
  return {.value = value.Text()};
}

}  // namespace

TargetLabels::TargetLabels(jet::RecordSet* stations)
    : isOpen_(stations != nullptr), end_(db::NotOpen()) {
  if (!isOpen_) return;
  const db::KeepPosition keep(*stations);
  for (end_ = stations->MoveFirst(); end_.ok() && stations->HasRecord();
       end_ = stations->MoveNext()) {
    jet::Value number;
    (void)stations->Get(db::kStationNumField, &number);
    records_.push_back({.number = number.Int(),
                        .output = ReadLabel(*stations, db::kLabelField),
                        .input = ReadLabel(*stations, db::kInLabelField)});
  }
}

Reading<std::vector<std::string>> TargetLabels::Captions(int code, int count) const {
  if (!isOpen_) return {.status = end_};
  Reading<std::vector<std::string>> captions;
  const TargetKind targets = OperationOf(code).targets;
  for (int target = 1; target <= count; ++target) {
    if (targets == TargetKind::Channels) {
      captions.value.push_back("Chan " + model::Padded(target, 2));
      continue;
    }
    const auto place = static_cast<std::size_t>(target - 1);
    const bool isThere = place < records_.size();
    const Label& label = !isThere                         ? Label{.status = end_}
                         : targets == TargetKind::Sources ? records_[place].input
                                                          : records_[place].output;
    captions.value.push_back(label.value.value_or("Sta. " + model::Padded(target, 3)));
    if (captions.status.ok()) captions.status = label.status;
  }
  return captions;
}

Reading<std::string> TargetLabels::Of(int code, int target, bool input) const {
  const int number = code == kExternal ? target + kBeforeExternal : target;
  const auto record = std::ranges::find(records_, number, &Record::number);
  if (record == records_.end()) return {.value = kNoTarget, .status = end_};
  const Label& label = input ? record->input : record->output;
  return {.value = label.value.value_or(kNoTarget), .status = label.status};
}

}  // namespace stations
