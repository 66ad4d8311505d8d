// SPDX-License-Identifier: MIT

#include "gateway/send_order.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace gateway {

using Kind = MessageId::Kind;

void SendOrder::AddFor(const Receiver& receiver, const Message& message) {
  Append({.message = message, .receiver = receiver, .direct = true});
}

void SendOrder::AddForAll(const std::vector<Receiver>& receivers,
                          const std::vector<Message>& messages) {
  std::vector<std::shared_ptr<ForAll>> forAll;
  for (std::size_t i = 0; i < messages.size(); ++i) forAll.push_back(std::make_shared<ForAll>());
  std::vector<Receiver> others;
  for (const Receiver& receiver : receivers) {
    if (!Replace(receiver, messages, forAll)) others.push_back(receiver);
  }
  for (std::size_t i = 0; i < messages.size(); ++i) {
    for (const Receiver& receiver : others) {
      Append({.message = messages[i], .receiver = receiver, .direct = false, .forAll = forAll[i]});
    }
  }
}

// Puts the messages in the places of those that wait for the receiver, if all of them can be.
bool SendOrder::Replace(const Receiver& receiver, const std::vector<Message>& messages,
                        const std::vector<std::shared_ptr<ForAll>>& forAll) {
  std::vector<Place> places;
  for (const Message& message : messages) {
    const auto found = places_.find({receiver.slot, message.id});
    if (found == places_.end()) return false;
    const Item& waiting = *found->second;
    if (waiting.receiver.connection != receiver.connection) return false;
    if (message.id.kind == Kind::Row && MapWaitsBehind(waiting)) return false;
    places.push_back(found->second);
  }
  for (std::size_t i = 0; i < messages.size(); ++i) {
    places[i]->message = messages[i];
    places[i]->forAll = forAll[i];
  }
  return true;
}

// Whether a map that its slot asked for goes out later than this row.
bool SendOrder::MapWaitsBehind(const Item& row) const {
  const int slot = row.receiver.slot;
  constexpr int kLeast = std::numeric_limits<int>::min();
  const auto first = places_.lower_bound({slot, {Kind::Map, kLeast, kLeast}});
  const auto end = places_.lower_bound({slot, {Kind::Labels, kLeast, kLeast}});
  return std::any_of(first, end, [&](const auto& map) { return map.second->number > row.number; });
}

void SendOrder::Append(Item item) {
  item.number = ++added_;
  switch (item.message.id.kind) {
    case Kind::KeepAlive:
      AddAnswer(std::move(item));
      return;
    case Kind::ConnectionRequest:
      questions_.push_back(std::move(item));
      return;
    default:
      break;
  }
  const Key key{item.receiver.slot, item.message.id};
  const auto older = places_.find(key);
  if (older != places_.end() && GivesWay(*older->second, item)) Remove(older->second);
  rest_.push_back(std::move(item));
  if (key.second.kind != Kind::Other) places_[key] = std::prev(rest_.end());
}

// Whether what waits is not to be sent any more because `newer` comes behind it: a row that would
// go out ahead of a map and say less than it, and what was for a former client of the slot, whose
// pause is kept by the newer one.
bool SendOrder::GivesWay(const Item& waiting, const Item& newer) {
  if (waiting.receiver.connection != newer.receiver.connection) return true;
  return newer.message.id.kind == Kind::Row && !waiting.direct && !newer.direct;
}

void SendOrder::AddAnswer(Item item) {
  const int slot = item.receiver.slot;
  Answers& answers = answers_[slot];
  if (answers.count == kMostAnswers) return;
  answers.item = std::move(item);
  if (++answers.count == 1) turns_.push_back(slot);
}

std::optional<SendOrder::Item> SendOrder::TakeNext(int begun) {
  if (std::optional<Item> answer = TakeAnswer(begun)) return answer;
  served_.clear();
  const bool somethingElse = begun != 0 || !rest_.empty();
  questionWasLast_ = !questions_.empty() && !(questionWasLast_ && somethingElse);
  if (questionWasLast_) {
    Item question = std::move(questions_.front());
    questions_.pop_front();
    return question;
  }
  if (begun != 0 || rest_.empty()) return std::nullopt;
  Item item = rest_.front();
  Remove(rest_.begin());
  return item;
}

// The first answer that may go: to a slot that has not got one since something else has gone, if
// something else waits, and never into the middle of a message.
std::optional<SendOrder::Item> SendOrder::TakeAnswer(int begun) {
  const bool takesTurns = begun != 0 || !questions_.empty() || !rest_.empty();
  if (takesTurns && served_.size() >= kAnswersInARow) return std::nullopt;
  const auto turn = std::find_if(turns_.begin(), turns_.end(), [&](int slot) {
    return slot != begun && !(takesTurns && served_.contains(slot));
  });
  if (turn == turns_.end()) return std::nullopt;
  const int slot = *turn;
  turns_.erase(turn);
  const auto answers = answers_.find(slot);
  Item answer = answers->second.item;
  if (--answers->second.count > 0) {
    turns_.push_back(slot);
  } else {
    answers_.erase(answers);
  }
  if (takesTurns) served_.insert(slot);
  return answer;
}

void SendOrder::Forget(int slot) {
  answers_.erase(slot);
  turns_.remove(slot);
  questions_.remove_if([slot](const Item& item) { return item.receiver.slot == slot; });
  for (Place place = rest_.begin(); place != rest_.end();) {
    const bool goes = place->receiver.slot == slot && place->direct;
    place = goes ? Remove(place) : std::next(place);
  }
}

void SendOrder::Clear() {
  answers_.clear();
  turns_.clear();
  served_.clear();
  questions_.clear();
  places_.clear();
  rest_.clear();
}

std::size_t SendOrder::Size() const {
  std::size_t size = questions_.size() + rest_.size();
  for (const auto& [slot, answers] : answers_) size += answers.count;
  return size;
}

SendOrder::Place SendOrder::Remove(Place place) {
  const auto found = places_.find({place->receiver.slot, place->message.id});
  if (found != places_.end() && found->second == place) places_.erase(found);
  return rest_.erase(place);
}

}  // namespace gateway
