// SPDX-License-Identifier: MIT

#include "stations/record.h"

#include <algorithm>
#include <utility>

#include "model/flag_string.h"

namespace stations {

bool Record::Read(std::string_view field, jet::Value* value) {
  const jet::Status read = records_.Get(field, value);
  if (!read.ok()) value->SetNull();
  if (outcome_.ok()) outcome_ = read;
  return read.ok();
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
  changes_.push_back({.field = std::string(field), .value = std::move(value)});
}

// A field that cannot be read differs from any value: storing one may mend it.
bool Record::Differs() const {
  return std::any_of(changes_.begin(), changes_.end(), [this](const Change& change) {
    jet::Value before;
    return !records_.Get(change.field, &before).ok() || !(before == change.value);
  });
}

model::Status Record::Commit(bool* stored) {
  if (stored != nullptr) *stored = false;
  if (!outcome_.ok() || !Differs()) return outcome_;
  jet::Status status = records_.Edit();
  for (const Change& change : changes_) {
    if (status.ok()) status = records_.Set(change.field, change.value);
  }
  if (status.ok()) status = records_.Update();
  if (!status.ok()) records_.CancelUpdate();
  if (stored != nullptr) *stored = status.ok();
  return status;
}

}  // namespace stations
