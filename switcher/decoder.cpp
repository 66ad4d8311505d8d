// SPDX-License-Identifier: MIT

#include "switcher/decoder.h"

#include <algorithm>
#include <string>
#include <vector>

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
  const DecodeStatus status = ParseCrosspointRow(message, model_.ChannelCount, &row);

  // The row is stored before its checksum and end byte are judged: a message that fails there
  // leaves the row changed, and the map that is asked for again puts it right.
  if (status != DecodeStatus::WrongSize && status != DecodeStatus::WrongChannel) {
    model_.ChannelStatus[row.output] = row.status;
    for (int input = 1; input <= model_.ChannelCount; ++input) {
      model_.CrosspointMap.At(row.output, input) = row.sources[static_cast<std::size_t>(input - 1)];
    }
  }
  if (status != DecodeStatus::Ok) model_.XmapComplete = false;
  Tell("Output " + std::to_string(row.output) + " Crosspoint Map", message, status);
  if (status != DecodeStatus::Ok) return;

  events_.CrosspointRowChanged(row.output, row.status);
  if (row.output == model_.ChannelCount) model_.XmapComplete = true;
}

void Decoder::DecodeGainReport(Message message) {
  std::vector<std::int16_t> steps;
  const DecodeStatus status = ParseGainReport(message, model_.ChannelCount, &steps);
  if (status == DecodeStatus::Ok) {
    const auto count = std::min(steps.size(), model_.InputGains.size());
    std::copy_n(steps.begin(), count, model_.InputGains.begin());
  }
  Tell("DCA Gain Settings", message, status);
  if (status == DecodeStatus::Ok) events_.GainsChanged();
}

void Decoder::DecodeTally(Message message) {
  const DecodeStatus status = ParseTally(message, &model_.QdvTally);
  const bool accepted = status == DecodeStatus::Ok;
  if (accepted) model_.TallySeen = true;
  Tell(accepted ? "QDV Responding Tally" : "QDV Responding Tally Info", message, status);
  if (accepted) events_.TallyChanged();
}

void Decoder::DecodeLabels(Message message) {
  LabelTexts texts;
  Stored stored = Stored::Nothing;
  DecodeStatus status = StoreTable(
      ParseLabelTexts(message, model_.LabelCount, &texts), "Error Storing Alpha Table",
      [&](jet::Database& database, Stored* result) {
        return StoreLabels(database, texts, author_, result);
      },
      &stored);
  if (status == DecodeStatus::Ok && stored != Stored::All) {
    reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle, kChannelNotFound);
    status = DecodeStatus::WrongChannel;
  }
  Tell("Alpha Labels", message, status);
  if (stored != Stored::Nothing) events_.LabelsChanged(texts.selector);
}

void Decoder::DecodeInhibitRow(Message message) {
  InhibitRow row;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseInhibitRow(message, model_.ChannelCount, &row), "Error Storing Inhibits Table",
      [&](jet::Database& database, Stored* result) {
        return StoreFlags(database, row.output, db::kInhibitsField, row.inhibited, author_, result);
      },
      &stored);
  Tell("Output " + std::to_string(row.output) + " Inhibit Map", message, status);
  if (stored != Stored::Nothing) events_.InhibitsChanged(row.output);
}

void Decoder::DecodeRelayRow(Message message) {
  RelayRow row;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseRelayRow(message, model_.ChannelCount, model_.RelayCount, &row),
      "Error Storing Relays Table",
      [&](jet::Database& database, Stored* result) {
        return StoreFlags(database, row.output, db::kRelaysField, row.relays, author_, result);
      },
      &stored);
  Tell("Output " + std::to_string(row.output) + " Relay Assignments", message, status);
  if (stored != Stored::Nothing) events_.RelaysChanged(row.output);
}

void Decoder::DecodeButtonData(Message message) {
  ButtonData data;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseButtonData(message, model_.StationCount, model_.ButtonCount, model_.StationCount / 8,
                      &data),
      "Error Storing Button Table",
      [&](jet::Database& database, Stored* result) {
        return StoreButtons(database, data, author_, result);
      },
      &stored);
  Tell("Station " + std::to_string(data.station) + " Button Data", message, status);
  if (stored != Stored::Nothing) events_.ButtonsChanged(data.station);
}

void Decoder::DecodeOptoData(Message message) {
  OptoData data;
  Stored stored = Stored::Nothing;
  const DecodeStatus status = StoreTable(
      ParseOptoData(message, model_.OptoCount, &data), "Error Storing Opto Programming Data",
      [&](jet::Database& database, Stored* result) {
        return StoreOptos(database, data, author_, result);
      },
      &stored);
  Tell("Opto Programming Data", message, status);
  if (stored != Stored::Nothing) events_.OptosChanged();
}

DecodeStatus Decoder::StoreTable(DecodeStatus checked, std::string_view failureLine,
                                 const Store& store, Stored* stored) {
  *stored = Stored::Nothing;
  if (checked != DecodeStatus::Ok) return checked;
  jet::Database* const database = database_();
  const model::Status status = database != nullptr ? store(*database, stored) : db::NotOpen();
  if (status.ok()) return DecodeStatus::Ok;
  *stored = Stored::Nothing;
  reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                 ErrorText(failureLine, status));
  return DecodeStatus::NotStored;
}

void Decoder::Tell(std::string_view description, Message message, DecodeStatus status) {
  if (model_.RetrieveActive && history_ != nullptr) {
    history_->UpdateStatus(description, static_cast<int>(message.size()), status);
  }
  if (status != DecodeStatus::Ok) events_.MessageRefused(description, status);
}

}  // namespace switcher
