// SPDX-License-Identifier: MIT

#include "app/panel_forwarding.h"

#include "gateway/panel_tables.h"

namespace app {

void PanelForwarding::CrosspointRowChanged(int output, int mode) {
  views_.CrosspointRowChanged(output, mode);
  panels_.ForwardCrosspointRow(output);
}

// The stations' labels go out after either table, as panels have always had them; labels of
// inputs that have changed follow.
void PanelForwarding::LabelsChanged(int selector) {
  views_.LabelsChanged(selector);
  panels_.ForwardLabels(gateway::kStationLabels);
  if (selector == gateway::kInputLabels) panels_.ForwardLabels(gateway::kInputLabels);
}

void PanelForwarding::ButtonsChanged(int station) {
  views_.ButtonsChanged(station);
  panels_.ForwardProgramming();
}

}  // namespace app
