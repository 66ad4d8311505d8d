// SPDX-License-Identifier: MIT

#include "switcher/load_tables.h"

#include <array>
#include <memory>
#include <string>

#include "db/schema.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "switcher/stored_labels.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"

namespace switcher {

namespace {

// A row message of one flag string.
template <typename Encode>
model::Status LoadRow(jet::Database& database, int output, const char* field, Encode encode,
                      std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStation(database, output, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  stations::Record record(*stations);
  const std::string flags = record.Flags(field);
  if (!record.Outcome().ok()) return record.Outcome();
  *message = encode(flags);
  return {};
}

}  // namespace

model::Status LoadLabels(jet::Database& database, const model::SystemModel& model, int selector,
                         LabelMessages* messages) {
  const char* const field = LabelFieldOf(selector);
  std::unique_ptr<jet::RecordSet> sorted;
  const std::array<std::string_view, 2> orderBy{field, db::kStationNumField};
  if (jet::Status status = database.OpenOrdered(db::kStationsTable, orderBy, &sorted);
      !status.ok()) {
    return status;
  }
  LabelOrder order{.selector = selector, .stations = {}};
  LabelTexts texts{.selector = selector, .labels = {}};
  for (int label = 1; label <= model.LabelCount; ++label) {
    stations::Record record(*sorted);
    order.stations.push_back(record.Number(db::kStationNumField));
    const bool hidden = record.Number(db::kHiddenField) == 1;
    texts.labels.push_back(WireLabel(record.Text(field), hidden));
    if (!record.Outcome().ok()) return record.Outcome();
    // The move behind the last label may lead past the end; the next read tells.
    if (jet::Status status = sorted->MoveNext(); !status.ok()) return status;
  }
  *messages = {.order = EncodeLabelOrder(order), .texts = EncodeLabelTexts(texts)};
  return {};
}

model::Status LoadInhibits(jet::Database& database, const model::SystemModel& model, int output,
                           std::optional<Bytes>* message) {
  const auto encode = [&](std::string_view flags) {
    return EncodeInhibitRow(output, flags, model.ChannelCount);
  };
  return LoadRow(database, output, db::kInhibitsField, encode, message);
}

model::Status LoadRelays(jet::Database& database, const model::SystemModel& model, int output,
                         std::optional<Bytes>* message) {
  const auto encode = [&](std::string_view flags) {
    return EncodeRelayRow(output, flags, model.RelayCount);
  };
  return LoadRow(database, output, db::kRelaysField, encode, message);
}

model::Status LoadButtons(jet::Database& database, const model::SystemModel& model, int station,
                          std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStation(database, station, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  stations::Record record(*stations);
  ButtonData data{.station = station, .buttons = {}};
  for (int button = 1; button <= model.ButtonCount; ++button) {
    ButtonData::Button& read = data.buttons.emplace_back();
    read.type = record.Number(db::ButtonField(button, db::kButtonType));
    read.first = record.Number(db::ButtonField(button, db::kButtonFirst));
    read.targets = model::FlagMembers(record.Text(db::ButtonField(button, db::kButtonTargets)));
  }
  if (!record.Outcome().ok()) return record.Outcome();
  *message = EncodeButtonData(data);
  return {};
}

model::Status LoadOptos(jet::Database& database, const model::SystemModel& model, Bytes* message) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok())
    return status;
  OptoData data;
  for (int opto = 1; opto <= model.OptoCount; ++opto) {
    stations::Record record(*stations);
    OptoData::Opto& read = data.optos.emplace_back();
    read.type = record.Number(db::kOptoTypeField);
    read.channel = record.Number(db::kOptoChannelField);
    read.first = record.Number(db::kOptoFirstField);
    read.stations = model::FlagMembers(record.Text(db::kOptoStationsField));
    if (!record.Outcome().ok()) return record.Outcome();
    // The move behind the last opto may lead past the end; the next read tells.
    if (jet::Status status = stations->MoveNext(); !status.ok()) return status;
  }
  *message = EncodeOptoData(data);
  return {};
}

}  // namespace switcher
