// SPDX-License-Identifier: MIT

#include "switcher/decoder.h"

#include <algorithm>
#include <string>
#include <vector>

#include "db/database_files.h"
#include "db/station_fields.h"
#include "switcher/send.h"
#include "switcher/wire/frame.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/inhibit_row.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "switcher/wire/messages/relay_row.h"
#include "switcher/wire/messages/tally.h"

namespace switcher {

namespace {

constexpr std::string_view kChannelNotFound =
    "Error in format of received Alpha Label message (Channel Not Found).\n"
    "This message only partially saved.";

}  // namespace

void Decoder::Decode(std::span<const std::uint8_t> message) {
  if (message.empty()) return;
  switch (message[0]) {
    case kGainReportCode:
      DecodeGainReport(message);
      break;
    case kCrosspointRowCode:
      DecodeCrosspointRow(message);
      break;
    case kAlphaLabelsCode:
      DecodeLabels(message);
      break;
    case kButtonDataCode:
      DecodeButtonData(message);
      break;
    case kRelayRowCode:
      DecodeRelayRow(message);
      break;
    case kInhibitRowCode:
      DecodeInhibitRow(message);
      break;
    case kTallyCode:
      DecodeTally(message);
      break;
    case kOptoDataCode:
      DecodeOptoData(message);
      break;
    default:
      break;
  }
}

void Decoder::DecodeCrosspointRow(Message message) {
  CrosspointRow row;
  const DecodeStatus status = ParseCrosspointRow(message, services_.model.ChannelCount, &row);

  // The row is stored before its checksum and end byte are judged: a message that fails there
  // leaves the row changed, and the map that is asked for again puts it right.
  if (status != DecodeStatus::WrongSize && status != DecodeStatus::WrongChannel) {
    services_.model.ChannelStatus[row.output] = row.status;
    for (int input = 1; input <= services_.model.ChannelCount; ++input) {
      services_.model.CrosspointMap.At(row.output, input) =
          row.sources[static_cast<std::size_t>(input - 1)];
    }
  }
  if (status != DecodeStatus::Ok) services_.model.XmapComplete = false;
  Tell("Output " + std::to_string(row.output) + " Crosspoint Map", message, status);
  if (status != DecodeStatus::Ok) return;

  services_.observers.Tell(&SwitcherEvents::CrosspointRowChanged, row.output, row.status);
  if (row.output == services_.model.ChannelCount) services_.model.XmapComplete = true;
}

void Decoder::DecodeGainReport(Message message) {
  std::vector<std::int16_t> steps;
  const DecodeStatus status = ParseGainReport(message, services_.model.ChannelCount, &steps);
  if (status == DecodeStatus::Ok) {
    const auto count = std::min(steps.size(), services_.model.InputGains.size());
    std::copy_n(steps.begin(), count, services_.model.InputGains.begin());
  }
  Tell("DCA Gain Settings", message, status);
  if (status == DecodeStatus::Ok) services_.observers.Tell(&SwitcherEvents::GainsChanged);
}

void Decoder::DecodeTally(Message message) {
  const DecodeStatus status = ParseTally(message, &services_.model.QdvTally);
  const bool accepted = status == DecodeStatus::Ok;
  if (accepted) services_.model.TallySeen = true;
  Tell(accepted ? "QDV Responding Tally" : "QDV Responding Tally Info", message, status);
  if (accepted) services_.observers.Tell(&SwitcherEvents::TallyChanged);
}

void Decoder::DecodeLabels(Message message) {
  LabelTexts texts;
  Stored stored = Stored::Nothing;
  DecodeStatus status = StoreTable(
      ParseLabelTexts(message, services_.model.LabelCount, &texts), "Error Storing Alpha Table",
      [&texts](jet::Database& database, Stored* result) {
        return StoreLabels(database, texts, result);
      },
      &stored);
  if (status == DecodeStatus::Ok && stored != Stored::All) {
    services_.reporter.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                            kChannelNotFound);
    status = DecodeStatus::WrongChannel;
  }
  Tell("Alpha Labels", message, status);
  if (stored != Stored::Nothing)
    services_.observers.Tell(&SwitcherEvents::LabelsChanged, texts.selector);
}

void Decoder::DecodeInhibitRow(Message message) {
  InhibitRow row;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseInhibitRow(message, services_.model.ChannelCount, &row), "Error Storing Inhibits Table",
      [&row](jet::Database& database, Stored* result) {
        return StoreFlags(database, row.output, db::kInhibitsField, row.inhibited, result);
      },
      &stored);
  Tell("Output " + std::to_string(row.output) + " Inhibit Map", message, status);
  if (stored != Stored::Nothing)
    services_.observers.Tell(&SwitcherEvents::InhibitsChanged, row.output);
}

void Decoder::DecodeRelayRow(Message message) {
  RelayRow row;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseRelayRow(message, services_.model.ChannelCount, services_.model.RelayCount, &row),
      "Error Storing Relays Table",
      [&row](jet::Database& database, Stored* result) {
        return StoreFlags(database, row.output, db::kRelaysField, row.relays, result);
      },
      &stored);
  Tell("Output " + std::to_string(row.output) + " Relay Assignments", message, status);
  if (stored != Stored::Nothing)
    services_.observers.Tell(&SwitcherEvents::RelaysChanged, row.output);
}

void Decoder::DecodeButtonData(Message message) {
  ButtonData data;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseButtonData(message, services_.model.StationCount, services_.model.ButtonCount,
                      services_.model.StationCount / 8, &data),
      "Error Storing Button Table",
      [&data](jet::Database& database, Stored* result) {
        return StoreButtons(database, data, result);
      },
      &stored);
  Tell("Station " + std::to_string(data.station) + " Button Data", message, status);
  if (stored != Stored::Nothing)
    services_.observers.Tell(&SwitcherEvents::ButtonsChanged, data.station);
}

void Decoder::DecodeOptoData(Message message) {
  OptoData data;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseOptoData(message, services_.model.OptoCount, &data),
      "Error Storing Opto Programming Data",
      [&data](jet::Database& database, Stored* result) {
        return StoreOptos(database, data, result);
      },
      &stored);
  Tell("Opto Programming Data", message, status);
  if (stored != Stored::Nothing) services_.observers.Tell(&SwitcherEvents::OptosChanged);
}

DecodeStatus Decoder::StoreTable(DecodeStatus checked, std::string_view failureLine,
                                 const Store& store, Stored* stored) {
  *stored = Stored::Nothing;
  if (checked != DecodeStatus::Ok) return checked;
  jet::Database* const database = services_.database();
  const model::Status status = database != nullptr ? store(*database, stored) : db::NotOpen();
  if (status.ok()) return DecodeStatus::Ok;
  *stored = Stored::Nothing;
  services_.reporter.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                          ErrorText(failureLine, status));
  return DecodeStatus::NotStored;
}

void Decoder::Tell(std::string_view description, Message message, DecodeStatus status) {
  if (services_.model.RetrieveActive && history_ != nullptr) {
    history_->UpdateStatus(description, static_cast<int>(message.size()), status);
  }
  if (status != DecodeStatus::Ok)
    services_.observers.Tell(&SwitcherEvents::MessageRefused, description, status);
}

}  // namespace switcher
