// SPDX-License-Identifier: MIT

#include "gateway/client_table.h"

#include <algorithm>
#include <utility>

#include "gateway/connection_type.h"

namespace gateway {

int ClientTable::FreeSlot() {
  for (int slot = 1; slot <= SocketCount(); ++slot) {
    if (IsConnected(slot)) continue;
    // A connection that has gone without a word ends here at the latest.
    if (Connection(slot).Connected) PeerClosed(slot);
    return slot;
  }
  if (SocketCount() < kMaxClients) {
    slots_.emplace_back();
    return SocketCount();
  }
  const int slot = LongestUnidentified();
  if (slot > 0) Drop(slot, DropReason::Unidentified);
  return slot;
}

int ClientTable::LongestUnidentified() const {
  int longest = 0;
  for (int slot = 1; slot <= SocketCount(); ++slot) {
    if (Connection(slot).Identified) continue;
    if (longest == 0 || ConnectionNumber(slot) < ConnectionNumber(longest)) longest = slot;
  }
  return longest;
}

int ClientTable::Accept(std::unique_ptr<ClientSocket> socket) {
  const int slot = FreeSlot();
  if (slot == 0) {
    socket->Close();
    return 0;
  }
  Slot& taken = At(slot);
  taken.socket = std::move(socket);
  taken.socket->SetEvents(this, slot);
  taken.number = ++accepted_;
  ++clientCount_;
  ClientConnection& connection = taken.connection;
  connection.Connected = true;
  connection.KeepAliveCount = 0;
  connection.PeerIP = taken.socket->PeerAddress();
  connection.Identified = false;
  observers_.Tell(&PanelEvents::PanelConnected, Name(slot));
  return slot;
}

void ClientTable::Identify(std::span<const std::uint8_t> frame, int slot) {
  if (!ChecksumMatches(frame)) return;
  ClientConnection& connection = Connection(slot);
  const int before = std::exchange(connection.ConnType, frame[1]);
  connection.Identified = IsAcceptedType(connection.ConnType);
  if (connection.ConnType != before) {
    observers_.Tell(&PanelEvents::PanelIdentified, Name(slot), connection.ConnType);
  }
}

void ClientTable::DataArrived(int slot, std::size_t byteCount) {
  ClientSocket& socket = Socket(slot);
  ClientConnection& connection = Connection(slot);
  ClientSocket::ReadResult result = ClientSocket::ReadResult::WouldBlock;
  bool arrived = false;
  while (connection.Undecoded() < kRxLimit) {
    Bytes bytes;
    result = socket.Read(std::min(byteCount + 1, kRxLimit - connection.Undecoded()), &bytes);
    if (result != ClientSocket::ReadResult::Data) break;
    connection.RxData.Append(bytes);
    arrived = true;
    TcpIdleTicks = 0;
  }
  At(slot).unread = connection.Undecoded() >= kRxLimit;
  if (result == ClientSocket::ReadResult::Failed) {
    model::ReportError(services_.reporter, "Error Interpreting TCP Message Data",
                       socket.LastError());
  }
  const bool mayGoOn =
      result == ClientSocket::ReadResult::WouldBlock || result == ClientSocket::ReadResult::Data;
  if (mayGoOn && arrived) services_.decodeTimer.StartDecodeTimer();
}

bool ClientTable::ReadOn(int slot) {
  if (At(slot).unread) DataArrived(slot, kRxLimit);
  return At(slot).unread;
}

void ClientTable::PeerClosed(int slot) {
  if (Connection(slot).Connected) Close(slot);
}

void ClientTable::Drop(int slot, DropReason reason) {
  observers_.Tell(&PanelEvents::PanelDropped, Name(slot), reason);
  PeerClosed(slot);
}

void ClientTable::CloseAll() {
  for (int slot = 1; slot <= SocketCount(); ++slot) PeerClosed(slot);
}

// The pending flags keep their values.
void ClientTable::Close(int slot) {
  --clientCount_;
  ClientConnection& connection = Connection(slot);
  connection.Connected = false;
  connection.RxData.Clear();
  connection.Requests.clear();
  connection.Takes.clear();
  connection.UnfinishedTicks = 0;
  connection.TakeReports = 0;
  At(slot).unread = false;
  connection.Answer = {};
  const PanelName name{slot, std::exchange(connection.PeerIP, {})};
  connection.KeepAliveCount = 0;
  connection.ConnType = 0;
  connection.Identified = false;
  Socket(slot).Close();
  observers_.Tell(&PanelEvents::PanelGone, name);
}

}  // namespace gateway
