// SPDX-License-Identifier: MIT

#include "gateway/panel_protocol.h"

#include "gateway/panel_tables.h"

namespace gateway {

bool PanelProtocol::DecodeClients() {
  bool worked = false;
  for (int slot = 1; slot <= services_.clients.SocketCount(); ++slot) {
    if (services_.clients.ReadOn(slot)) worked = true;
    if (services_.clients.Connection(slot).RxData.empty()) continue;
    worked = true;
    DecodeClientMessage(slot);
  }
  if (services_.clients.TcpIdleTicks >= kIdleTicks) FlushUnfinished();
  return worked;
}

// What is whole stays: its turn comes, one frame in a tick.  So does a frame whose end may be in
// the socket.
void PanelProtocol::FlushUnfinished() {
  services_.clients.TcpIdleTicks = 0;
  for (int slot = 1; slot <= services_.clients.SocketCount(); ++slot) {
    if (services_.clients.IsUnread(slot)) continue;
    ClientConnection& client = services_.clients.Connection(slot);
    client.RxData.Assign(WholeFrames(client.RxData.View()));
    client.UnfinishedTicks = 0;
  }
}

void PanelProtocol::DecodeClientMessage(int slot) {
  ClientConnection& client = services_.clients.Connection(slot);
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
  if (byte == kLinkUp) services_.clients.Connection(slot).KeepAliveCount = 0;
}

// A frame with its terminator, whatever its checksum is.
void PanelProtocol::HandleFrame(std::span<const std::uint8_t> frame, int slot) {
  switch (frame.front()) {
    case kTakeType:
      if (const auto take = ParseTakeFrame(frame)) services_.takes.Add(*take, slot);
      break;
    case kServiceRequestType:
      if (const auto mask = ParseServiceRequest(frame)) services_.requests.Request(*mask, slot);
      break;
    case kConnectionType:
      services_.clients.Identify(frame, slot);
      break;
    default:  // read and discarded
      break;
  }
}

// The frame in front has not arrived whole.  Bytes that go on to arrive put the flush off, so a
// client that never ends its frame has a patience of its own.
void PanelProtocol::WaitForEnd(int slot) {
  ClientConnection& client = services_.clients.Connection(slot);
  if (client.RxData.size() >= ClientTable::kRxLimit) {
    services_.clients.Drop(slot, DropReason::EndlessFrame);
    return;
  }
  if (services_.clients.IsUnread(slot)) return;  // its end may be in the socket
  if (client.RxData.front() == kTakeType) {
    model::ReportError(services_.reporter, "Error Processing Take Command",
                       {kOutOfRange, "The end of the frame has not arrived"});
    if (++client.TakeReports >= kMostTakeReports)
      services_.clients.Drop(slot, DropReason::UnfinishedTake);
  } else if (++client.UnfinishedTicks >= kUnfinishedTicks) {
    client.RxData.Clear();
    client.UnfinishedTicks = 0;
  }
}

// The state of the link is that of the moment in which the answer's turn comes.
void PanelProtocol::AnswerPoll(int slot) {
  if (IsLinkUp()) services_.clients.Connection(slot).KeepAliveCount = 0;
  services_.queue.SendToClient({{.kind = MessageId::Kind::KeepAlive, .first = 0, .count = 0},
                                [this] { return Bytes{IsLinkUp() ? kLinkUp : kLinkDown}; }},
                               slot);
}

}  // namespace gateway
