// SPDX-License-Identifier: MIT

#include "gateway/panel_gateway.h"

#include <utility>

#include "switcher/wire/message_table.h"

namespace gateway {

namespace {

// Its checksum is that of no data bytes.
Bytes ConnectionRequest() { return {kConnectionType, 0x00, 0x00, kTerminator}; }

}  // namespace

PanelGateway::PanelGateway(const Services& services)
    : clients_({.decodeTimer = services.decodeTimer, .reporter = services.reporter}),
      queue_({.clients = clients_, .timer = services.timer, .reporter = services.reporter}),
      senders_({.model = services.model,
                .files = services.files,
                .queue = queue_,
                .reporter = services.reporter}),
      requests_({.model = services.model, .clients = clients_, .senders = senders_}),
      takes_({.clients = clients_,
              .locks = services.locks,
              .line = services.line,
              .commands = services.commands,
              .events = services.events,
              .mayTake = services.mayTake}),
      protocol_({.model = services.model,
                 .clients = clients_,
                 .queue = queue_,
                 .requests = requests_,
                 .takes = takes_,
                 .reporter = services.reporter}) {
  // What waits for a client that goes is forgotten before others hear of it.
  clients_.AddObserver(queue_);
  clients_.AddObserver(services.events);
  queue_.AddObserver(requests_);
}

void PanelGateway::Accept(std::unique_ptr<ClientSocket> socket) {
  const int slot = clients_.Accept(std::move(socket));
  if (slot == 0) return;
  queue_.SendToClient(
      FixedMessage({.kind = MessageId::Kind::ConnectionRequest, .first = 0, .count = 0},
                   ConnectionRequest()),
      slot);
}

bool PanelGateway::DecodeTick() {
  const bool clientsWorked = protocol_.DecodeClients();
  const bool takesWaited = takes_.SendOn();
  return clientsWorked || takesWaited;
}

void PanelGateway::CrosspointRowChanged(int output, int /*mode*/) {
  if (clients_.ClientCount() > 0) senders_.SendCrosspointMapToClients(output, 1, model::kAll);
}

void PanelGateway::LabelsChanged(int selector) {
  if (clients_.ClientCount() == 0) return;
  senders_.SendAlphaTableToClients(switcher::kOutputLabels, model::kAll);
  // The last panel may have gone while it was sent the first table.
  if (selector == switcher::kInputLabels && clients_.ClientCount() > 0) {
    senders_.SendAlphaTableToClients(selector, model::kAll);
  }
}

void PanelGateway::ButtonsChanged(int /*station*/) {
  if (clients_.ClientCount() > 0) senders_.SendStationProgrammingToClients(model::kAll);
}

void PanelGateway::CloseAll() {
  clients_.CloseAll();
  queue_.Clear();
}

}  // namespace gateway
