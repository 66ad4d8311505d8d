// SPDX-License-Identifier: MIT

#include "tools/tesksim/retrieval.h"

#include <algorithm>
#include <utility>

#include "tools/tesksim/messages/buttons.h"
#include "tools/tesksim/messages/inhibits.h"
#include "tools/tesksim/messages/labels.h"
#include "tools/tesksim/messages/optos.h"
#include "tools/tesksim/messages/relays.h"

namespace tesksim {

namespace {

constexpr int kLabelMessages = 2;
constexpr int kMessagesOfOutput = 2;

}  // namespace

Retrieval::Retrieval(const SwitcherState& state, Log log) : state_(state), log_(std::move(log)) {}

void Retrieval::Begin() { GoTo(1); }

Outgoing Retrieval::Next() {
  const TableMessage message = MessageAt(next_);
  Outgoing outgoing{
      .bytes = Encode(message), .text = "table " + Describe(message), .inOnePiece = true};
  const SpoiledMessage* const spoiled = FindSpoiled(message);
  if (spoiled != nullptr) {
    const bool station = message.code == switcher::kButtonDataCode;
    tesksim::Spoil(spoiled->harm, station ? state_.Sizes().stations : state_.ChannelCount(),
                   &outgoing.bytes);
    outgoing.text += " (spoiled: " + std::string(HarmName(spoiled->harm)) + ")";
  }
  GoTo(next_ + 1);
  return outgoing;
}

void Retrieval::Spoil(const SpoiledMessage& spoiled) {
  std::erase_if(spoiled_, [&](const SpoiledMessage& s) { return s.message == spoiled.message; });
  spoiled_.push_back(spoiled);
  if (HasNext()) GoTo(next_);
}

int Retrieval::MessageCount() const {
  return kLabelMessages + kMessagesOfOutput * state_.ChannelCount() + 1 + state_.Sizes().stations;
}

TableMessage Retrieval::MessageAt(int index) const {
  if (index == 1) return {switcher::kAlphaLabelsCode, switcher::kOutputLabels};
  if (index == 2) return {switcher::kAlphaLabelsCode, switcher::kInputLabels};
  index -= kLabelMessages;
  const int ofOutputs = kMessagesOfOutput * state_.ChannelCount();
  if (index <= ofOutputs) {
    const int output = (index + 1) / kMessagesOfOutput;
    return {index % 2 == 1 ? switcher::kInhibitRowCode : switcher::kRelayRowCode, output};
  }
  index -= ofOutputs;
  if (index == 1) return {switcher::kOptoDataCode, 0};
  return {switcher::kButtonDataCode, index - 1};
}

Bytes Retrieval::Encode(const TableMessage& message) const {
  switch (message.code) {
    case switcher::kAlphaLabelsCode:
      return LabelsMessage(state_, message.number);
    case switcher::kInhibitRowCode:
      return InhibitsMessage(state_, message.number);
    case switcher::kRelayRowCode:
      return RelaysMessage(state_, message.number);
    case switcher::kOptoDataCode:
      return OptosMessage(state_);
    default:
      return ButtonsMessage(state_, message.number);
  }
}

const SpoiledMessage* Retrieval::FindSpoiled(const TableMessage& message) const {
  const auto found = std::find_if(spoiled_.begin(), spoiled_.end(),
                                  [&](const SpoiledMessage& s) { return s.message == message; });
  return found == spoiled_.end() ? nullptr : &*found;
}

// The next message is the first one from `index` on that is not dropped.
void Retrieval::GoTo(int index) {
  for (; index <= MessageCount(); ++index) {
    const TableMessage message = MessageAt(index);
    const SpoiledMessage* const spoiled = FindSpoiled(message);
    if (spoiled == nullptr || spoiled->harm != Harm::Drop) {
      next_ = index;
      return;
    }
    if (log_) log_("tx table " + Describe(message) + " (dropped)");
  }
  next_ = 0;
}

}  // namespace tesksim
