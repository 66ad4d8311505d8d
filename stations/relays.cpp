// SPDX-License-Identifier: MIT

#include "stations/relays.h"

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/record.h"

namespace stations {

model::Status ReadRelays(jet::RecordSet& stations, std::string* relays) {
  Record record(stations);
  *relays = record.Flags(db::kRelaysField);
  return record.Outcome();
}

model::Status StoreRelay(jet::RecordSet& stations, int relay, bool set, int relayCount,
                         const Author& author) {
  Record record(stations);
  record.Set(db::kRelaysField,
             model::WithFlag(record.Text(db::kRelaysField), relay, set, relayCount));
  return record.Commit(author);
}

}  // namespace stations
