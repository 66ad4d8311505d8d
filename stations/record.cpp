// SPDX-License-Identifier: MIT

#include "stations/record.h"

#include <algorithm>
#include <utility>

#include "db/station_fields.h"
#include "model/flag_string.h"

namespace stations {

bool Record::Read(std::string_view field, jet::Value* value) {
  const jet::Status read = records_.Get(field, value);
  if (read.ok()) return true;
  value->SetNull();
  if (outcome_.ok()) outcome_ = read;
  return false;
}

jet::Value Record::Get(std::string_view field) {
  jet::Value value;
  Read(field, &value);
  return value;
}

int Record::Number(std::string_view field, int unreadable) {
  jet::Value value;
  return Read(field, &value) ? value.Int() : unreadable;
}

std::string Record::Flags(std::string_view field) { return model::PlainFlags(Text(field)); }

void Record::Set(std::string_view field, jet::Value value) {
  const auto known = std::ranges::find(changes_, field, &FieldChange::field);
  if (known != changes_.end()) {
    known->after = std::move(value);
  } else {
    changes_.push_back({.field = std::string(field), .before = {}, .after = std::move(value)});
  }
}

// A field that cannot be read differs from any value: storing one may mend it.
void Record::KeepWhatDiffers() {
  std::vector<FieldChange> differing;
  for (FieldChange& change : changes_) {
    const bool isRead = records_.Get(change.field, &change.before).ok();
    if (isRead && change.before == change.after) continue;
    if (!isRead) change.before.SetNull();
    differing.push_back(std::move(change));
  }
  changes_ = std::move(differing);
}

model::Status Record::Commit(const Author& author, bool* stored) {
  if (stored != nullptr) *stored = false;
  if (!outcome_.ok()) return outcome_;
  KeepWhatDiffers();
  if (changes_.empty()) return {};
  if (!author.changes.MayStore(author.origin)) {
    return author.origin == Origin::Navigation ? model::Status() : model::ConsoleLocked();
  }
  jet::Status status = records_.Edit();
  for (const FieldChange& change : changes_) {
    if (status.ok()) status = records_.Set(change.field, change.after);
  }
  if (status.ok()) status = records_.Update();
  if (!status.ok()) {
    records_.CancelUpdate();
    return status;
  }
  if (stored != nullptr) *stored = true;
  jet::Value station;
  (void)records_.Get(db::kStationNumField, &station);
  author.changes.Announce(
      {.origin = author.origin, .station = station.Int(), .fields = std::move(changes_)});
  return {};
}

}  // namespace stations
