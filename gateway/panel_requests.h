// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_REQUESTS_H_
#define GATEWAY_PANEL_REQUESTS_H_

#include <cstdint>
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
class PanelRequests : public SendQueueEvents {
 public:
  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    ClientTable& clients;
    PanelSenders& senders;
  };
  explicit PanelRequests(const Services& services) : services_(services) {}

  // Answers a request of the client of a slot, when its turn comes.
  void Request(std::uint8_t mask, int slot);

  void MessageDone(int slot, MessageId id, bool sent) override;

 private:
  void AnswerNext(int slot);
  void Send(std::uint8_t mask, int slot);

  const Services services_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_REQUESTS_H_
