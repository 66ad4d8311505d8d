// SPDX-License-Identifier: MIT

#include "tools/tesksim/retrieval.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "db/table.h"
#include "switcher/wire/message_table.h"

namespace tesksim {

namespace {

using switcher::MessageKind;

bool IsReported(const MessageKind& kind) {
  return kind.use == switcher::MessageUse::Table && kind.FromSwitcher();
}

db::Rows RowsOf(std::string_view name) {
  const db::TableKind* const table = db::FindTable(name);
  return table == nullptr ? db::Rows::None : table->rows;
}

int CountOf(db::Rows rows, const SwitcherState& state) {
  return rows == db::Rows::Stations ? state.Sizes().stations : state.ChannelCount();
}

// Those of `kinds`, which all have `rows`: the outputs, or the stations, one after the other.
void AddRows(std::span<const MessageKind> kinds, db::Rows rows, const SwitcherState& state,
             std::vector<TableMessage>* messages) {
  if (rows == db::Rows::None) {
    for (const MessageKind& kind : kinds) {
      if (kind.code != switcher::kAlphaLabelsCode) {
        messages->push_back({.code = kind.code});
        continue;
      }
      for (const int selector : {switcher::kOutputLabels, switcher::kInputLabels}) {
        messages->push_back({.code = kind.code, .number = selector});
      }
    }
    return;
  }
  for (int number = 1; number <= CountOf(rows, state); ++number) {
    for (const MessageKind& kind : kinds) {
      messages->push_back({.code = kind.code, .number = number});
    }
  }
}

std::vector<TableMessage> AllMessages(const SwitcherState& state) {
  std::vector<MessageKind> reported;
  std::ranges::copy_if(switcher::kMessages, std::back_inserter(reported), IsReported);
  std::vector<TableMessage> messages;
  for (auto first = reported.begin(); first != reported.end();) {
    const db::Rows rows = RowsOf(first->name);
    const auto last = std::find_if(
        first, reported.end(), [&](const MessageKind& kind) { return RowsOf(kind.name) != rows; });
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
  const auto code = static_cast<switcher::MessageCode>(message.code);
  Outgoing outgoing{.bytes = handlers_.Of(code)->Report(message.number),
                    .text = "table " + Describe(message),
                    .inOnePiece = true};
  const SpoiledMessage* const spoiled = FindSpoiled(message);
  if (spoiled != nullptr) {
    const db::Rows rows = RowsOf(switcher::FindMessage(message.code)->name);
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
