// SPDX-License-Identifier: MIT

#include "switcher/load_tables.h"

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "db/schema.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "switcher/stored_labels.h"
#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"

namespace switcher {

namespace {

using model::SystemModel;
using stations::Record;

// Makes the message of an output or station of its record.
using MakeRow = std::function<Bytes(Record& record, int number)>;

MakeRow MakeInhibits(const SystemModel& model) {
  return [&model](Record& record, int output) {
    return EncodeInhibitRow(output, record.Flags(db::kInhibitsField), model.ChannelCount);
  };
}

MakeRow MakeRelays(const SystemModel& model) {
  return [&model](Record& record, int output) {
    return EncodeRelayRow(output, record.Flags(db::kRelaysField), model.RelayCount);
  };
}

// The names of a button's fields.
struct ButtonFields {
  std::string type;
  std::string first;
  std::string targets;
};

// The names are made once: for all stations again they would be most of the work.
MakeRow MakeButtons(const SystemModel& model) {
  std::vector<ButtonFields> fields;
  for (int button = 1; button <= model.ButtonCount; ++button) {
    fields.push_back({.type = db::ButtonField(button, db::kButtonType),
                      .first = db::ButtonField(button, db::kButtonFirst),
                      .targets = db::ButtonField(button, db::kButtonTargets)});
  }
  return [fields = std::move(fields)](Record& record, int station) {
    ButtonData data{.station = station, .buttons = {}};
    data.buttons.reserve(fields.size());
    for (const ButtonFields& button : fields) {
      ButtonData::Button& read = data.buttons.emplace_back();
      read.type = record.Number(button.type);
      read.first = record.Number(button.first);
      read.targets = model::FlagMembers(record.Text(button.targets));
    }
    return EncodeButtonData(data);
  };
}

// Of a table that has messages of outputs or stations.
MakeRow MakeRowOf(Table table, const SystemModel& model) {
  switch (table) {
    case Table::Inhibits:
      return MakeInhibits(model);
    case Table::Relays:
      return MakeRelays(model);
    case Table::Buttons:
      return MakeButtons(model);
    case Table::Optos:
    case Table::OutputLabels:
    case Table::InputLabels:
      break;
  }
  return nullptr;
}

model::Status LoadRow(jet::Database& database, int number, const MakeRow& make,
                      std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStation(database, number, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  Record record(*stations);
  Bytes made = make(record, number);
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
  return LoadRow(database, output, MakeInhibits(model), message);
}

model::Status LoadRelays(jet::Database& database, const SystemModel& model, int output,
                         std::optional<Bytes>* message) {
  return LoadRow(database, output, MakeRelays(model), message);
}

model::Status LoadButtons(jet::Database& database, const SystemModel& model, int station,
                          std::optional<Bytes>* message) {
  return LoadRow(database, station, MakeButtons(model), message);
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

model::Status LoadMessages(jet::Database& database, const SystemModel& model, const TablePart& part,
                           std::vector<Bytes>* messages) {
  messages->clear();
  model::Status status;
  switch (part.table) {
    case Table::Optos: {
      Bytes message;
      status = LoadOptos(database, model, &message);
      if (status.ok()) messages->push_back(std::move(message));
      return status;
    }
    case Table::OutputLabels:
    case Table::InputLabels: {
      LabelMessages labels;
      const bool ofOutputs = part.table == Table::OutputLabels;
      status = LoadLabels(database, model, ofOutputs ? kOutputLabels : kInputLabels, &labels);
      if (status.ok()) *messages = {std::move(labels.order), std::move(labels.texts)};
      return status;
    }
    case Table::Inhibits:
    case Table::Relays:
    case Table::Buttons:
      break;
  }
  if (part.station < 1 || part.station > LastRow(part.table, model)) return status;
  std::optional<Bytes> message;
  status = LoadRow(database, part.station, MakeRowOf(part.table, model), &message);
  if (message) messages->push_back(*std::move(message));
  return status;
}

model::Status LoadRows(jet::Database& database, const SystemModel& model, const TakeRow& take) {
  struct Rows {
    Table table;
    int last;
    MakeRow make;
  };
  std::vector<Rows> tables;
  for (const db::TableKind& kind : db::kTables) {
    if (kind.rows == db::Rows::None) continue;
    tables.push_back({kind.table, LastRow(kind.table, model), MakeRowOf(kind.table, model)});
  }
  std::unique_ptr<jet::RecordSet> stations;
  model::Status status = stations::OpenStations(database, &stations);
  while (status.ok() && stations->HasRecord()) {
    const int number = Record(*stations).Number(db::kStationNumField);
    for (const Rows& rows : tables) {
      if (number < 1 || number > rows.last) continue;
      Record record(*stations);
      const Bytes message = rows.make(record, number);
      if (record.Outcome().ok()) take({.table = rows.table, .station = number}, message);
    }
    status = stations->MoveNext();
  }
  return status;
}

}  // namespace switcher
