// SPDX-License-Identifier: MIT

#include "gateway/panel_senders.h"

#include <utility>

#include "gateway/panel_tables.h"

namespace gateway {

namespace {

using Kind = MessageId::Kind;

// One text for the labels and for the programming.
constexpr char kTableFailure[] = "Error Sending Alpha Table";

}  // namespace

PanelSenders::PanelSenders(const model::SystemModel& model, const db::DatabaseFiles& files,
                           ClientTable& clients, SendQueue& queue, model::ErrorReporter& reporter)
    : model_(model), files_(files), clients_(clients), queue_(queue), reporter_(reporter) {
  queue_.SetSent([this](int slot, MessageId id) { OnSent(slot, id); });
}

void PanelSenders::SendCrosspointMapToClients(int first, int count, int slot) {
  Bytes frame;
  if (const model::Status status = BuildCrosspointMap(model_, first, count, &frame); !status.ok()) {
    model::ReportError(reporter_, "Error Sending Crosspoint Map", status);
    return;
  }
  // Built anew when its turn comes, for what holds then.  What was sound now is sound then.
  const auto bytes = [this, first, count] {
    Bytes rows;
    (void)BuildCrosspointMap(model_, first, count, &rows);
    return rows;
  };
  queue_.SendToClient({{.kind = Kind::CrosspointMap, .first = first, .count = count}, bytes}, slot);
}

void PanelSenders::SendAlphaTableToClients(int kind, int slot) {
  Bytes frame;
  const model::Status status =
      files_.IsOpen() ? BuildLabelTable(*files_.Database(), model_, kind, &frame) : db::NotOpen();
  if (!status.ok()) {
    model::ReportError(reporter_, kTableFailure, status);
    return;
  }
  queue_.SendToClient(
      FixedMessage({.kind = Kind::Labels, .first = kind, .count = 0}, std::move(frame)), slot);
}

void PanelSenders::SendStationProgrammingToClients(int slot) {
  Bytes frame;
  const model::Status status =
      files_.IsOpen() ? BuildButtonProgramming(*files_.Database(), model_, &frame) : db::NotOpen();
  if (!status.ok()) {
    model::ReportError(reporter_, kTableFailure, status);
    return;
  }
  queue_.SendToClient(
      {FixedMessage({.kind = Kind::StationList, .first = 0, .count = 0}, BuildStationList(model_)),
       FixedMessage({.kind = Kind::ButtonProgramming, .first = 0, .count = 0}, std::move(frame))},
      slot);
}

void PanelSenders::OnSent(int slot, MessageId id) {
  // One of two requested label tables has not cleared the way for the other.
  if (queue_.IsPending(slot, id.kind)) return;
  if (id.kind == Kind::Labels) clients_.Connection(slot).AlphasPending = false;
  if (id.kind == Kind::ButtonProgramming) clients_.Connection(slot).ButtonsPending = false;
}

}  // namespace gateway
