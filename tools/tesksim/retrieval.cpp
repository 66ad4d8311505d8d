// SPDX-License-Identifier: MIT

#include "tools/tesksim/retrieval.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "switcher/table.h"
#include "switcher/wire/message_table.h"

namespace tesksim {

namespace {

using switcher::MessageCode;

// What the switcher sends, in this order.  Messages for each output that follow each other here
// take turns: both of output 1, both of output 2.
constexpr MessageCode kReported[] = {
    switcher::kAlphaLabelsCode, switcher::kInhibitRowCode, switcher::kRelayRowCode,
    switcher::kOptoDataCode,    switcher::kButtonDataCode,
};

constexpr bool EveryTableIsReported() {
  return std::ranges::all_of(switcher::kMessages, [](const switcher::MessageKind& kind) {
    const bool isReported = kind.use == switcher::MessageUse::Table && kind.FromSwitcher();
    return std::ranges::count(kReported, kind.code) == (isReported ? 1 : 0);
  });
}
static_assert(EveryTableIsReported());

db::Rows RowsOf(MessageCode code) {
  const std::optional<switcher::Table> table = switcher::TableOf(code);
  return table ? db::RowsOf(*table) : db::Rows::None;
}

int CountOf(db::Rows rows, const SwitcherState& state) {
  return rows == db::Rows::Stations ? state.Sizes().stations : state.ChannelCount();
}

// Those of `codes`, which all have `rows`: the outputs, or the stations, one after the other.
void AddRows(std::span<const MessageCode> codes, db::Rows rows, const SwitcherState& state,
             std::vector<TableMessage>* messages) {
  if (rows == db::Rows::None) {
    for (const MessageCode code : codes) {
      if (code != switcher::kAlphaLabelsCode) {
        messages->push_back({.code = code});
        continue;
      }
      for (const int selector : {switcher::kOutputLabels, switcher::kInputLabels}) {
        messages->push_back({.code = code, .number = selector});
      }
    }
    return;
  }
  for (int number = 1; number <= CountOf(rows, state); ++number) {
    for (const MessageCode code : codes) messages->push_back({.code = code, .number = number});
  }
}

std::vector<TableMessage> AllMessages(const SwitcherState& state) {
  std::vector<TableMessage> messages;
  for (const MessageCode* first = std::begin(kReported); first != std::end(kReported);) {
    const db::Rows rows = RowsOf(*first);
    const MessageCode* const last = std::find_if(
        first, std::end(kReported), [&](MessageCode code) { return RowsOf(code) != rows; });
    AddRows({first, last}, rows, state, &messages);
    first = last;
  }
  return messages;
}

}  // namespace

Retrieval::Retrieval(const SwitcherState& state, MessageHandlers& handlers, Log log)
    : state_(state), handlers_(handlers), log_(std::move(log)) {}

void Retrieval::Begin() {
  messages_ = AllMessages(state_);
  GoTo(0);
}

Outgoing Retrieval::Next() {
  const TableMessage message = messages_[next_];
  const auto code = static_cast<MessageCode>(message.code);
  Outgoing outgoing{.bytes = handlers_.Of(code)->Report(message.number),
                    .text = "table " + Describe(message),
                    .inOnePiece = true};
  const SpoiledMessage* const spoiled = FindSpoiled(message);
  if (spoiled != nullptr) {
    const db::Rows rows = RowsOf(code);
    tesksim::Spoil(spoiled->harm, CountOf(rows, state_), &outgoing.bytes);
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

const SpoiledMessage* Retrieval::FindSpoiled(const TableMessage& message) const {
  const auto found = std::find_if(spoiled_.begin(), spoiled_.end(),
                                  [&](const SpoiledMessage& s) { return s.message == message; });
  return found == spoiled_.end() ? nullptr : &*found;
}

// The next message is the first one from `index` on that is not dropped.
void Retrieval::GoTo(std::size_t index) {
  for (next_ = index; next_ < messages_.size(); ++next_) {
    const SpoiledMessage* const spoiled = FindSpoiled(messages_[next_]);
    if (spoiled == nullptr || spoiled->harm != Harm::Drop) return;
    if (log_) log_("tx table " + Describe(messages_[next_]) + " (dropped)");
  }
}

}  // namespace tesksim
