// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_GATEWAY_H_
#define GATEWAY_PANEL_GATEWAY_H_

#include <functional>
#include <memory>
#include <string>

#include "db/database_files.h"
#include "gateway/client_table.h"
#include "gateway/panel_events.h"
#include "gateway/panel_protocol.h"
#include "gateway/panel_requests.h"
#include "gateway/panel_senders.h"
#include "gateway/panel_takes.h"
#include "gateway/pause_timer.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"

namespace gateway {

// The timer that calls DecodeTick(); the main window has it.
class DecodeTimer {
 public:
  virtual ~DecodeTimer() = default;

  // Bytes wait to be decoded: let the timer run.
  virtual void StartDecodeTimer() = 0;
};

// The gateway between network panels and the switcher: their connections, what they ask for,
// and what all of them are told.
class PanelGateway : private ClientTableEvents {
 public:
  // What the gateway works on.  All must outlive it.
  struct Services {
    const model::SystemModel& model;
    const db::DatabaseFiles& files;
    switcher::LiveCommands& commands;
    const switcher::LineShare& line;
    PauseTimer& timer;
    DecodeTimer& decodeTimer;
    PanelEvents& events;
    model::ErrorReporter& reporter;
  };

  explicit PanelGateway(const Services& services);

  // Takes a new connection and asks the client what it is.
  void Accept(std::unique_ptr<ClientSocket> socket);

  // One tick of the decode timer: `decodeSwitcher` decodes at most one message of the switcher
  // and says whether there was work, then at most one frame of every client is decoded, and takes
  // are passed on.  False when there was no work at all.
  bool DecodeTick(const std::function<bool()>& decodeSwitcher);

  // The rows, labels and programming for all panels, when there is any.
  void ForwardCrosspointRow(int output);
  void ForwardLabels(int kind);
  void ForwardProgramming();

  // Closes all connections and sends nothing any more.
  void CloseAll();

  ClientTable& Clients() { return clients_; }
  SendQueue& Queue() { return queue_; }
  PanelSenders& Senders() { return senders_; }

 private:
  void BytesWait() override { decodeTimer_.StartDecodeTimer(); }
  void ClientAccepted(int slot) override;
  void ClientIdentified(int slot) override;
  void ClientClosed(int slot, const std::string& address) override;
  void ClientDropped(int slot, DropReason reason) override;

  DecodeTimer& decodeTimer_;
  PanelEvents& events_;
  ClientTable clients_;
  SendQueue queue_;
  PanelSenders senders_;
  PanelRequests requests_;
  PanelTakes takes_;
  PanelProtocol protocol_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_GATEWAY_H_
