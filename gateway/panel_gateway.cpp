// SPDX-License-Identifier: MIT

#include "gateway/panel_gateway.h"

#include <utility>

namespace gateway {

namespace {

// Its checksum is that of no data bytes.
Bytes ConnectionRequest() { return {kConnectionType, 0x00, 0x00, kTerminator}; }

}  // namespace

PanelGateway::PanelGateway(const Services& services)
    : decodeTimer_(services.decodeTimer),
      events_(services.events),
      clients_(*this, services.reporter),
      queue_(clients_, services.timer, services.reporter),
      senders_(services.model, services.files, queue_, services.reporter),
      requests_(services.model, clients_, senders_),
      takes_(clients_, services.line, services.commands, services.events),
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

void PanelGateway::ClientAccepted(int slot) { events_.PanelConnected(clients_.Name(slot)); }

void PanelGateway::ClientIdentified(int slot) {
  events_.PanelIdentified(clients_.Name(slot), clients_.Connection(slot).ConnType);
}

void PanelGateway::ClientClosed(int slot, const std::string& address) {
  queue_.Forget(slot);
  requests_.Forget(slot);
  events_.PanelGone({slot, address});
}

void PanelGateway::ClientDropped(int slot, DropReason reason) {
  events_.PanelDropped(clients_.Name(slot), reason);
}

}  // namespace gateway
