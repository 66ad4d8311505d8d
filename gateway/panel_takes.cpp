// SPDX-License-Identifier: MIT

#include "gateway/panel_takes.h"

#include <algorithm>

#include "model/system_model.h"

namespace gateway {

void PanelTakes::Add(const PanelTake& take, int slot) {
  // Eight bits of a channel travel to the switcher: a greater one would fold onto another.  Whether
  // there is such a channel is for the switcher to judge.
  if (std::max(take.destination, take.source) > model::kMaxChannelCount) return;
  const PanelName panel = services_.clients.Name(slot);
  if (services_.mayTake != nullptr && !services_.mayTake(panel.address)) {
    services_.events.PanelMayNotTake(panel, take);
    return;
  }
  services_.clients.Connection(slot).Takes.push_back(take);
}

bool PanelTakes::SendOn() {
  const int slots = services_.clients.SocketCount();
  const int first = turn_;
  turn_ = 1;
  bool worked = false;
  for (int i = 0; i < slots; ++i) {
    const int slot = (first - 1 + i) % slots + 1;
    std::deque<PanelTake>& takes = services_.clients.Connection(slot).Takes;
    if (takes.empty()) continue;
    worked = true;
    if (!services_.line.HasRoom()) {
      turn_ = slot;
      break;
    }
    const PanelTake take = takes.front();
    takes.pop_front();
    if (services_.locks.IsLockedForPanels(take.destination)) {
      services_.events.PanelTakeIgnored(services_.clients.Name(slot), take);
      continue;
    }
    if (services_.commands.SendTake(take.destination, take.source, take.action)) {
      services_.events.PanelTook(services_.clients.Name(slot), take);
    }
  }
  return worked;
}

}  // namespace gateway
