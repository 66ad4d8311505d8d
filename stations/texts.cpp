// SPDX-License-Identifier: MIT

#include "stations/texts.h"

namespace stations {

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

model::Status ReadAvailableTexts(jet::RecordSet& stations, std::string_view field, int count,
                                 std::vector<std::optional<std::string>>* texts) {
  constexpr int kEnd = static_cast<int>(jet::ErrorNumber::NoCurrentRecord);
  model::Status status = ReadTexts(stations, field, count, texts);
  if (status.Number() != kEnd) return status;
  texts->resize(static_cast<std::size_t>(count));
  return {};
}

}  // namespace stations
