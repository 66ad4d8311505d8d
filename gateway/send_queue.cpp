// SPDX-License-Identifier: MIT

#include "gateway/send_queue.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "model/system_model.h"

namespace gateway {

int MessageId::MostOvertakings() const {
  constexpr int kOfATable = 8;
  switch (kind) {
    case Kind::CrosspointMap:
      return count == 1 ? 1 : kOfATable;
    case Kind::Labels:
    case Kind::StationList:
    case Kind::ButtonProgramming:
      return kOfATable;
    case Kind::Other:
      return 1;
    case Kind::KeepAlive:
      return 0;
  }
  return 0;
}

Message FixedMessage(MessageId id, Bytes bytes) {
  return {id, [shared = std::make_shared<const Bytes>(std::move(bytes))] { return *shared; }};
}

void SendQueue::SendToClient(const Message& message, int slot) {
  SendToClient(std::vector<Message>{message}, slot);
}

void SendQueue::SendToClient(const std::vector<Message>& messages, int slot) {
  const bool direct = slot != model::kAll;
  std::vector<int> others;
  for (const int receiver : SlotsOf(slot)) {
    if (!CanReplace(messages, receiver)) {
      others.push_back(receiver);
      continue;
    }
    for (const Message& message : messages) Replace(message, receiver, direct);
  }
  for (const Message& message : messages) {
    for (const int receiver : others) Append(message, receiver, direct);
  }
  if (!current_ && !pausing_) SendOn();
}

std::vector<int> SendQueue::SlotsOf(int slot) const {
  if (slot != model::kAll) return {slot};
  std::vector<int> slots;
  for (int each = 1; each <= clients_.SocketCount(); ++each) slots.push_back(each);
  return slots;
}

// 0, which no connection has, for a slot without one.
std::uint64_t SendQueue::ConnectionOf(int slot) const {
  return clients_.Connection(slot).Connected ? clients_.ConnectionNumber(slot) : 0;
}

bool SendQueue::CanReplace(const std::vector<Message>& messages, int slot) const {
  return std::all_of(messages.begin(), messages.end(), [&](const Message& message) {
    const auto found = places_.find({slot, message.id});
    return found != places_.end() && found->second->connection == ConnectionOf(slot);
  });
}

void SendQueue::Replace(const Message& message, int slot, bool direct) {
  Item& item = *places_.at({slot, message.id});
  item.message = message;
  item.direct = item.direct || direct;
}

void SendQueue::Append(const Message& message, int slot, bool direct) {
  const bool canBeReplaced = message.id.kind != MessageId::Kind::Other;
  const Key key{slot, message.id};
  // What waits for a former client of the slot gives way: its pause is kept by this one.
  if (const auto former = places_.find(key);
      former != places_.end() && former->second->connection != ConnectionOf(slot)) {
    Remove(former->second);
  }
  const Place place =
      message.id.kind == MessageId::Kind::KeepAlive ? PlaceOfKeepAlive() : waiting_.end();
  const Place added = waiting_.insert(place, Item{.slot = slot,
                                                  .connection = ConnectionOf(slot),
                                                  .direct = direct,
                                                  .overtakings = 0,
                                                  .message = message});
  if (canBeReplaced) places_[key] = added;
}

SendQueue::Place SendQueue::PlaceOfKeepAlive() {
  const Place place = std::find_if(waiting_.begin(), waiting_.end(), [](const Item& item) {
    return item.overtakings < item.message.id.MostOvertakings();
  });
  if (place != waiting_.end()) ++place->overtakings;
  return place;
}

SendQueue::Place SendQueue::Remove(Place place) {
  const auto found = places_.find({place->slot, place->message.id});
  if (found != places_.end() && found->second == place) places_.erase(found);
  return waiting_.erase(place);
}

bool SendQueue::IsPending(int slot, MessageId::Kind kind) const {
  const auto isIt = [&](const Item& item) {
    return item.direct && item.slot == slot && item.message.id.kind == kind;
  };
  return (current_ && isIt(current_->item)) || std::any_of(waiting_.begin(), waiting_.end(), isIt);
}

void SendQueue::Forget(int slot) {
  if (current_ && current_->item.slot == slot && current_->item.direct) current_.reset();
  for (Place place = waiting_.begin(); place != waiting_.end();) {
    place = place->slot == slot && place->direct ? Remove(place) : std::next(place);
  }
}

void SendQueue::Clear() {
  timer_.Stop();
  pausing_ = false;
  current_.reset();
  places_.clear();
  waiting_.clear();
}

// Goes on with the message that is going out, or with the next one.
void SendQueue::SendOn() {
  pausing_ = false;
  if (!current_) {
    if (waiting_.empty()) return;
    current_.emplace(Current{.item = std::move(waiting_.front()), .bytes = {}, .sent = 0});
    const auto found = places_.find({current_->item.slot, current_->item.message.id});
    if (found != places_.end() && found->second == waiting_.begin()) places_.erase(found);
    waiting_.pop_front();
    current_->bytes = current_->item.message.bytes();
  }
  clients_.TcpIdleTicks = 0;
  SendPiece();
  pausing_ = true;
  timer_.Start(kPause, [this] { SendOn(); });
}

void SendQueue::SendPiece() {
  const std::span<const std::uint8_t> rest = std::span(current_->bytes).subspan(current_->sent);
  const auto piece = rest.first(std::min(rest.size(), kPieceSize));
  const Delivery delivery = Deliver(piece);
  if (!current_) return;  // its client was dropped
  current_->sent += piece.size();
  if (delivery != Delivery::Failed && current_->sent < current_->bytes.size()) return;

  const Item item = std::move(current_->item);
  current_.reset();
  if (delivery == Delivery::Done && item.direct && sent_) sent_(item.slot, item.message.id);
}

// Writes a piece to the slot of the current message, if the connection is still there that the
// message is for.
SendQueue::Delivery SendQueue::Deliver(std::span<const std::uint8_t> piece) {
  const int slot = current_->item.slot;
  if (ConnectionOf(slot) != current_->item.connection || !clients_.IsConnected(slot)) {
    return Delivery::Nobody;
  }
  ClientSocket& socket = clients_.Socket(slot);
  if (socket.Unsent() + piece.size() > kUnsentLimit) {
    clients_.Drop(slot, "it does not read what it is sent");
    return Delivery::Failed;
  }
  if (const model::Status status = socket.Write(piece); !status.ok()) {
    model::ReportError(reporter_, "Error Sending Message to IP", status);
    return Delivery::Failed;
  }
  return Delivery::Done;
}

}  // namespace gateway
