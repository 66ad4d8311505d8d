// SPDX-License-Identifier: MIT

#include "gateway/send_queue.h"

#include <algorithm>
#include <utility>

#include "model/system_model.h"

namespace gateway {

void SendQueue::SendToClient(const Message& message, int slot) {
  SendToClient(std::vector<Message>{message}, slot);
}

void SendQueue::SendToClient(const std::vector<Message>& messages, int slot) {
  if (slot == model::kAll) {
    std::vector<SendOrder::Receiver> all;
    for (int each = 1; each <= services_.clients.SocketCount(); ++each)
      all.push_back(ReceiverOf(each));
    order_.AddForAll(all, messages);
  } else {
    const SendOrder::Receiver receiver = ReceiverOf(slot);
    if (receiver.connection == 0) return;
    for (const Message& message : messages) order_.AddFor(receiver, message);
  }
  if (!pausing_) SendOn();
}

SendOrder::Receiver SendQueue::ReceiverOf(int slot) const {
  return {slot, services_.clients.Connection(slot).Connected
                    ? services_.clients.ConnectionNumber(slot)
                    : 0};
}

bool SendQueue::IsThere(const SendOrder::Receiver& receiver) const {
  return ReceiverOf(receiver.slot).connection == receiver.connection &&
         services_.clients.IsConnected(receiver.slot);
}

// Whether a message for all passes over a slot: because it has no bytes, as another slot has found
// out, or because there is no connection and enough of such slots have cost their pause.  Counts
// those that do.
bool SendQueue::CostsNoPause(const Item& item) const {
  if (item.direct) return false;
  if (item.forAll->failed) return true;
  if (IsThere(item.receiver)) return false;
  if (item.forAll->pausesForNobody == kMostPausesForNobody) return true;
  ++item.forAll->pausesForNobody;
  return false;
}

void SendQueue::PanelGone(const PanelName& panel) {
  if (begun_ && begun_->item.receiver.slot == panel.slot && begun_->item.direct) begun_.reset();
  order_.Forget(panel.slot);
}

void SendQueue::Clear() {
  services_.timer.Stop();
  pausing_ = false;
  begun_.reset();
  order_.Clear();
}

// Sends what goes next, a message or a piece of one, and pauses; without anything there is no
// pause either.
void SendQueue::SendOn() {
  pausing_ = true;  // also for what is added meanwhile
  std::optional<Outgoing> next = TakeNext();
  if (!next) next = std::exchange(begun_, std::nullopt);
  if (!next) {
    pausing_ = false;
    return;
  }
  if (next->bytes.empty()) {
    PassOver(next->item);
    return;
  }
  services_.clients.TcpIdleTicks = 0;
  const std::span<const std::uint8_t> rest = std::span(next->bytes).subspan(next->sent);
  const auto piece = rest.first(std::min(rest.size(), kPieceSize));
  const Delivery delivery = Deliver(next->item.receiver, piece);
  services_.timer.Start(kPause, [this] { SendOn(); });
  if (delivery == Delivery::Dropped) return;
  next->sent += piece.size();
  if (delivery != Delivery::Failed && next->sent < next->bytes.size()) {
    begun_ = std::move(next);
  } else {
    TellDone(next->item, delivery == Delivery::Done);
  }
}

// The next message that costs a pause.
std::optional<SendQueue::Outgoing> SendQueue::TakeNext() {
  while (std::optional<Item> item = order_.TakeNext(begun_ ? begun_->item.receiver.slot : 0)) {
    if (CostsNoPause(*item)) continue;
    Bytes bytes = item->message.bytes();
    return Outgoing{.item = std::move(*item), .bytes = std::move(bytes)};
  }
  return std::nullopt;
}

// Pauses for a message that has no bytes.
void SendQueue::PassOver(const Item& item) {
  services_.timer.Start(kPause, [this] { SendOn(); });
  if (item.forAll) item.forAll->failed = true;
  TellDone(item, false);
}

// Writes a piece to the connection that it is for, if that is still there.
SendQueue::Delivery SendQueue::Deliver(const SendOrder::Receiver& receiver,
                                       std::span<const std::uint8_t> piece) {
  if (!IsThere(receiver)) return Delivery::Nobody;
  ClientSocket& socket = services_.clients.Socket(receiver.slot);
  if (socket.Unsent() + piece.size() > kUnsentLimit) {
    services_.clients.Drop(receiver.slot, DropReason::DoesNotRead);
    return Delivery::Dropped;
  }
  if (const model::Status status = socket.Write(piece); !status.ok()) {
    model::ReportError(services_.reporter, "Error Sending Message to IP", status);
    return Delivery::Failed;
  }
  return Delivery::Done;
}

void SendQueue::TellDone(const Item& item, bool sent) const {
  const bool holds = ReceiverOf(item.receiver.slot).connection == item.receiver.connection;
  if (!item.direct || !holds) return;
  observers_.Tell(&SendQueueEvents::MessageDone, item.receiver.slot, item.message.id, sent);
}

}  // namespace gateway
