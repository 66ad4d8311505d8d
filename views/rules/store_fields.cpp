// SPDX-License-Identifier: MIT

#include "views/rules/store_fields.h"

namespace rules {
namespace {

model::Status Differ(const jet::RecordSet& stations, std::initializer_list<FieldValue> fields,
                     bool* differ) {
  *differ = false;
  for (const auto& [field, value] : fields) {
    jet::Value before;
    if (const jet::Status read = stations.Get(field, &before); !read.ok()) return read;
    *differ = *differ || !(before == value);
  }
  return {};
}

}  // namespace

model::Status StoreFields(jet::RecordSet& stations, std::initializer_list<FieldValue> fields,
                          bool* stored) {
  if (stored != nullptr) *stored = false;
  bool differ = false;
  if (model::Status read = Differ(stations, fields, &differ); !read.ok() || !differ) return read;
  jet::Status status = stations.Edit();
  for (const auto& [field, value] : fields) {
    if (status.ok()) status = stations.Set(field, value);
  }
  if (status.ok()) status = stations.Update();
  if (!status.ok()) stations.CancelUpdate();
  if (stored != nullptr) *stored = status.ok();
  return status;
}

}  // namespace rules
