// SPDX-License-Identifier: MIT

#include "gateway/panel_requests.h"

#include "switcher/wire/label_selector.h"

namespace gateway {

namespace {

constexpr std::size_t kRequestMask = 2;  // its place in a service request

// Bits of the request mask.  0x08, 0x10 and 0x80 are not used.
constexpr int kWantMap = 0x01;
constexpr int kWantInputLabels = 0x02;
constexpr int kWantStationLabels = 0x04;
constexpr int kOption20 = 0x20;
constexpr int kWantProgramming = 0x40;

}  // namespace

std::optional<std::uint8_t> ParseServiceRequest(std::span<const std::uint8_t> frame) {
  if (frame.size() != kServiceRequestLength || !ChecksumMatches(frame)) return std::nullopt;
  return frame[kRequestMask];
}

void PanelRequests::Request(std::uint8_t mask, int slot) {
  services_.clients.Connection(slot).Requests.push_back(mask);
  AnswerNext(slot);
}

// What the link does not let be answered is forgotten when its turn comes.
void PanelRequests::AnswerNext(int slot) {
  ClientConnection& client = services_.clients.Connection(slot);
  while (!client.Requests.empty() && client.Answer.messages == 0) {
    const std::uint8_t mask = client.Requests.front();
    client.Requests.pop_front();
    if (services_.model.LinkStatus[0] == 1) Send(mask, slot);
  }
}

void PanelRequests::Send(std::uint8_t mask, int slot) {
  const auto isWanted = [mask](int bit) { return (mask & bit) != 0; };
  ClientConnection& client = services_.clients.Connection(slot);
  auto& answer = client.Answer;
  answer = {};
  if (isWanted(kWantMap)) ++answer.messages;
  for (const int bit : {kWantInputLabels, kWantStationLabels}) {
    if (isWanted(bit)) ++answer.labels;
  }
  answer.messages += answer.labels;
  if (isWanted(kWantProgramming)) answer.messages += 2;  // the list of stations first
  if (answer.labels > 0) client.AlphasPending = true;
  if (isWanted(kOption20)) client.Option20Pending = true;
  if (isWanted(kWantProgramming)) client.ButtonsPending = true;
  if (isWanted(kWantMap))
    services_.senders.SendCrosspointMapToClients(1, services_.model.ChannelCount, slot);
  if (isWanted(kWantInputLabels))
    services_.senders.SendAlphaTableToClients(switcher::kInputLabels, slot);
  if (isWanted(kWantStationLabels))
    services_.senders.SendAlphaTableToClients(switcher::kOutputLabels, slot);
  if (isWanted(kWantProgramming)) services_.senders.SendStationProgrammingToClients(slot);
}

void PanelRequests::MessageDone(int slot, MessageId id, bool sent) {
  const bool isPart =
      id.kind != MessageId::Kind::KeepAlive && id.kind != MessageId::Kind::ConnectionRequest;
  ClientConnection& client = services_.clients.Connection(slot);
  if (client.Answer.messages == 0 || !isPart) return;
  // The flag stands for both label tables.
  if (id.kind == MessageId::Kind::Labels && --client.Answer.labels == 0 && sent) {
    client.AlphasPending = false;
  }
  if (id.kind == MessageId::Kind::ButtonProgramming && sent) client.ButtonsPending = false;
  if (--client.Answer.messages == 0) AnswerNext(slot);
}

}  // namespace gateway
