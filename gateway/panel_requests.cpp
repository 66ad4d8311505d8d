// SPDX-License-Identifier: MIT

#include "gateway/panel_requests.h"

#include "gateway/panel_tables.h"

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
  clients_.Connection(slot).Requests.push_back(mask);
  AnswerNext(slot);
}

// What the link does not let be answered is forgotten when its turn comes.
void PanelRequests::AnswerNext(int slot) {
  std::deque<std::uint8_t>& requests = clients_.Connection(slot).Requests;
  while (!requests.empty() && !answers_.contains(slot)) {
    const std::uint8_t mask = requests.front();
    requests.pop_front();
    if (model_.LinkStatus[0] == 1) Send(mask, slot);
  }
}

void PanelRequests::Send(std::uint8_t mask, int slot) {
  const auto isWanted = [mask](int bit) { return (mask & bit) != 0; };
  ClientConnection& client = clients_.Connection(slot);
  Answer answer;
  if (isWanted(kWantMap)) ++answer.messages;
  for (const int bit : {kWantInputLabels, kWantStationLabels}) {
    if (isWanted(bit)) ++answer.labels;
  }
  answer.messages += answer.labels;
  if (isWanted(kWantProgramming)) answer.messages += 2;  // the list of stations first
  if (answer.labels > 0) client.AlphasPending = true;
  if (isWanted(kOption20)) client.Option20Pending = true;
  if (isWanted(kWantProgramming)) client.ButtonsPending = true;
  if (answer.messages == 0) return;
  // The first message may go out at once.
  answers_[slot] = answer;
  if (isWanted(kWantMap)) senders_.SendCrosspointMapToClients(1, model_.ChannelCount, slot);
  if (isWanted(kWantInputLabels)) senders_.SendAlphaTableToClients(kInputLabels, slot);
  if (isWanted(kWantStationLabels)) senders_.SendAlphaTableToClients(kStationLabels, slot);
  if (isWanted(kWantProgramming)) senders_.SendStationProgrammingToClients(slot);
}

void PanelRequests::Done(int slot, MessageId id, bool sent) {
  const auto answer = answers_.find(slot);
  const bool isPart =
      id.kind != MessageId::Kind::KeepAlive && id.kind != MessageId::Kind::ConnectionRequest;
  if (answer == answers_.end() || !isPart) return;
  ClientConnection& client = clients_.Connection(slot);
  // The flag stands for both label tables.
  if (id.kind == MessageId::Kind::Labels && --answer->second.labels == 0 && sent) {
    client.AlphasPending = false;
  }
  if (id.kind == MessageId::Kind::ButtonProgramming && sent) client.ButtonsPending = false;
  if (--answer->second.messages > 0) return;
  answers_.erase(answer);
  AnswerNext(slot);
}

}  // namespace gateway
