// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_REQUESTS_H_
#define GATEWAY_PANEL_REQUESTS_H_

#include <cstdint>
#include <map>
#include <optional>
#include <span>

#include "gateway/client_table.h"
#include "gateway/panel_senders.h"
#include "model/system_model.h"

namespace gateway {

// The mask of a whole service request frame; none when its checksum or its length is wrong.
std::optional<std::uint8_t> ParseServiceRequest(std::span<const std::uint8_t> frame);

// Answers what panels request.  The requests of one panel are answered one after the other, the
// whole answer to the first before the next is looked at; so a panel that requests without a pause
// costs neither memory nor more work than can be sent, and the others wait for one of its answers
// at a time.
class PanelRequests {
 public:
  // All must outlive the object.
  PanelRequests(const model::SystemModel& model, ClientTable& clients, PanelSenders& senders)
      : model_(model), clients_(clients), senders_(senders) {}

  // Answers a request of the client of a slot, when its turn comes.
  void Request(std::uint8_t mask, int slot);

  // To be told of each message for one slot that is done with.
  void Done(int slot, MessageId id, bool sent);

  // The connection of a slot has ended.
  void Forget(int slot) { answers_.erase(slot); }

 private:
  // What is on its way to a slot.
  struct Answer {
    int messages = 0;
    int labels = 0;  // of them
  };

  void AnswerNext(int slot);
  void Send(std::uint8_t mask, int slot);

  const model::SystemModel& model_;
  ClientTable& clients_;
  PanelSenders& senders_;
  std::map<int, Answer> answers_;  // of the slots that one is on its way to
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_REQUESTS_H_
