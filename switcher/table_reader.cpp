// SPDX-License-Identifier: MIT

#include "switcher/table_reader.h"

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "db/schema.h"
#include "switcher/messages/button_data.h"
#include "switcher/messages/inhibit_row.h"
#include "switcher/messages/label_order.h"
#include "switcher/messages/label_texts.h"
#include "switcher/messages/opto_data.h"
#include "switcher/messages/relay_row.h"
#include "switcher/station_records.h"
#include "switcher/stored_forms.h"

namespace switcher {

namespace {

// Reads fields of the current record and keeps the first failure.
class FieldReader {
 public:
  explicit FieldReader(const jet::RecordSet& records) : records_(records) {}

  int Number(std::string_view field) {
    Read(field);
    return value_.Int();
  }

  // Valid until the next read.
  const std::string& Text(std::string_view field) {
    Read(field);
    return value_.Text();
  }

  const jet::Status& Result() const { return status_; }

 private:
  void Read(std::string_view field) {
    if (status_.ok()) status_ = records_.Get(field, &value_);
    if (!status_.ok()) value_ = jet::Value();
  }

  const jet::RecordSet& records_;
  jet::Value value_;
  jet::Status status_;
};

// Opens the stations at the record of one; a null *stations when there is none.
model::Status OpenAtStation(jet::Database& database, int station,
                            std::unique_ptr<jet::RecordSet>* stations) {
  if (model::Status status = OpenStations(database, stations); !status.ok()) return status;
  if (jet::Status status = (*stations)->Seek(station); !status.ok()) return status;
  if ((*stations)->NoMatch()) stations->reset();
  return {};
}

// A row message of one flag string.
template <typename Encode>
model::Status ReadRow(jet::Database& database, int output, const char* field, Encode encode,
                      std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenAtStation(database, output, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  FieldReader reader(*stations);
  const std::string flags = PlainFlags(reader.Text(field));
  if (!reader.Result().ok()) return reader.Result();
  *message = encode(flags);
  return {};
}

}  // namespace

model::Status ReadLabels(jet::Database& database, const model::SystemModel& model, int selector,
                         LabelMessages* messages) {
  const char* const field = LabelFieldOf(selector);
  std::unique_ptr<jet::RecordSet> sorted;
  const std::array<std::string_view, 2> orderBy{field, kStationNumField};
  if (jet::Status status = database.OpenOrdered(db::kStationsTable, orderBy, &sorted);
      !status.ok()) {
    return status;
  }
  LabelOrder order{.selector = selector, .stations = {}};
  LabelTexts texts{.selector = selector, .labels = {}};
  for (int label = 1; label <= model.LabelCount; ++label) {
    FieldReader reader(*sorted);
    order.stations.push_back(reader.Number(kStationNumField));
    const bool hidden = reader.Number(kHiddenField) == 1;
    texts.labels.push_back(WireLabel(reader.Text(field), hidden));
    if (!reader.Result().ok()) return reader.Result();
    // The move behind the last label may lead past the end; the next read tells.
    if (jet::Status status = sorted->MoveNext(); !status.ok()) return status;
  }
  *messages = {.order = EncodeLabelOrder(order), .texts = EncodeLabelTexts(texts)};
  return {};
}

model::Status ReadInhibits(jet::Database& database, const model::SystemModel& model, int output,
                           std::optional<Bytes>* message) {
  const auto encode = [&](std::string_view flags) {
    return EncodeInhibitRow(output, flags, model.ChannelCount);
  };
  return ReadRow(database, output, kInhibitsField, encode, message);
}

model::Status ReadRelays(jet::Database& database, const model::SystemModel& model, int output,
                         std::optional<Bytes>* message) {
  const auto encode = [&](std::string_view flags) {
    return EncodeRelayRow(output, flags, model.RelayCount);
  };
  return ReadRow(database, output, kRelaysField, encode, message);
}

model::Status ReadButtons(jet::Database& database, const model::SystemModel& model, int station,
                          std::optional<Bytes>* message) {
  message->reset();
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenAtStation(database, station, &stations); !status.ok()) {
    return status;
  }
  if (stations == nullptr) return {};
  FieldReader reader(*stations);
  ButtonData data{.station = station, .buttons = {}};
  for (int button = 1; button <= model.ButtonCount; ++button) {
    ButtonData::Button& read = data.buttons.emplace_back();
    read.type = reader.Number(db::ButtonField(button, "Type"));
    read.first = reader.Number(db::ButtonField(button, "First"));
    read.targets = FlagMembers(reader.Text(db::ButtonField(button, "Prog")));
  }
  if (!reader.Result().ok()) return reader.Result();
  *message = EncodeButtonData(data);
  return {};
}

model::Status ReadOptos(jet::Database& database, const model::SystemModel& model, Bytes* message) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  OptoData data;
  for (int opto = 1; opto <= model.OptoCount; ++opto) {
    FieldReader reader(*stations);
    OptoData::Opto& read = data.optos.emplace_back();
    read.type = reader.Number(kOptoTypeField);
    read.channel = reader.Number(kOptoChannelField);
    read.first = reader.Number(kOptoFirstField);
    read.stations = FlagMembers(reader.Text(kOptoStationsField));
    if (!reader.Result().ok()) return reader.Result();
    // The move behind the last opto may lead past the end; the next read tells.
    if (jet::Status status = stations->MoveNext(); !status.ok()) return status;
  }
  *message = EncodeOptoData(data);
  return {};
}

}  // namespace switcher
