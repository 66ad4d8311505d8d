// SPDX-License-Identifier: MIT

#include "app/journal/change_place.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/label_texts.h"

namespace app {
namespace {

using Place = ViewPlace::Kind;

// The first member (from 1) that one of two flag strings has and the other has not; 1 without one.
int FirstDifference(const jet::Value& before, const jet::Value& after) {
  const auto one = model::FlagMembers(before.Text());
  const auto other = model::FlagMembers(after.Text());
  const std::size_t count = std::max(one.size(), other.size());
  for (std::size_t i = 0; i < count; ++i) {
    const bool was = i < one.size() && one[i] != 0;
    const bool is = i < other.size() && other[i] != 0;
    if (was != is) return static_cast<int>(i) + 1;
  }
  return 1;
}

int InputOf(const stations::Change& change) {
  const auto inhibits =
      std::ranges::find(change.fields, db::kInhibitsField, &stations::FieldChange::field);
  return inhibits == change.fields.end() ? 1 : FirstDifference(inhibits->before, inhibits->after);
}

}  // namespace

ViewPlace PlaceOf(const stations::Change& change, std::string_view field) {
  const int station = change.station;
  if (field == db::kInhibitsField) return {Place::Crosspoint, station, InputOf(change)};
  if (field == db::kRelaysField) return {Place::Relays, station, 0};
  if (field.starts_with("Opto")) return PlaceOfOpto(station);
  if (const int button = db::ButtonOfField(field); button != 0) {
    return {Place::Button, station, button};
  }
  const auto column = std::ranges::find(stations::kLabelColumns, field, [](const auto& spec) {
    return std::string_view(spec.field);
  });
  return {Place::Label, station,
          column == stations::kLabelColumns.end()
              ? static_cast<int>(stations::LabelColumn::StationLabel)
              : static_cast<int>(column - stations::kLabelColumns.begin())};
}

}  // namespace app
