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
    case Kind::ConnectionRequest:
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
  const Place place = message.id.IsUrgent() ? PlaceOfUrgent() : waiting_.end();
  const Place added = waiting_.insert(place, Item{.slot = slot,
                                                  .connection = ConnectionOf(slot),
                                                  .direct = direct,
                                                  .overtakings = 0,
                                                  .message = message});
  if (canBeReplaced) places_[key] = added;
}

SendQueue::Place SendQueue::PlaceOfUrgent() {
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

// Whether it is meant for the client of a slot, and for no other.
bool SendQueue::IsAnswer(const Item& item, int slot) const {
  return item.direct && item.slot == slot && item.connection != 0 &&
         item.connection == ConnectionOf(slot);
}

bool SendQueue::IsPending(int slot, MessageId::Kind kind) const {
  const auto isIt = [&](const Item& item) {
    return item.message.id.kind == kind && IsAnswer(item, slot);
  };
  return (current_ && isIt(current_->item)) || std::any_of(waiting_.begin(), waiting_.end(), isIt);
}

bool SendQueue::IsPending(int slot, MessageId id) const {
  if (current_ && current_->item.message.id == id && IsAnswer(current_->item, slot)) return true;
  const auto found = places_.find({slot, id});
  return found != places_.end() && IsAnswer(*found->second, slot);
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

// Makes the message that has waited the longest the current one, if it has anything to say.
void SendQueue::TakeNext() {
  Item item = std::move(waiting_.front());
  const auto found = places_.find({item.slot, item.message.id});
  if (found != places_.end() && found->second == waiting_.begin()) places_.erase(found);
  waiting_.pop_front();
  Bytes bytes = item.message.bytes();
  if (!bytes.empty()) {
    current_.emplace(Current{.item = std::move(item), .bytes = std::move(bytes), .sent = 0});
  }
}

// Goes on with the message that is going out, or with the next one.
void SendQueue::SendOn() {
  pausing_ = false;
  while (!current_) {
    if (waiting_.empty()) return;
    TakeNext();
  }
  clients_.TcpIdleTicks = 0;
  pausing_ = true;  // already, for what is sent when this message has gone out
  SendPiece();
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
    clients_.Drop(slot, DropReason::DoesNotRead);
    return Delivery::Failed;
  }
  if (const model::Status status = socket.Write(piece); !status.ok()) {
    model::ReportError(reporter_, "Error Sending Message to IP", status);
    return Delivery::Failed;
  }
  return Delivery::Done;
}

}  // namespace gateway
