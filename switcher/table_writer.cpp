// SPDX-License-Identifier: MIT

#include "switcher/table_writer.h"

#include <memory>
#include <string>

#include "db/schema.h"
#include "switcher/messages/label_order.h"
#include "switcher/station_records.h"
#include "switcher/stored_forms.h"

namespace switcher {

namespace {

// A stored flag string has at least so many members, as in a new database.
constexpr std::size_t kLeastFlags = 64;

// Changes fields of the current record and keeps the first failure.
class FieldWriter {
 public:
  explicit FieldWriter(jet::RecordSet& records) : records_(records), status_(records.Edit()) {}

  void Set(std::string_view field, const jet::Value& value) {
    if (status_.ok()) status_ = records_.Set(field, value);
  }

  void SetFlags(std::string_view field, std::span<const std::uint8_t> flags) {
    Set(field, FilledFlags(WithFirstFlags(Text(field), flags), kLeastFlags));
  }

  // The text of a field; empty when it is null or cannot be read.
  std::string Text(std::string_view field) {
    jet::Value value;
    if (status_.ok()) status_ = records_.Get(field, &value);
    return value.Text();
  }

  jet::Status Update() { return status_.ok() ? records_.Update() : status_; }

 private:
  jet::RecordSet& records_;
  jet::Status status_;
};

jet::Status StoreLabel(jet::RecordSet& stations, int selector, std::string_view received) {
  const char* const field = LabelFieldOf(selector);
  const bool marked = received.front() == kHiddenMark;
  FieldWriter record(stations);
  const bool known = marked && WireLabel(record.Text(field), /*hidden=*/true) == received;
  if (!known) record.Set(field, LabelFromWire(received));
  if (selector == kOutputLabels) record.Set(kHiddenField, marked ? 1 : 0);
  return record.Update();
}

// Runs `write` on the record of a station, if there is one.
template <typename Write>
model::Status StoreStation(jet::Database& database, int station, Stored* stored, Write write) {
  jet::Database::Batch batch(database);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  if (jet::Status status = stations->Seek(station); !status.ok()) return status;
  *stored = stations->NoMatch() ? Stored::Nothing : Stored::All;
  if (stations->NoMatch()) return {};
  FieldWriter record(*stations);
  write(record);
  if (jet::Status status = record.Update(); !status.ok()) return status;
  return batch.Commit();
}

}  // namespace

model::Status StoreLabels(jet::Database& database, const LabelTexts& texts, Stored* stored) {
  jet::Database::Batch batch(database);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  *stored = Stored::All;
  for (std::size_t i = 0; i < texts.labels.size(); ++i) {
    if (jet::Status status = stations->Seek(static_cast<int>(i) + 1); !status.ok()) return status;
    if (stations->NoMatch()) {
      *stored = i == 0 ? Stored::Nothing : Stored::Part;
      break;
    }
    if (jet::Status status = StoreLabel(*stations, texts.selector, texts.labels[i]); !status.ok()) {
      return status;
    }
  }
  return batch.Commit();
}

model::Status StoreFlags(jet::Database& database, int station, const char* field,
                         std::span<const std::uint8_t> flags, Stored* stored) {
  return StoreStation(database, station, stored,
                      [&](FieldWriter& record) { record.SetFlags(field, flags); });
}

model::Status StoreButtons(jet::Database& database, const ButtonData& data, Stored* stored) {
  return StoreStation(database, data.station, stored, [&](FieldWriter& record) {
    int number = 0;
    for (const ButtonData::Button& button : data.buttons) {
      ++number;
      record.Set(db::ButtonField(number, "Type"), button.type);
      record.Set(db::ButtonField(number, "First"), button.first);
      record.SetFlags(db::ButtonField(number, "Prog"), button.targets);
    }
  });
}

model::Status StoreOptos(jet::Database& database, const OptoData& data, Stored* stored) {
  jet::Database::Batch batch(database);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = OpenStations(database, &stations); !status.ok()) return status;
  *stored = Stored::Nothing;
  for (const OptoData::Opto& opto : data.optos) {
    if (!stations->HasRecord()) break;
    FieldWriter record(*stations);
    record.Set(kOptoTypeField, opto.type);
    record.Set(kOptoChannelField, opto.channel);
    record.Set(kOptoFirstField, opto.first);
    record.SetFlags(kOptoStationsField, opto.stations);
    if (jet::Status status = record.Update(); !status.ok()) return status;
    *stored = &opto == &data.optos.back() ? Stored::All : Stored::Part;
    if (jet::Status status = stations->MoveNext(); !status.ok()) return status;
  }
  return batch.Commit();
}

}  // namespace switcher
