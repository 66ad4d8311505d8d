// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_GATEWAY_H_
#define GATEWAY_PANEL_GATEWAY_H_

#include <functional>
#include <memory>
#include <string>

#include "db/database_files.h"
#include "gateway/client_table.h"
#include "gateway/decode_timer.h"
#include "gateway/panel_events.h"
#include "gateway/panel_protocol.h"
#include "gateway/panel_requests.h"
#include "gateway/panel_senders.h"
#include "gateway/panel_takes.h"
#include "gateway/pause_timer.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"
#include "switcher/switcher_events.h"

namespace gateway {

// The gateway between network panels and the switcher: their connections, what they ask for,
// and what all of them are told of what the switcher reports.
class PanelGateway : public switcher::SwitcherEvents {
 public:
  // What the gateway works on.  All must outlive it.
  struct Services {
    const model::SystemModel& model;
    const model::Locks& locks;
    const db::DatabaseFiles& files;
    switcher::LiveCommands& commands;
    const switcher::LineShare& line;
    PauseTimer& timer;
    DecodeTimer& decodeTimer;
    PanelEvents& events;
    model::ErrorReporter& reporter;
    std::function<bool(const std::string&)> mayTake = {};  // from that address; null: from all
  };

  explicit PanelGateway(const Services& services);

  // Takes a new connection and asks the client what it is.
  void Accept(std::unique_ptr<ClientSocket> socket);

  // A tick of the decode timer begins.
  void BeginTick() { ++clients_.TcpIdleTicks; }

  // The panels' part of the tick: decodes at most one frame of every client, and passes takes on.
  // False when there was no work.
  bool DecodeTick();

  // All panels, if there are any, get the row, the labels or the programming.  The labels of the
  // stations go out after either table of labels; those of the inputs, if it was theirs, follow.
  void CrosspointRowChanged(int output, int mode) override;
  void LabelsChanged(int selector) override;
  void ButtonsChanged(int station) override;

  // Closes all connections and sends nothing any more.
  void CloseAll();

  ClientTable& Clients() { return clients_; }
  SendQueue& Queue() { return queue_; }
  PanelSenders& Senders() { return senders_; }

 private:
  ClientTable clients_;
  SendQueue queue_;
  PanelSenders senders_;
  PanelRequests requests_;
  PanelTakes takes_;
  PanelProtocol protocol_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_GATEWAY_H_
