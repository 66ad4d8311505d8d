// SPDX-License-Identifier: MIT

#ifndef GATEWAY_SEND_QUEUE_H_
#define GATEWAY_SEND_QUEUE_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "gateway/client_table.h"
#include "gateway/pause_timer.h"
#include "model/error_reporter.h"

namespace gateway {

// What a message is, as far as the queue cares.
struct MessageId {
  enum class Kind : std::uint8_t {
    Other,  // never replaces another
    ConnectionRequest,
    KeepAlive,
    CrosspointMap,  // first channel, count
    Labels,         // kind
    StationList,
    ButtonProgramming,
  };

  Kind kind = Kind::Other;
  int first = 0;
  int count = 0;

  // Whether it goes ahead of what else waits.
  bool IsUrgent() const { return kind == Kind::ConnectionRequest || kind == Kind::KeepAlive; }

  // How many urgent messages may go ahead of it while it waits.
  int MostOvertakings() const;

  bool operator==(const MessageId&) const = default;
  bool operator<(const MessageId& other) const {
    return std::tie(kind, first, count) < std::tie(other.kind, other.first, other.count);
  }
};

// A message for panels.  Its bytes are asked for when its turn comes, for each slot, so that a row
// of the map that had to wait says what holds then.  Without any it is passed over, and costs no
// pause.
struct Message {
  MessageId id;
  std::function<Bytes()> bytes;
};

// A message whose bytes are known.
Message FixedMessage(MessageId id, Bytes bytes);

// Sends to the panels, one message at a time and in order.  A message goes out in pieces of at
// most 16384 bytes; each is followed by a pause of 75 ms, during which nothing is sent to
// anybody.  A slot without a connection costs the pauses, too.  The pauses are a timer's: no
// call waits.
//
// The queue stays short: a message that still waits for a slot is replaced by a newer one that
// says the same, that is, the same row of the map, the same table, a keep-alive answer.
//
// Urgent messages go ahead of what else waits: a keep-alive answer, and the question what it is
// to a client that has just come, for which nothing can wait yet.  No table is overtaken more than
// eight times and no other message more than once, so that neither polls nor connections, however
// many, can hold up anything for ever.
class SendQueue {
 public:
  static constexpr std::size_t kPieceSize = 16384;
  static constexpr std::chrono::milliseconds kPause{75};

  // The most that waits in a socket for a client that does not read.  Beyond it the client is
  // dropped.
  static constexpr std::size_t kUnsentLimit = std::size_t{1} << 20;

  // Called when a message for one slot (not for all) has gone out whole.
  using Sent = std::function<void(int slot, MessageId id)>;

  // All must outlive the queue.
  SendQueue(ClientTable& clients, PauseTimer& timer, model::ErrorReporter& reporter)
      : clients_(clients), timer_(timer), reporter_(reporter) {}
  SendQueue(const SendQueue&) = delete;
  SendQueue& operator=(const SendQueue&) = delete;

  void SetSent(Sent sent) { sent_ = std::move(sent); }

  // Sends a message to a slot, or with model::kAll to every slot in ascending order.
  void SendToClient(const Message& message, int slot);

  // Sends messages that belong together, one after the other: they replace waiting ones only
  // when all of them can.
  void SendToClient(const std::vector<Message>& messages, int slot);

  // Whether a message of this kind, or this very message, for the client of this slot alone is
  // waiting or has not gone out whole.
  bool IsPending(int slot, MessageId::Kind kind) const;
  bool IsPending(int slot, MessageId id) const;

  // The connection of a slot has ended: what was meant for it alone is forgotten.
  void Forget(int slot);

  // Forgets everything.
  void Clear();

  // The messages that wait, without the one that is going out.
  std::size_t Size() const { return waiting_.size(); }

 private:
  struct Item {
    int slot = 0;
    std::uint64_t connection = 0;  // the one it is for; another one does not get it
    bool direct = false;           // for this slot alone
    int overtakings = 0;
    Message message;
  };
  using Place = std::list<Item>::iterator;
  using Key = std::pair<int, MessageId>;

  enum class Delivery { Done, Nobody, Failed };

  // What is going out.
  struct Current {
    Item item;
    Bytes bytes;
    std::size_t sent = 0;
  };

  std::vector<int> SlotsOf(int slot) const;
  std::uint64_t ConnectionOf(int slot) const;
  bool IsAnswer(const Item& item, int slot) const;
  bool CanReplace(const std::vector<Message>& messages, int slot) const;
  void Replace(const Message& message, int slot, bool direct);
  void Append(const Message& message, int slot, bool direct);
  Place PlaceOfUrgent();
  Place Remove(Place place);
  void TakeNext();
  void SendOn();
  void SendPiece();
  Delivery Deliver(std::span<const std::uint8_t> piece);

  ClientTable& clients_;
  PauseTimer& timer_;
  model::ErrorReporter& reporter_;
  Sent sent_;
  std::list<Item> waiting_;
  std::map<Key, Place> places_;  // of the newest of each
  std::optional<Current> current_;
  bool pausing_ = false;
};

}  // namespace gateway

#endif  // GATEWAY_SEND_QUEUE_H_
