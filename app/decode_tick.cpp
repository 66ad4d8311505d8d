// SPDX-License-Identifier: MIT

#include "app/decode_tick.h"

namespace app {

bool DecodeTick(switcher::Link& link, gateway::PanelGateway& panels) {
  panels.BeginTick();
  const bool switcherWorked = link.DecodeTick();
  const bool panelsWorked = panels.DecodeTick();
  return switcherWorked || panelsWorked;
}

}  // namespace app
