// SPDX-License-Identifier: MIT

#include "app/shell/view_place.h"

#include "stations/label_texts.h"

namespace app {

ViewPlace PlaceOfLabel(int station, bool ofInput) {
  const auto column =
      ofInput ? stations::LabelColumn::InputLabel : stations::LabelColumn::StationLabel;
  return {ViewPlace::Kind::Label, station, static_cast<int>(column)};
}

ViewPlace PlaceOfOpto(int opto) { return {ViewPlace::Kind::Opto, opto, 0}; }

ViewPlace PlaceOf(const stations::Use& use) {
  switch (use.kind) {
    case stations::Use::Kind::Button:
      return {ViewPlace::Kind::Button, use.station, use.part};
    case stations::Use::Kind::Opto:
    case stations::Use::Kind::OptoChannel:
      return PlaceOfOpto(use.part);
    case stations::Use::Kind::Inhibit:
      break;
  }
  return {ViewPlace::Kind::Crosspoint, use.station, use.part};
}

}  // namespace app
