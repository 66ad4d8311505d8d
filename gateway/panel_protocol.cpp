// SPDX-License-Identifier: MIT

#include "gateway/panel_protocol.h"

#include "gateway/panel_tables.h"

namespace gateway {

PanelProtocol::PanelProtocol(const model::SystemModel& model, ClientTable& clients,
                             SendQueue& queue, PanelRequests& requests, PanelTakes& takes,
                             model::ErrorReporter& reporter)
    : model_(model),
      clients_(clients),
      queue_(queue),
      requests_(requests),
      takes_(takes),
      reporter_(reporter) {}

bool PanelProtocol::DecodeClients() {
  bool worked = false;
  for (int slot = 1; slot <= clients_.SocketCount(); ++slot) {
    if (clients_.ReadOn(slot)) worked = true;
    if (clients_.Connection(slot).RxData.empty()) continue;
    worked = true;
    DecodeClientMessage(slot);
  }
  if (clients_.TcpIdleTicks >= kIdleTicks) FlushUnfinished();
  return worked;
}

// What is whole stays: its turn comes, one frame in a tick.  So does a frame whose end may be in
// the socket.
void PanelProtocol::FlushUnfinished() {
  clients_.TcpIdleTicks = 0;
  for (int slot = 1; slot <= clients_.SocketCount(); ++slot) {
    if (clients_.IsUnread(slot)) continue;
    ClientConnection& client = clients_.Connection(slot);
    client.RxData.Assign(WholeFrames(client.RxData.View()));
    client.UnfinishedTicks = 0;
  }
}

void PanelProtocol::DecodeClientMessage(int slot) {
  ClientConnection& client = clients_.Connection(slot);
  ReceivedBytes& received = client.RxData;
  const std::uint8_t first = received.front();
  const std::size_t end = received.LengthToTerminator();
  if (IsData(first)) {
    received.Cut(1);
    return;
  }
  if (!client.Identified && first != kCrosspointMapType && first != kIgnoredType &&
      first != kConnectionType) {
    received.Cut(ShapeOf(first) != FrameShape::Single && end > 0 ? end : 1);
    return;
  }
  if (ShapeOf(first) != FrameShape::Terminated) {
    received.Cut(1);
    HandleByte(first, slot);
  } else if (end > 0) {
    client.UnfinishedTicks = 0;
    client.TakeReports = 0;
    HandleFrame(received.Cut(end), slot);
  } else {
    WaitForEnd(slot);
  }
}

// A frame of one byte, or a byte that begins none.
void PanelProtocol::HandleByte(std::uint8_t byte, int slot) {
  if (byte == kKeepAlivePoll) AnswerPoll(slot);
  if (byte == kLinkUp) clients_.Connection(slot).KeepAliveCount = 0;
}

// A frame with its terminator, whatever its checksum is.
void PanelProtocol::HandleFrame(std::span<const std::uint8_t> frame, int slot) {
  switch (frame.front()) {
    case kTakeType:
      if (const auto take = ParseTakeFrame(frame)) takes_.Add(*take, slot);
      break;
    case kServiceRequestType:
      if (const auto mask = ParseServiceRequest(frame)) requests_.Request(*mask, slot);
      break;
    case kConnectionType:
      clients_.Identify(frame, slot);
      break;
    default:  // read and discarded
      break;
  }
}

// The frame in front has not arrived whole.  Bytes that go on to arrive put the flush off, so a
// client that never ends its frame has a patience of its own.
void PanelProtocol::WaitForEnd(int slot) {
  ClientConnection& client = clients_.Connection(slot);
  if (client.RxData.size() >= ClientTable::kRxLimit) {
    clients_.Drop(slot, DropReason::EndlessFrame);
    return;
  }
  if (clients_.IsUnread(slot)) return;  // its end may be in the socket
  if (client.RxData.front() == kTakeType) {
    model::ReportError(reporter_, "Error Processing Take Command",
                       {kOutOfRange, "The end of the frame has not arrived"});
    if (++client.TakeReports >= kMostTakeReports) clients_.Drop(slot, DropReason::UnfinishedTake);
  } else if (++client.UnfinishedTicks >= kUnfinishedTicks) {
    client.RxData.Clear();
    client.UnfinishedTicks = 0;
  }
}

// The state of the link is that of the moment in which the answer's turn comes.
void PanelProtocol::AnswerPoll(int slot) {
  if (IsLinkUp()) clients_.Connection(slot).KeepAliveCount = 0;
  queue_.SendToClient({{.kind = MessageId::Kind::KeepAlive, .first = 0, .count = 0},
                       [this] { return Bytes{IsLinkUp() ? kLinkUp : kLinkDown}; }},
                      slot);
}

}  // namespace gateway
