// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_TAKES_H_
#define GATEWAY_PANEL_TAKES_H_

#include <functional>
#include <string>
#include <utility>

#include "gateway/client_table.h"
#include "gateway/panel_events.h"
#include "gateway/take_frame.h"
#include "model/locks.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"

namespace gateway {

// Passes on to the switcher what panels take.  While the line has no room for panels, the takes of
// each wait in their order, and whatever else the panel sends is served meanwhile; when there is
// room again it goes round the panels.  One of an output that is locked for panels is ignored.
class PanelTakes {
 public:
  // All must outlive the object.
  struct Services {
    ClientTable& clients;
    const model::Locks& locks;
    const switcher::LineShare& line;
    switcher::LiveCommands& commands;
    PanelEvents& events;
    std::function<bool(const std::string&)> mayTake;  // from that address; null: from all
  };
  explicit PanelTakes(Services services) : services_(std::move(services)) {}

  // A take of the client of a slot.  One of a channel that the line cannot name, or of a client
  // that may not take, is ignored.
  void Add(const PanelTake& take, int slot);

  // Passes on at most one take of every client, while the line has room.  To be called once per
  // decode tick.  False when none was waiting.
  bool SendOn();

 private:
  const Services services_;
  int turn_ = 1;  // the slot that is the first to have the line next
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_TAKES_H_
