// SPDX-License-Identifier: MIT

#include "stations/snapshot.h"

#include "db/database_files.h"
#include "db/station_fields.h"
#include "stations/relays.h"

namespace stations {
namespace {

Reading<jet::Value> ReadField(jet::RecordSet* stations, const char* field) {
  Reading<jet::Value> read;
  read.status =
      stations != nullptr ? model::Status(stations->Get(field, &read.value)) : db::NotOpen();
  if (!read.status.ok()) read.value.SetNull();
  return read;
}

Reading<std::string> ReadText(jet::RecordSet* stations, const char* field) {
  const Reading<jet::Value> read = ReadField(stations, field);
  return {.value = read.value.Text(), .status = read.status};
}

}  // namespace

StationSnapshot::StationSnapshot(jet::RecordSet* stations, int buttonCount)
    : number(ReadField(stations, db::kStationNumField)),
      label(ReadText(stations, db::kLabelField)),
      inputLabel(ReadText(stations, db::kInLabelField)),
      buttons(static_cast<std::size_t>(buttonCount),
              ButtonProgram{.type = {.value = kNoType, .status = db::NotOpen()},
                            .first = {.status = db::NotOpen()},
                            .targets = {.status = db::NotOpen()}}),
      relays{.status = db::NotOpen()},
      opto{.status = db::NotOpen()},
      targets(stations) {
  if (stations == nullptr) return;
  int button = 0;
  for (ButtonProgram& program : buttons) program = ReadButton(*stations, ++button);
  relays.status = ReadRelays(*stations, &relays.value);
  opto.status = ReadOpto(*stations, &opto.value);
}

}  // namespace stations
