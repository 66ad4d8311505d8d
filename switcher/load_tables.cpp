// SPDX-License-Identifier: MIT

#include "switcher/load_tables.h"

#include <array>
#include <memory>
#include <string>
#include <utility>

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

using model::SystemModel;
using stations::Record;

// The message of an output or station, made of its record.
using MakeRow = Bytes (*)(Record& record, const SystemModel& model, int number);

Bytes MakeInhibits(Record& record, const SystemModel& model, int output) {
  return EncodeInhibitRow(output, record.Flags(db::kInhibitsField), model.ChannelCount);
}

Bytes MakeRelays(Record& record, const SystemModel& model, int output) {
  return EncodeRelayRow(output, record.Flags(db::kRelaysField), model.RelayCount);
}

Bytes MakeButtons(Record& record, const SystemModel& model, int station) {
  ButtonData data{.station = station, .buttons = {}};
  for (int button = 1; button <= model.ButtonCount; ++button) {
    ButtonData::Button& read = data.buttons.emplace_back();
    read.type = record.Number(db::ButtonField(button, db::kButtonType));
    read.first = record.Number(db::ButtonField(button, db::kButtonFirst));
    read.targets = model::FlagMembers(record.Text(db::ButtonField(button, db::kButtonTargets)));
  }
  return EncodeButtonData(data);
}

model::Status LoadRow(jet::Database& database, const SystemModel& model, int number, MakeRow make,
                      std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStation(database, number, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  Record record(*stations);
  Bytes made = make(record, model, number);
  if (!record.Outcome().ok()) return record.Outcome();
  *message = std::move(made);
  return {};
}

}  // namespace

model::Status LoadLabels(jet::Database& database, const SystemModel& model, int selector,
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
    Record record(*sorted);
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

model::Status LoadInhibits(jet::Database& database, const SystemModel& model, int output,
                           std::optional<Bytes>* message) {
  return LoadRow(database, model, output, MakeInhibits, message);
}

model::Status LoadRelays(jet::Database& database, const SystemModel& model, int output,
                         std::optional<Bytes>* message) {
  return LoadRow(database, model, output, MakeRelays, message);
}

model::Status LoadButtons(jet::Database& database, const SystemModel& model, int station,
                          std::optional<Bytes>* message) {
  return LoadRow(database, model, station, MakeButtons, message);
}

model::Status LoadRows(jet::Database& database, const SystemModel& model, const TakeRow& take) {
  struct Rows {
    Table table;
    int last;
    MakeRow make;
  };
  const std::array<Rows, 3> tables{{{Table::Inhibits, model.ChannelCount, MakeInhibits},
                                    {Table::Relays, model.ChannelCount, MakeRelays},
                                    {Table::Buttons, model.StationCount, MakeButtons}}};
  std::unique_ptr<jet::RecordSet> stations;
  model::Status status = stations::OpenStations(database, &stations);
  while (status.ok() && stations->HasRecord()) {
    const int number = Record(*stations).Number(db::kStationNumField);
    for (const Rows& rows : tables) {
      if (number < 1 || number > rows.last) continue;
      Record record(*stations);
      const Bytes message = rows.make(record, model, number);
      if (record.Outcome().ok()) take({.table = rows.table, .station = number}, message);
    }
    status = stations->MoveNext();
  }
  return status;
}

model::Status LoadOptos(jet::Database& database, const SystemModel& model, Bytes* message) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok())
    return status;
  OptoData data;
  for (int opto = 1; opto <= model.OptoCount; ++opto) {
    Record record(*stations);
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
