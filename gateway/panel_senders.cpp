// SPDX-License-Identifier: MIT

#include "gateway/panel_senders.h"

#include <memory>
#include <optional>
#include <utility>

#include "gateway/panel_tables.h"
#include "switcher/wire/label_selector.h"

namespace gateway {

namespace {

// One text for the labels and for the programming.
constexpr char kTableFailure[] = "Error Sending Alpha Table";

// Builds when it is asked for the first time, whether that succeeds or not.
std::function<Bytes()> BuiltOnce(std::function<Bytes()> build) {
  return [build = std::move(build), built = std::make_shared<std::optional<Bytes>>()] {
    if (!built->has_value()) *built = build();
    return **built;
  };
}

}  // namespace

void PanelSenders::SendCrosspointMapToClients(int first, int count, int slot) {
  Bytes frame;
  if (const auto status = BuildCrosspointMap(services_.model, first, count, &frame); !status.ok()) {
    model::ReportError(services_.reporter, "Error Sending Crosspoint Map", status);
  }
  const MessageId id{.kind = count == 1 ? MessageId::Kind::Row : MessageId::Kind::Map,
                     .first = first,
                     .count = count};
  services_.queue.SendToClient(FixedMessage(id, std::move(frame)), slot);
}

void PanelSenders::SendAlphaTableToClients(int kind, int slot) {
  const auto table =
      kind == switcher::kOutputLabels ? db::Table::OutputLabels : db::Table::InputLabels;
  const auto labels = BuiltOnce([this, kind, table] {
    return BuildTable(table, [this, kind](jet::Database& database, Bytes* frame) {
      return BuildLabelTable(database, services_.model, kind, frame);
    });
  });
  services_.queue.SendToClient(
      {{.kind = MessageId::Kind::Labels, .first = kind, .count = 0}, labels}, slot);
}

void PanelSenders::SendStationProgrammingToClients(int slot) {
  const Message list{{.kind = MessageId::Kind::StationList, .first = 0, .count = 0},
                     [this] { return BuildStationList(services_.model); }};
  const auto programming = BuiltOnce([this] {
    return BuildTable(db::Table::Buttons, [this](jet::Database& database, Bytes* frame) {
      return BuildButtonProgramming(database, services_.model, frame);
    });
  });
  services_.queue.SendToClient(
      {list,
       Message{{.kind = MessageId::Kind::ButtonProgramming, .first = 0, .count = 0}, programming}},
      slot);
}

Bytes PanelSenders::BuildTable(
    db::Table table, const std::function<model::Status(jet::Database&, Bytes*)>& build) const {
  Bytes frame;
  model::Status status = services_.files.IsOpen() ? model::Status() : db::NotOpen();
  // Without a station that cannot be found, the others would stand in one another's places.
  if (status.ok()) status = services_.files.CheckTable(table, 1, services_.model.ChannelCount);
  if (status.ok()) status = build(*services_.files.Database(), &frame);
  if (status.ok()) return frame;
  model::ReportError(services_.reporter, kTableFailure, status);
  return {};
}

}  // namespace gateway
