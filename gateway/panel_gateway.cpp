// SPDX-License-Identifier: MIT

#include "gateway/panel_gateway.h"

#include <utility>

#include "gateway/connection_type.h"

namespace gateway {

namespace {

// Its checksum is that of no data bytes.
Bytes ConnectionRequest() { return {kConnectionType, 0x00, 0x00, kTerminator}; }

}  // namespace

PanelGateway::PanelGateway(const Services& services)
    : display_(services.display),
      clients_(*this, services.reporter),
      queue_(clients_, services.timer, services.reporter),
      senders_(services.model, services.files, queue_, services.reporter),
      requests_(services.model, clients_, senders_),
      takes_(clients_, services.line, services.commands),
      protocol_(services.model, clients_, queue_, requests_, takes_, services.reporter) {
  queue_.SetDone([this](int slot, MessageId id, bool sent) { requests_.Done(slot, id, sent); });
}

void PanelGateway::Accept(std::unique_ptr<ClientSocket> socket) {
  const int slot = clients_.Accept(std::move(socket));
  if (slot == 0) return;
  queue_.SendToClient(
      FixedMessage({.kind = MessageId::Kind::ConnectionRequest, .first = 0, .count = 0},
                   ConnectionRequest()),
      slot);
}

bool PanelGateway::DecodeTick(const std::function<bool()>& decodeSwitcher) {
  protocol_.CountTick();
  const bool switcherWorked = decodeSwitcher();
  const bool clientsWorked = protocol_.DecodeClients();
  const bool takesWaited = takes_.SendOn();
  return switcherWorked || clientsWorked || takesWaited;
}

void PanelGateway::ForwardCrosspointRow(int output) {
  if (clients_.ClientCount() > 0) senders_.SendCrosspointMapToClients(output, 1, model::kAll);
}

void PanelGateway::ForwardLabels(int kind) {
  if (clients_.ClientCount() > 0) senders_.SendAlphaTableToClients(kind, model::kAll);
}

void PanelGateway::ForwardProgramming() {
  if (clients_.ClientCount() > 0) senders_.SendStationProgrammingToClients(model::kAll);
}

void PanelGateway::CloseAll() {
  clients_.CloseAll();
  queue_.Clear();
}

void PanelGateway::ClientsChanged() {
  std::vector<std::string> panels;
  for (int slot = 1; slot <= clients_.SocketCount(); ++slot) {
    const ClientConnection& client = clients_.Connection(slot);
    if (!client.Connected) continue;
    std::string line = client.PeerIP;
    if (client.Identified) line.append("  ").append(ConnectionTypeName(client.ConnType));
    panels.push_back(std::move(line));
  }
  display_.ShowPanels(panels);
}

void PanelGateway::ClientClosed(int slot) {
  queue_.Forget(slot);
  requests_.Forget(slot);
}

void PanelGateway::ClientDropped(int slot, DropReason reason) {
  display_.ShowPanelDropped(clients_.Connection(slot).PeerIP, reason);
}

}  // namespace gateway
