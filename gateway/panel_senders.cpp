// SPDX-License-Identifier: MIT

#include "gateway/panel_senders.h"

#include <memory>
#include <optional>
#include <utility>

#include "gateway/panel_tables.h"

namespace gateway {

namespace {

using Kind = MessageId::Kind;

constexpr MessageId kStationList{.kind = Kind::StationList, .first = 0, .count = 0};
constexpr MessageId kProgramming{.kind = Kind::ButtonProgramming, .first = 0, .count = 0};

// One text for the labels and for the programming.
constexpr char kTableFailure[] = "Error Sending Alpha Table";

// A table takes milliseconds to build: it is built when its turn to be sent comes, so that many
// panels that ask at once do not hold the event loop, and only once for all slots it goes to.
std::function<Bytes()> BuiltOnce(std::function<Bytes()> build) {
  return [build = std::move(build), built = std::make_shared<std::optional<Bytes>>()] {
    if (!built->has_value()) *built = build();
    return **built;
  };
}

}  // namespace

PanelSenders::PanelSenders(const model::SystemModel& model, const db::DatabaseFiles& files,
                           ClientTable& clients, SendQueue& queue, model::ErrorReporter& reporter)
    : model_(model), files_(files), clients_(clients), queue_(queue), reporter_(reporter) {
  queue_.SetSent([this](int slot, MessageId id) { OnSent(slot, id); });
}

void PanelSenders::SendCrosspointMapToClients(int first, int count, int slot) {
  if (const model::Status status = CheckChannels(model_, first, count); !status.ok()) {
    model::ReportError(reporter_, "Error Sending Crosspoint Map", status);
    return;
  }
  const MessageId id{.kind = Kind::CrosspointMap, .first = first, .count = count};
  if (Postpone(slot, id)) return;
  // Built for every slot anew, for what holds when its turn comes.
  const auto rows = [this, first, count] {
    Bytes frame;
    (void)BuildCrosspointMap(model_, first, count, &frame);
    return frame;
  };
  queue_.SendToClient({id, rows}, slot);
}

void PanelSenders::SendAlphaTableToClients(int kind, int slot) {
  const MessageId id{.kind = Kind::Labels, .first = kind, .count = 0};
  if (Postpone(slot, id)) return;
  const auto labels = BuiltOnce([this, kind] {
    return BuildTable([this, kind](jet::Database& database, Bytes* frame) {
      return BuildLabelTable(database, model_, kind, frame);
    });
  });
  queue_.SendToClient({id, labels}, slot);
}

void PanelSenders::SendStationProgrammingToClients(int slot) {
  if (Postpone(slot, kProgramming)) return;
  const auto programming = BuiltOnce([this] {
    return BuildTable([this](jet::Database& database, Bytes* frame) {
      return BuildButtonProgramming(database, model_, frame);
    });
  });
  // Without a programming to follow, the list of stations does not go out either.
  const auto list = [this, programming] {
    return programming().empty() ? Bytes() : BuildStationList(model_);
  };
  queue_.SendToClient({Message{kStationList, list}, Message{kProgramming, programming}}, slot);
}

Bytes PanelSenders::BuildTable(
    const std::function<model::Status(jet::Database&, Bytes*)>& build) const {
  Bytes frame;
  const model::Status status = files_.IsOpen() ? build(*files_.Database(), &frame) : db::NotOpen();
  if (status.ok()) return frame;
  model::ReportError(reporter_, kTableFailure, status);
  return {};
}

void PanelSenders::Forget(int slot) {
  std::erase_if(postponed_, [slot](const auto& each) { return each.first.first == slot; });
}

// Whether a table is to be sent later, because one that the slot has asked for before is still to
// go out.
bool PanelSenders::Postpone(int slot, MessageId id) {
  if (slot == model::kAll || !queue_.IsPending(slot, id)) return false;
  ++postponed_[{slot, id}];
  return true;
}

void PanelSenders::SendPostponed(int slot, MessageId id) {
  const auto postponed = postponed_.find({slot, id});
  if (postponed == postponed_.end()) return;
  if (--postponed->second == 0) postponed_.erase(postponed);
  switch (id.kind) {
    case Kind::CrosspointMap:
      SendCrosspointMapToClients(id.first, id.count, slot);
      break;
    case Kind::Labels:
      SendAlphaTableToClients(id.first, slot);
      break;
    case Kind::ButtonProgramming:
      SendStationProgrammingToClients(slot);
      break;
    default:
      break;
  }
}

void PanelSenders::OnSent(int slot, MessageId id) {
  SendPostponed(slot, id);
  // The flag stands for all of a kind that were requested, also for both label tables.
  if (queue_.IsPending(slot, id.kind)) return;
  if (id.kind == Kind::Labels) clients_.Connection(slot).AlphasPending = false;
  if (id.kind == Kind::ButtonProgramming) clients_.Connection(slot).ButtonsPending = false;
}

}  // namespace gateway
