// SPDX-License-Identifier: MIT

#include "switcher/link.h"

#include <algorithm>

#include "switcher/wire/message_table.h"

namespace switcher {

Link::Link(const Services& services) : services_(services) { services_.port.SetEvents(this); }

Link::~Link() { services_.port.SetEvents(nullptr); }

model::Status Link::OpenPort() {
  model::Status status = services_.port.Open(services_.model.ComPort);
  if (status.ok()) services_.display.ShowLinkText(NotConnectedText());
  return status;
}

model::Status Link::MoveTo(int number) {
  services_.port.Close();
  PortLost();
  services_.model.ComPort = static_cast<std::int16_t>(number);
  services_.model.XmapComplete = false;
  services_.model.TallySeen = false;
  model::Status status = OpenPort();
  if (!status.ok()) services_.display.ShowLinkText(NotConnectedText());
  return status;
}

bool Link::KeepOpen() {
  if (services_.port.IsOpen()) return true;
  if (!services_.port.Open(services_.model.ComPort).ok()) return false;
  // A message that was cut short by the loss is not coming back, and nothing of what the
  // switcher did meanwhile is known.
  services_.model.SendBusy = false;
  services_.model.XmapComplete = false;
  services_.display.ShowLinkText(NotConnectedText());
  return true;
}

void Link::PollTick() {
  if (!KeepOpen()) return;
  if (services_.model.SendBusy) return;

  if (!services_.model.XmapComplete) {
    Poll(kPollMap);
    return;
  }
  auto& [connected, answered, unanswered] = services_.model.LinkStatus;
  Poll(services_.model.TallySeen ? kPollKeepAlive : kPollTally);
  if (services_.model.TallySeen) answered = 0;  // of all polls only the keep-alive is watched
  if (connected != answered) ++unanswered;
  if (unanswered > 2) SetLinkState(false);
}

// A poll that cannot be written is not reported: a lost device announces itself, and the next
// second polls again.
void Link::Poll(std::uint8_t poll) {
  const bool isWritten = services_.port.Write(poll).ok();
  // Only the keep-alive has an answer of its own.  What the others bring may come unasked, too, or
  // for an earlier one.
  if (isWritten && poll == kPollKeepAlive && services_.account != nullptr) {
    services_.account->Polled();
  }
}

bool Link::DecodeTick() {
  if (received_.bytes.empty()) return false;
  DecodeSwitcherMessage();
  return true;
}

void Link::SetLinkState(bool connected) {
  const bool wasConnected = services_.model.LinkStatus[0] == 1;
  services_.model.LinkStatus = {0, 0, 0};
  if (connected) services_.model.LinkStatus = {1, 1, 0};
  if (connected == wasConnected) return;
  services_.display.ShowLinkText(connected ? ConnectedText() : NotConnectedText());
}

void Link::DecodeSwitcherMessage() {
  Bytes message;
  const Cut cut = CutMessage(received_, &message);
  ShowBlockedCode(cut == Cut::Blocked ? std::optional(received_.bytes.front()) : std::nullopt);
  if (cut == Cut::Message) Pass(message);
}

void Link::Pass(std::span<const std::uint8_t> message) {
  const bool isTable = FindMessage(message.front())->use == MessageUse::Table;
  if (isTable && tableTaker_ != nullptr) {
    tableTaker_->TakeTable(message);
  } else {
    services_.decoder.Decode(message);
  }
}

std::optional<std::uint8_t> Link::DiscardBlockedByte() {
  const std::optional<std::uint8_t> code = blockedCode_;
  if (!code.has_value()) return code;
  DropFirst(received_);
  ShowBlockedCode(std::nullopt);
  services_.display.StartDecodeTimer();
  return code;
}

void Link::DataReceived() {
  Bytes received = services_.port.Read();
  const auto answers = std::remove(received.begin(), received.end(), kLinkAnswer);
  const auto linkAnswers = static_cast<int>(received.end() - answers);
  received.erase(answers, received.end());
  if (linkAnswers > 0) {
    SetLinkState(true);
    if (services_.account != nullptr) services_.account->Answered(linkAnswers);
  }
  if (received.empty()) return;

  services_.display.StartDecodeTimer();
  Bytes& kept = received_.bytes;
  const std::size_t room = kRxLimit - std::min(kRxLimit, kept.size());
  kept.insert(kept.end(), received.begin(),
              received.begin() + static_cast<std::ptrdiff_t>(std::min(room, received.size())));
  DecodeSwitcherMessage();
  SetLinkState(true);
}

void Link::OutputDrained() {
  services_.port.SetSendThreshold(0);
  services_.model.SendBusy = false;
}

void Link::PortLost() {
  services_.model.SendBusy = false;
  received_ = {};
  ShowBlockedCode(std::nullopt);
  SetLinkState(false);
  if (services_.account != nullptr) services_.account->LineLost();
}

void Link::ShowBlockedCode(std::optional<std::uint8_t> code) {
  if (code == blockedCode_) return;
  blockedCode_ = code;
  services_.display.ShowBlockedCode(code);
}

std::string Link::ConnectedText() const {
  return "Connected - COM " + std::to_string(services_.model.ComPort) + "  (57600, 8, N, 1)";
}

std::string Link::NotConnectedText() const {
  return "Not Connected - COM " + std::to_string(services_.model.ComPort);
}

}  // namespace switcher
