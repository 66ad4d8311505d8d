// SPDX-License-Identifier: MIT

#include "tools/teskpanel/watch_task.h"

namespace teskpanel {

namespace {

// Stores `value` under `key`.  True when it is worth a line: it differs from what was there, or
// nothing was there and `isNews`.
template <typename Map>
bool Note(Map& known, const typename Map::key_type& key, const typename Map::mapped_type& value,
          bool isNews) {
  const auto [place, isNew] = known.try_emplace(key, value);
  if (isNew) return isNews;
  if (place->second == value) return false;
  place->second = value;
  return true;
}

}  // namespace

void WatchTask::OnServed(Session& session, bool linkUp) {
  linkUp_ = linkUp;
  printer_.Connected(where_, linkUp);
  if (linkUp) session.Request(mask_);
}

void WatchTask::OnLinkAnswer(Session& session, bool linkUp) {
  if (linkUp == linkUp_) return;
  linkUp_ = linkUp;
  printer_.Link(linkUp);
  if (linkUp) session.Request(mask_);
}

void WatchTask::OnMap(Session&, const CrosspointMap& map) {
  if ((mask_ & kAskMap) == 0) return;
  for (const MapRow& row : map.rows) {
    if (Note(rows_, row.output, row, printer_.Shows(row))) printer_.Row(row);
  }
}

void WatchTask::OnLabels(Session&, const LabelTable& table) {
  const int bit = table.kind == LabelKind::Station ? kAskStationLabels : kAskInputLabels;
  if ((mask_ & bit) == 0) return;
  for (const Label& label : table.labels) {
    if (Note(labels_, {table.kind, label.station}, label.text, true)) {
      printer_.LabelText(table.kind, label);
    }
  }
}

void WatchTask::OnProgramming(Session&, const std::vector<StationButtons>& stations) {
  if ((mask_ & kAskProgramming) == 0) return;
  for (const StationButtons& station : stations) {
    int number = 0;
    for (const Button& button : station.buttons) {
      ++number;
      if (Note(buttons_, {station.station, number}, button, printer_.Shows(button))) {
        printer_.ButtonProgram(station.station, number, button);
      }
    }
  }
}

}  // namespace teskpanel
