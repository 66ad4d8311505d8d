// SPDX-License-Identifier: MIT

#ifndef GATEWAY_SEND_QUEUE_H_
#define GATEWAY_SEND_QUEUE_H_

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "gateway/client_table.h"
#include "gateway/panel_events.h"
#include "gateway/panel_message.h"
#include "gateway/pause_timer.h"
#include "gateway/send_order.h"
#include "model/error_reporter.h"
#include "model/observers.h"

namespace gateway {

// What the queue tells.
class SendQueueEvents {
 public:
  virtual ~SendQueueEvents() = default;

  // A message for one slot (not for all) is done with: it has gone out whole or, not `sent`, had no
  // bytes or could not be written.  Not told when its connection has ended.
  virtual void MessageDone(int slot, MessageId id, bool sent) = 0;
};

// Sends to the panels, one message at a time, in the order of SendOrder.  A message goes out in
// pieces of at most 16384 bytes; each is followed by a pause of 75 ms, during which nothing is sent
// to anybody.  The pauses are a timer's: no call waits.
//
// A slot without a connection costs the pauses, too.  Of a message for all, so many slots do as
// kMostPausesForNobody says, and the others none: each connection that there ever was at a time has
// left a slot.
//
// A message that turns out to have no bytes costs one pause, too, whoever it is for: to find out
// that a table cannot be read may have read the whole database.
class SendQueue : public PanelEvents {
 public:
  static constexpr std::size_t kPieceSize = 16384;
  static constexpr std::chrono::milliseconds kPause{75};
  static constexpr int kMostPausesForNobody = 16;

  // The most that waits in a socket for a client that does not read.  Beyond it the client is
  // dropped.
  static constexpr std::size_t kUnsentLimit = std::size_t{1} << 20;

  // All must outlive the queue.
  struct Services {
    ClientTable& clients;
    PauseTimer& timer;
    model::ErrorReporter& reporter;
  };
  explicit SendQueue(const Services& services) : services_(services) {}
  SendQueue(const SendQueue&) = delete;
  SendQueue& operator=(const SendQueue&) = delete;

  void AddObserver(SendQueueEvents& observer) { observers_.Add(observer); }

  // Sends a message to a slot, or with model::kAll to every slot in ascending order.  What is for
  // one slot alone that has no connection is forgotten.
  void SendToClient(const Message& message, int slot);

  // Sends messages that belong together, one after the other.
  void SendToClient(const std::vector<Message>& messages, int slot);

  // What was meant for a panel alone is forgotten.
  void PanelGone(const PanelName& panel) override;

  // Forgets everything.
  void Clear();

  // The messages that wait, without the one that is going out.
  std::size_t Size() const { return order_.Size(); }

 private:
  using Item = SendOrder::Item;

  enum class Delivery { Done, Nobody, Failed, Dropped };

  // A message that goes out, perhaps in pieces.
  struct Outgoing {
    Item item;
    Bytes bytes;
    std::size_t sent = 0;
  };

  SendOrder::Receiver ReceiverOf(int slot) const;
  bool IsThere(const SendOrder::Receiver& receiver) const;
  bool CostsNoPause(const Item& item) const;
  void SendOn();
  std::optional<Outgoing> TakeNext();
  void PassOver(const Item& item);
  Delivery Deliver(const SendOrder::Receiver& receiver, std::span<const std::uint8_t> piece);
  void TellDone(const Item& item, bool sent) const;

  const Services services_;
  model::Observers<SendQueueEvents> observers_;
  SendOrder order_;
  std::optional<Outgoing> begun_;  // some of its pieces have gone
  bool pausing_ = false;
};

}  // namespace gateway

#endif  // GATEWAY_SEND_QUEUE_H_
