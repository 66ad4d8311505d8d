// SPDX-License-Identifier: MIT

#include "switcher/decoder.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "db/database_files.h"
#include "db/station_fields.h"
#include "switcher/message_sender.h"
#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "switcher/wire/messages/row_number.h"
#include "switcher/wire/messages/tally.h"

namespace switcher {

namespace {

constexpr std::string_view kChannelNotFound =
    "Error in format of received Alpha Label message (Channel Not Found).\n"
    "This message only partially saved.";

}  // namespace

void Decoder::Decode(Message message) {
  if (message.empty()) return;
  switch (static_cast<MessageCode>(message[0])) {
    case kGainReportCode:
      return DecodeGainReport(message);
    case kCrosspointRowCode:
      return DecodeCrosspointRow(message);
    case kAlphaLabelsCode:
      return DecodeLabels(message);
    case kButtonDataCode:
      return DecodeButtonData(message);
    case kRelayRowCode:
      return DecodeRelayRow(message);
    case kInhibitRowCode:
      return DecodeInhibitRow(message);
    case kTallyCode:
      return DecodeTally(message);
    case kOptoDataCode:
      return DecodeOptoData(message);
    case kTakeCode:
    case kGainCode:
    case kLabelOrderCode:
      return;  // these go to the switcher only
  }
}

void Decoder::DecodeCrosspointRow(Message message) {
  model::SystemModel& model = services_.model;
  CrosspointRow row;
  const DecodeStatus status = ParseCrosspointRow(message, model.ChannelCount, &row);

  // The row is stored before its checksum and end byte are judged: a message that fails there
  // leaves the row changed, and the map that is asked for again puts it right.
  const bool isStored = status != DecodeStatus::WrongSize && status != DecodeStatus::WrongChannel;
  if (isStored) {
    model.ChannelStatus[row.output] = row.status;
    for (int input = 1; input <= model.ChannelCount; ++input) {
      model.CrosspointMap.At(row.output, input) = row.sources[static_cast<std::size_t>(input - 1)];
    }
  }
  if (status != DecodeStatus::Ok) model.XmapComplete = false;
  Tell(message, status);
  if (status != DecodeStatus::Ok) {
    if (isStored) services_.observers.Tell(&SwitcherEvents::CrosspointRowSpoiled, row.output);
    return;
  }

  services_.observers.Tell(&SwitcherEvents::CrosspointRowChanged, row.output, row.status);
  if (row.output == model.ChannelCount) model.XmapComplete = true;
}

void Decoder::DecodeGainReport(Message message) {
  std::vector<std::int16_t> steps;
  const DecodeStatus status = ParseGainReport(message, services_.model.ChannelCount, &steps);
  if (status == DecodeStatus::Ok) {
    auto& gains = services_.model.InputGains;
    std::copy_n(steps.begin(), std::min(steps.size(), gains.size()), gains.begin());
  }
  Tell(message, status);
  if (status == DecodeStatus::Ok) services_.observers.Tell(&SwitcherEvents::GainsChanged);
}

void Decoder::DecodeTally(Message message) {
  const DecodeStatus status = ParseTally(message, &services_.model.QdvTally);
  if (status == DecodeStatus::Ok) services_.model.TallySeen = true;
  Tell(message, status);
  if (status == DecodeStatus::Ok) services_.observers.Tell(&SwitcherEvents::TallyChanged);
}

void Decoder::DecodeLabels(Message message) {
  LabelTexts texts;
  Outcome outcome =
      Store(ParseLabelTexts(message, services_.model.LabelCount, &texts),
            "Error Storing Alpha Table", [&](jet::Database& database, Stored* stored) {
              return StoreLabels(database, texts, Switcher(), stored);
            });
  if (outcome.status == DecodeStatus::Ok && outcome.stored != Stored::All) {
    services_.reporter.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                            kChannelNotFound);
    outcome.status = DecodeStatus::WrongChannel;
  }
  Tell(message, outcome, &SwitcherEvents::LabelsChanged, texts.selector);
}

void Decoder::DecodeInhibitRow(Message message) {
  FlagRow row;
  const Outcome outcome =
      Store(ParseInhibitRow(message, services_.model.ChannelCount, &row),
            "Error Storing Inhibits Table", [&](jet::Database& database, Stored* stored) {
              return StoreFlags(database, row.output, db::kInhibitsField, row.members, Switcher(),
                                stored);
            });
  Tell(message, outcome, &SwitcherEvents::InhibitsChanged, row.output);
}

void Decoder::DecodeRelayRow(Message message) {
  FlagRow row;
  const model::SystemModel& model = services_.model;
  const Outcome outcome = Store(
      ParseRelayRow(message, model.ChannelCount, model.RelayCount, &row),
      "Error Storing Relays Table", [&](jet::Database& database, Stored* stored) {
        return StoreFlags(database, row.output, db::kRelaysField, row.members, Switcher(), stored);
      });
  Tell(message, outcome, &SwitcherEvents::RelaysChanged, row.output);
}

void Decoder::DecodeButtonData(Message message) {
  ButtonData data;
  const model::SystemModel& model = services_.model;
  const Outcome outcome =
      Store(ParseButtonData(message, model.StationCount, model.ButtonCount, model.StationCount / 8,
                            &data),
            "Error Storing Button Table", [&](jet::Database& database, Stored* stored) {
              return StoreButtons(database, data, Switcher(), stored);
            });
  Tell(message, outcome, &SwitcherEvents::ButtonsChanged, data.station);
}

void Decoder::DecodeOptoData(Message message) {
  OptoData data;
  const Outcome outcome =
      Store(ParseOptoData(message, services_.model.OptoCount, &data),
            "Error Storing Opto Programming Data", [&](jet::Database& database, Stored* stored) {
              return StoreOptos(database, data, Switcher(), stored);
            });
  Tell(message, outcome, &SwitcherEvents::OptosChanged);
}

Decoder::Outcome Decoder::Store(DecodeStatus checked, std::string_view failureLine,
                                const StoreTable& store) {
  Outcome outcome{.status = checked};
  if (checked != DecodeStatus::Ok) return outcome;
  jet::Database* const database = services_.database();
  const model::Status status =
      database != nullptr ? store(*database, &outcome.stored) : db::NotOpen();
  if (status.ok()) return outcome;
  ReportSendError(services_.reporter, failureLine, status);
  return {.status = DecodeStatus::NotStored};
}

void Decoder::Tell(Message message, DecodeStatus status) {
  const auto code = static_cast<MessageCode>(message[0]);
  std::string description = DescribeMessage(code, RowNumber(message));
  if (code == kTallyCode && status != DecodeStatus::Ok) description += " Info";
  if (services_.model.RetrieveActive && history_ != nullptr) {
    history_->UpdateStatus(description, static_cast<int>(message.size()), status);
  }
  if (status != DecodeStatus::Ok)
    services_.observers.Tell(&SwitcherEvents::MessageRefused, description, status);
}

void Decoder::TellEnd(Message message, TableEvent event) {
  if (const std::optional<TablePart> part = PartOf(message)) services_.observers.Tell(event, *part);
}

}  // namespace switcher
