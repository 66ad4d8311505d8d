// SPDX-License-Identifier: MIT

#include "switcher/link.h"

#include <algorithm>

#include "switcher/wire/message_table.h"

namespace switcher {

Link::Link(model::SystemModel& model, SerialPort& port, Decoder& decoder, LinkDisplay& display)
    : model_(model), port_(port), decoder_(decoder), display_(display) {
  port_.SetEvents(this);
}

Link::~Link() { port_.SetEvents(nullptr); }

model::Status Link::OpenPort() {
  model::Status status = port_.Open(model_.ComPort);
  if (status.ok()) display_.ShowLinkText(NotConnectedText());
  return status;
}

bool Link::KeepOpen() {
  if (port_.IsOpen()) return true;
  if (!port_.Open(model_.ComPort).ok()) return false;
  // A message that was cut short by the loss is not coming back, and nothing of what the
  // switcher did meanwhile is known.
  model_.SendBusy = false;
  model_.XmapComplete = false;
  display_.ShowLinkText(NotConnectedText());
  return true;
}

void Link::PollTick() {
  if (!KeepOpen()) return;
  if (model_.SendBusy) return;

  // A poll that cannot be written is not reported: a lost device announces itself, and the
  // next second polls again.
  if (!model_.XmapComplete) {
    (void)port_.Write(kPollMap);
    return;
  }
  auto& [connected, answered, unanswered] = model_.LinkStatus;
  (void)port_.Write(model_.TallySeen ? kPollKeepAlive : kPollTally);
  if (model_.TallySeen) answered = 0;  // of all polls only the keep-alive is watched
  if (connected != answered) ++unanswered;
  if (unanswered > 2) SetLinkState(false);
}

bool Link::DecodeTick() {
  if (received_.bytes.empty()) return false;
  DecodeSwitcherMessage();
  return true;
}

void Link::SetLinkState(bool connected) {
  const bool wasConnected = model_.LinkStatus[0] == 1;
  model_.LinkStatus = {0, 0, 0};
  if (connected) model_.LinkStatus = {1, 1, 0};
  if (connected == wasConnected) return;
  display_.ShowLinkText(connected ? ConnectedText() : NotConnectedText());
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
    decoder_.Decode(message);
  }
}

std::optional<std::uint8_t> Link::DiscardBlockedByte() {
  const std::optional<std::uint8_t> code = blockedCode_;
  if (!code.has_value()) return code;
  DropFirst(received_);
  ShowBlockedCode(std::nullopt);
  display_.StartDecodeTimer();
  return code;
}

void Link::DataReceived() {
  Bytes received = port_.Read();
  const auto answers = std::remove(received.begin(), received.end(), kLinkAnswer);
  const bool answered = answers != received.end();
  received.erase(answers, received.end());
  if (answered) SetLinkState(true);
  if (received.empty()) return;

  display_.StartDecodeTimer();
  Bytes& kept = received_.bytes;
  const std::size_t room = kRxLimit - std::min(kRxLimit, kept.size());
  kept.insert(kept.end(), received.begin(),
              received.begin() + static_cast<std::ptrdiff_t>(std::min(room, received.size())));
  DecodeSwitcherMessage();
  SetLinkState(true);
}

void Link::OutputDrained() {
  port_.SetSendThreshold(0);
  model_.SendBusy = false;
}

void Link::PortLost() {
  model_.SendBusy = false;
  received_ = {};
  ShowBlockedCode(std::nullopt);
  SetLinkState(false);
}

void Link::ShowBlockedCode(std::optional<std::uint8_t> code) {
  if (code == blockedCode_) return;
  blockedCode_ = code;
  display_.ShowBlockedCode(code);
}

std::string Link::ConnectedText() const {
  return "Connected - COM " + std::to_string(model_.ComPort) + "  (57600, 8, N, 1)";
}

std::string Link::NotConnectedText() const {
  return "Not Connected - COM " + std::to_string(model_.ComPort);
}

}  // namespace switcher
