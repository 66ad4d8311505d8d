// SPDX-License-Identifier: MIT

#include "app/shell/stored_elsewhere.h"

#include <algorithm>
#include <string_view>

#include "db/station_fields.h"

namespace app {
namespace {

using stations::Change;
using stations::FieldChange;
using stations::Origin;

// Whether the view that was worked in, or what observes the decoders, draws what these store.
bool IsShownAlready(Origin origin) {
  switch (origin) {
    case Origin::Operator:
    case Origin::Navigation:
    case Origin::Switcher:
      return true;
    case Origin::Undo:
    case Origin::Redo:
    case Origin::Restore:
    case Origin::Comparison:
    case Origin::Backup:
    case Origin::File:
      return false;
  }
  return false;
}

// The labels stand in every view; the other fields of the label grid in that alone.
constexpr const char* kLabels[] = {db::kLabelField, db::kInLabelField};
constexpr const char* kGridOnly[] = {db::kHiddenField, db::kNotesField, db::kSysInputField,
                                     db::kSysOutputField};

template <typename Fields>
bool TouchesAny(std::span<const Change> changes, const Fields& fields) {
  return std::ranges::any_of(fields,
                             [&](const char* field) { return stations::Touches(changes, field); });
}

}  // namespace

void StoredElsewhere::Changed(std::span<const Change> changes) {
  if (IsShownAlready(changes.front().origin)) return;
  ShowLabels(changes);
  ShowInhibits(changes);
  ShowProgramming(changes);
}

void StoredElsewhere::ShowLabels(std::span<const Change> changes) {
  if (TouchesAny(changes, kLabels)) {
    views_.UpdateLabels();
  } else if (views::AlphasView* const alphas = views_.Alphas();
             alphas != nullptr && TouchesAny(changes, kGridOnly)) {
    alphas->UpdateLabels();
  }
}

void StoredElsewhere::ShowInhibits(std::span<const Change> changes) {
  views::XmapView* const xmap = views_.Xmap();
  if (xmap == nullptr) return;
  for (const Change& change : changes) {
    for (const FieldChange& field : change.fields) {
      if (field.field != db::kInhibitsField) continue;
      xmap->InhibitsStored(change.station, field.before.Text(), field.after.Text());
    }
  }
}

// Of the station that is shown: another one is read when the operator goes there.
void StoredElsewhere::ShowProgramming(std::span<const Change> changes) {
  views::ButtonsView* const buttons = views_.Buttons();
  if (buttons == nullptr) return;
  const int shown = buttons->CurrentStation();
  if (std::ranges::find(changes, shown, &Change::station) != changes.end()) {
    buttons->UpdateStation();
  }
}

}  // namespace app
