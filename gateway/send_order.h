// SPDX-License-Identifier: MIT

#ifndef GATEWAY_SEND_ORDER_H_
#define GATEWAY_SEND_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "gateway/panel_message.h"

namespace gateway {

// What waits to be sent to panels, and what of it is next.
//
// There are three lines.  Answers to keep-alives go first, one for each panel in turn.  Questions
// what a new client is, and everything else (rows, tables, lists), go in the order in which they
// came.  No line can hold up another for ever, however much comes:
//   - between two messages of the other lines, or two pieces of one, go at most kAnswersInARow
//     answers, and at most one to a panel;
//   - questions and everything else take turns, message by message or piece by piece.
// So an answer waits for the other panels that have polled, and for one message in eight besides.
//
// What is for all panels replaces what still waits for one of them and says the same: the same row
// of the map, the same table.  It takes its place; but a row that was waiting ahead of the whole
// map goes behind it, for the map says what held when it was asked for.  What a panel asked for
// replaces nothing, so that the parts of an answer stay in their order.
class SendOrder {
 public:
  static constexpr std::size_t kMostAnswers = 64;  // that wait for a slot; more are not answered
  static constexpr std::size_t kAnswersInARow = 8;

  // Who a message is for: a slot, and the number of its connection, 0 for a slot without one.
  // Another connection does not get it.
  struct Receiver {
    int slot = 0;
    std::uint64_t connection = 0;
  };

  // What the items of one message for all have in common.
  struct ForAll {
    int pausesForNobody = 0;  // how many slots without a connection have cost their pause
    bool failed = false;      // it has no bytes, which has cost its pause
  };

  // A message for one slot.
  struct Item {
    Message message;
    Receiver receiver;
    bool direct = false;                  // added for this slot alone
    std::shared_ptr<ForAll> forAll = {};  // of what goes to all
    std::uint64_t number = 0;             // in the order in which they were added
  };

  // Adds a message that is for one slot.
  void AddFor(const Receiver& receiver, const Message& message);

  // Adds messages that belong together for all of `receivers`: the first to each of them, then the
  // next.  They replace what waits for a receiver only when all of them can.
  void AddForAll(const std::vector<Receiver>& receivers, const std::vector<Message>& messages);

  // Takes off what goes next.  `begun` is the slot that a message is going out to, in pieces, which
  // counts as the first of everything else; 0 for none.  Nothing when its next piece is what goes,
  // or when nothing waits.
  std::optional<Item> TakeNext(int begun);

  // Forgets what is for a slot alone.
  void Forget(int slot);

  // Forgets everything.
  void Clear();

  // The messages that wait.
  std::size_t Size() const;

 private:
  // The answers that wait for a slot are all alike.
  struct Answers {
    Item item;
    std::size_t count = 0;
  };
  using Place = std::list<Item>::iterator;
  using Key = std::pair<int, MessageId>;

  void Append(Item item);
  bool Replace(const Receiver& receiver, const std::vector<Message>& messages,
               const std::vector<std::shared_ptr<ForAll>>& forAll);
  bool MapWaitsBehind(const Item& row) const;
  static bool GivesWay(const Item& waiting, const Item& newer);
  void AddAnswer(Item item);
  std::optional<Item> TakeAnswer(int begun);
  Place Remove(Place place);

  std::map<int, Answers> answers_;
  std::list<int> turns_;  // the slots of answers_, whose turn comes in this order
  std::set<int> served_;  // slots that got an answer since something else has gone
  std::list<Item> questions_;
  std::list<Item> rest_;
  std::map<Key, Place> places_;  // of the newest of each in rest_
  bool questionWasLast_ = false;
  std::uint64_t added_ = 0;
};

}  // namespace gateway

#endif  // GATEWAY_SEND_ORDER_H_
