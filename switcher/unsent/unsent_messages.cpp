// SPDX-License-Identifier: MIT

#include "switcher/unsent/unsent_messages.h"

#include <algorithm>
#include <utility>

#include "switcher/unsent/edited_parts.h"
#include "switcher/wire/message_table.h"

namespace switcher {
namespace {

using State = HeldMessage::State;

// Aids that store much at once tell of it themselves.
bool IsWorkHere(stations::Origin origin) {
  return origin == stations::Origin::Operator || origin == stations::Origin::Navigation;
}

}  // namespace

UnsentMessages::UnsentMessages(Services services)
    : ChangeObserver(services.changes), services_(std::move(services)) {}

void UnsentMessages::Begin(HeldMessages known) {
  hasBegun_ = true;
  held_ = std::move(known);
  LoadPresent();
  for (const auto& [part, print] : present_) {
    held_.try_emplace(part,
                      HeldMessage{.state = State::Found, .digest = print.digest, .since = {}});
  }
  CompareAll();
  TellChange();
}

int UnsentMessages::NeverSeen() const {
  return static_cast<int>(std::ranges::count_if(held_, [this](const auto& entry) {
    const auto& [part, held] = entry;
    return held.state == State::Found && present_.contains(part) && !unsent_.contains(part);
  }));
}

MessageSize UnsentMessages::SizeOf(const TablePart& part) const {
  const auto present = present_.find(part);
  return present == present_.end() ? MessageSize{} : present->second.size;
}

void UnsentMessages::Changed(std::span<const stations::Change> changes) {
  std::set<TablePart> parts;
  bool all = false;
  for (const stations::Change& change : changes) {
    all = all || change.station == 0;  // of which one, nobody knows
    for (const TablePart& part : EditedParts(change)) {
      parts.insert(MessageOf(part));
      if (part.table == Table::InputLabels && change.origin != stations::Origin::Switcher) {
        inputLabelsReported_ = false;
      }
    }
  }
  if (hasBegun_ && all) {
    LoadPresent();
    CompareAll();
  }
  if (hasBegun_ && !all) {
    for (const TablePart& part : parts) MakeAnew(part);
  }
  if (all || !parts.empty()) TellChange();
  TellEdits(changes);
}

void UnsentMessages::TellEdits(std::span<const stations::Change> changes) {
  if (listener_ == nullptr) return;
  for (const stations::Change& change : changes) {
    if (!IsWorkHere(change.origin)) continue;
    for (const TablePart& part : EditedParts(change)) listener_->PartEdited(part);
  }
}

void UnsentMessages::MakeAnew(const TablePart& part) {
  jet::Database* const database = services_.database();
  std::optional<MessagePrint> print;
  if (database != nullptr) (void)LoadPrint(*database, services_.model, part, &print);
  ++made_;
  if (print) {
    present_[part] = *print;
  } else {
    present_.erase(part);
  }
  Compare(part);
}

void UnsentMessages::LoadPresent() {
  jet::Database* const database = services_.database();
  present_.clear();
  if (database != nullptr) present_ = LoadPrints(*database, services_.model);
  made_ += static_cast<int>(present_.size());
}

void UnsentMessages::CompareAll() {
  unsent_.clear();
  for (const auto& [part, print] : present_) Compare(part);
}

// Without a message, be it that its station is gone or that the database cannot be read, nothing
// can be sent.  In place of one that begins to exist nothing was found.
void UnsentMessages::Compare(const TablePart& part) {
  unsent_.erase(part);
  const auto present = present_.find(part);
  if (present == present_.end()) return;
  const HeldMessage nothing{.state = State::Found, .digest = kDigestOfNothing, .since = {}};
  HeldMessage& held = held_.try_emplace(part, nothing).first->second;
  if (held.state != State::Open && held.digest == present->second.digest) {
    held.since.reset();
    return;
  }
  if (!held.since) held.since = services_.today();
  unsent_[part] = *held.since;
}

void UnsentMessages::TableMessageSent(std::span<const std::uint8_t> message) {
  const std::optional<TablePart> part = PartOf(message);
  const std::optional<TablePart> labels = std::exchange(begunLabels_, std::nullopt);
  // On a line where nobody answers a message changes nothing.
  if (!part || !hasBegun_ || !IsConnected()) return;
  if (message[0] == kLabelOrderCode) {
    begunLabels_ = part;
    orderDigest_ = DigestOf(message);
    SentInPart(*part, orderDigest_);
  } else if (message[0] != kAlphaLabelsCode) {
    Sent(*part, DigestOf(message));
  } else if (labels == part) {
    Sent(*part, DigestOf(message, orderDigest_));
  }
}

void UnsentMessages::Sent(const TablePart& part, Digest digest) {
  confirmation_.Sent(part, digest);
  Doubt(part, digest);
}

void UnsentMessages::TableMessageCut(std::span<const std::uint8_t> message) {
  begunLabels_.reset();
  const std::optional<TablePart> part = PartOf(message);
  if (part && hasBegun_ && IsConnected()) SentInPart(*part, DigestOf(message));
}

// More may never come.  What is not unsent only repeats what the switcher holds.
void UnsentMessages::SentInPart(const TablePart& part, Digest digest) {
  if (!unsent_.contains(part)) return;
  confirmation_.Forget(part);
  Doubt(part, digest);
  TellChange();
}

// What the switcher holds is either of the two until it has confirmed the new one.
void UnsentMessages::Doubt(const TablePart& part, Digest digest) {
  const auto entry = held_.find(part);
  if (entry == held_.end() || entry->second.digest == digest) return;
  entry->second.state = State::Open;
  entry->second.digest = digest;
  const bool wasUnsent = unsent_.contains(part);
  Compare(part);
  if (!wasUnsent) return TellChange();
  if (listener_ != nullptr) listener_->OnlyHeldChanged();
}

void UnsentMessages::Polled() { GiveUp(confirmation_.Polled()); }

void UnsentMessages::LineLost() {
  begunLabels_.reset();
  inputLabelsReported_ = false;  // the next one may be another switcher
  GiveUp(confirmation_.Lost());
}

void UnsentMessages::GiveUp(const std::vector<TablePart>& parts) {
  if (parts.empty()) return;
  // First, so that who waits for the end does not take them for confirmed.
  if (listener_ != nullptr) listener_->PartsNotConfirmed(parts);
  TellChange();
}

void UnsentMessages::Answered(int polls) {
  const std::map<TablePart, Digest> confirmed = confirmation_.Answered(polls);
  for (const auto& [part, digest] : confirmed) Hold(part, digest);
  if (!confirmed.empty()) TellChange();
}

void UnsentMessages::NoteHeld(const TablePart& part, Digest digest) {
  if (!hasBegun_) return;
  confirmation_.Forget(part);
  Hold(part, digest);
  TellChange();
}

void UnsentMessages::Hold(const TablePart& part, Digest digest) {
  HeldMessage& held = held_[part];
  held.state = State::Held;
  held.digest = digest;
  Compare(part);
}

// The database holds what the switcher has sent.  Who is hidden comes with the station labels and
// is a mark in the input labels, too.
void UnsentMessages::TableAccepted(const TablePart& part) {
  if (const auto present = present_.find(part); present != present_.end()) {
    NoteHeld(part, present->second.digest);
  }
  if (part.table == Table::InputLabels) inputLabelsReported_ = true;
  if (part.table == Table::OutputLabels && inputLabelsReported_) {
    TableAccepted({.table = Table::InputLabels});
  }
}

void UnsentMessages::TableRefused(const TablePart& part) {
  if (part.table == Table::InputLabels) inputLabelsReported_ = false;
}

void UnsentMessages::TellChange() {
  if (listener_ != nullptr) listener_->UnsentChanged();
}

}  // namespace switcher
