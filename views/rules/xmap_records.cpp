// SPDX-License-Identifier: MIT

#include "views/rules/xmap_records.h"

namespace rules {
namespace {

constexpr std::string_view kInhibits = "Inhibits";

}  // namespace

model::Status ReadTexts(jet::RecordSet& stations, std::string_view field, int count,
                        std::vector<std::optional<std::string>>* texts) {
  texts->clear();
  texts->reserve(static_cast<std::size_t>(count));
  if (const jet::Status moved = stations.MoveFirst(); !moved.ok()) return moved;
  jet::Value value;
  for (int r = 1; r <= count; ++r) {
    if (const jet::Status read = stations.Get(field, &value); !read.ok()) return read;
    texts->push_back(value.IsNull() ? std::nullopt : std::optional(value.Text()));
    // The move behind the last record wanted may lead past the end; the next read tells.
    if (const jet::Status moved = stations.MoveNext(); !moved.ok()) return moved;
  }
  return {};
}

model::Status ReadTextsThere(jet::RecordSet& stations, std::string_view field, int count,
                             std::vector<std::optional<std::string>>* texts) {
  constexpr int kEnd = static_cast<int>(jet::ErrorNumber::NoCurrentRecord);
  model::Status status = ReadTexts(stations, field, count, texts);
  if (status.Number() != kEnd) return status;
  texts->resize(static_cast<std::size_t>(count));
  return {};
}

model::Status FindInhibits(jet::RecordSet& stations, int output,
                           std::optional<std::string>* flags) {
  flags->reset();
  if (const jet::Status found = stations.FindFirst("StationNum", output); !found.ok()) return found;
  if (stations.NoMatch()) return {};
  jet::Value value;
  if (const jet::Status read = stations.Get(kInhibits, &value); !read.ok()) return read;
  *flags = value.Text();
  return {};
}

model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags) {
  if (const jet::Status begun = stations.Edit(); !begun.ok()) return begun;
  jet::Status stored = stations.Set(kInhibits, flags);
  if (stored.ok()) stored = stations.Update();
  if (!stored.ok()) stations.CancelUpdate();
  return stored;
}

}  // namespace rules
