// SPDX-License-Identifier: MIT

#include "switcher/store_tables.h"

#include <memory>
#include <string_view>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/batch.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "switcher/stored_labels.h"
#include "switcher/wire/messages/label_order.h"

namespace switcher {

namespace {

// A stored flag string has at least so many members, as in a new database.
constexpr std::size_t kLeastFlags = 64;

void SetFlags(stations::Record& record, std::string_view field,
              std::span<const std::uint8_t> flags) {
  record.Set(field,
             model::FilledFlags(model::WithFirstFlags(record.Text(field), flags), kLeastFlags));
}

model::Status StoreLabel(jet::RecordSet& stations, int selector, std::string_view received,
                         const stations::Author& author) {
  const char* const field = LabelFieldOf(selector);
  const bool marked = received.front() == kHiddenMark;
  stations::Record record(stations);
  const bool known = marked && WireLabel(record.Text(field), /*hidden=*/true) == received;
  if (!known) record.Set(field, LabelFromWire(received));
  if (selector == kOutputLabels) record.Set(db::kHiddenField, marked ? 1 : 0);
  return record.Commit(author);
}

// Runs `write` on the record of a station, if there is one.
template <typename Write>
model::Status StoreStation(jet::Database& database, int station, const stations::Author& author,
                           Stored* stored, Write write) {
  stations::Batch batch(database, author.changes);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok())
    return status;
  if (jet::Status status = stations->Seek(station); !status.ok()) return status;
  *stored = stations->NoMatch() ? Stored::Nothing : Stored::All;
  if (stations->NoMatch()) return {};
  stations::Record record(*stations);
  write(record);
  if (model::Status status = record.Commit(author); !status.ok()) return status;
  return batch.Commit();
}

}  // namespace

model::Status StoreLabels(jet::Database& database, const LabelTexts& texts,
                          const stations::Author& author, Stored* stored) {
  stations::Batch batch(database, author.changes);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok())
    return status;
  *stored = Stored::All;
  for (std::size_t i = 0; i < texts.labels.size(); ++i) {
    if (jet::Status status = stations->Seek(static_cast<int>(i) + 1); !status.ok()) return status;
    if (stations->NoMatch()) {
      *stored = i == 0 ? Stored::Nothing : Stored::Part;
      break;
    }
    if (model::Status status = StoreLabel(*stations, texts.selector, texts.labels[i], author);
        !status.ok()) {
      return status;
    }
  }
  return batch.Commit();
}

model::Status StoreFlags(jet::Database& database, int station, const char* field,
                         std::span<const std::uint8_t> flags, const stations::Author& author,
                         Stored* stored) {
  return StoreStation(database, station, author, stored,
                      [&](stations::Record& record) { SetFlags(record, field, flags); });
}

model::Status StoreButtons(jet::Database& database, const ButtonData& data,
                           const stations::Author& author, Stored* stored) {
  return StoreStation(database, data.station, author, stored, [&](stations::Record& record) {
    int number = 0;
    for (const ButtonData::Button& button : data.buttons) {
      ++number;
      record.Set(db::ButtonField(number, db::kButtonType), button.type);
      record.Set(db::ButtonField(number, db::kButtonFirst), button.first);
      SetFlags(record, db::ButtonField(number, db::kButtonTargets), button.targets);
    }
  });
}

model::Status StoreOptos(jet::Database& database, const OptoData& data,
                         const stations::Author& author, Stored* stored) {
  stations::Batch batch(database, author.changes);
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok())
    return status;
  *stored = Stored::Nothing;
  for (const OptoData::Opto& opto : data.optos) {
    if (!stations->HasRecord()) break;
    stations::Record record(*stations);
    record.Set(db::kOptoTypeField, opto.type);
    record.Set(db::kOptoChannelField, opto.channel);
    record.Set(db::kOptoFirstField, opto.first);
    SetFlags(record, db::kOptoStationsField, opto.stations);
    if (model::Status status = record.Commit(author); !status.ok()) return status;
    *stored = &opto == &data.optos.back() ? Stored::All : Stored::Part;
    if (jet::Status status = stations->MoveNext(); !status.ok()) return status;
  }
  return batch.Commit();
}

}  // namespace switcher
