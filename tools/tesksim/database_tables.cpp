// SPDX-License-Identifier: MIT

#include "tools/tesksim/database_tables.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "db/jet/database.h"
#include "db/schema.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "switcher/stored_labels.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"

namespace tesksim {

namespace {

// A number as it travels: its low eight bits.
int Byte(stations::Record& record, std::string_view field) { return record.Number(field) & 0xFF; }

Members MembersOf(std::string_view flags, std::size_t most) {
  Members members;
  for (std::size_t member = 0; member < std::min(most, members.size()); ++member) {
    members.set(member, model::FlagIsSet(flags, static_cast<int>(member) + 1));
  }
  return members;
}

// Everything that a console could have sent and has not.
void ClearTables(SwitcherState& state) {
  const std::string blank(switcher::kLabelLength, ' ');
  for (int label = 1; label <= state.Sizes().labels; ++label) {
    state.outLabels[label] = blank;
    state.inLabels[label] = blank;
  }
  for (int output = 1; output <= state.ChannelCount(); ++output) {
    for (int input = 1; input <= state.ChannelCount(); ++input) {
      state.inhibits.At(output, input) = 0;
    }
    state.relays[output].reset();
  }
  for (int station = 1; station <= state.Sizes().stations; ++station) {
    for (int button = 1; button <= kButtons; ++button) state.buttons[station][button] = {};
  }
  for (int opto = 1; opto <= kOptos; ++opto) state.optos[opto] = {};
}

void ReadOutput(stations::Record& record, int output, SwitcherState& state) {
  const std::string inhibits = record.Flags(db::kInhibitsField);
  for (int input = 1; input <= state.ChannelCount(); ++input) {
    state.inhibits.At(output, input) = model::FlagIsSet(inhibits, input) ? 1 : 0;
  }
  const std::string relays = record.Flags(db::kRelaysField);
  for (int relay = 1; relay <= kRelays; ++relay) {
    state.relays[output].set(static_cast<std::size_t>(relay - 1), model::FlagIsSet(relays, relay));
  }
}

void ReadButtons(stations::Record& record, int station, SwitcherState& state) {
  for (int button = 1; button <= kButtons; ++button) {
    state.buttons[station][button] = {
        .type = Byte(record, db::ButtonField(button, db::kButtonType)),
        .first = Byte(record, db::ButtonField(button, db::kButtonFirst)),
        .members =
            MembersOf(record.Flags(db::ButtonField(button, db::kButtonTargets)), Members().size())};
  }
}

void ReadOpto(stations::Record& record, int opto, SwitcherState& state) {
  state.optos[opto] = {
      .type = Byte(record, db::kOptoTypeField),
      .channel = Byte(record, db::kOptoChannelField),
      .first = Byte(record, db::kOptoFirstField),
      .members = MembersOf(record.Flags(db::kOptoStationsField), switcher::kOptoStations)};
}

// `position` is the record's place in the order of the station numbers, from 1: that of its
// opto.
model::Status ReadStation(jet::RecordSet& stations, int position, SwitcherState& state) {
  stations::Record record(stations);
  const int number = record.Number(db::kStationNumField);
  if (number >= 1 && number <= state.Sizes().labels) {
    const bool hidden = record.Number(db::kHiddenField) == 1;
    state.outLabels[number] = switcher::WireLabel(record.Text(db::kLabelField), hidden);
    state.inLabels[number] = switcher::WireLabel(record.Text(db::kInLabelField), hidden);
  }
  if (state.HasChannel(number)) ReadOutput(record, number, state);
  if (number >= 1 && number <= state.Sizes().stations) ReadButtons(record, number, state);
  if (position <= kOptos) ReadOpto(record, position, state);
  return record.Outcome();
}

model::Status ReadSizes(jet::Database& database, SystemSizes* sizes) {
  std::unique_ptr<jet::RecordSet> info;
  if (jet::Status status = database.OpenTable(db::kDbInfoTable, &info); !status.ok()) {
    return status;
  }
  stations::Record record(*info);
  *sizes = {.channels = record.Number("ChannelCount"),
            .stations = record.Number("StationCount"),
            .labels = record.Number("LabelCount")};
  if (!record.Outcome().ok()) return record.Outcome();
  const auto within = [](int number, int first) { return number >= first && number <= 256; };
  if (within(sizes->channels, 8) && sizes->channels % 8 == 0 && within(sizes->stations, 1) &&
      within(sizes->labels, 1)) {
    return {};
  }
  return {EINVAL, std::to_string(sizes->channels) + " channels, " +
                      std::to_string(sizes->stations) + " stations, " +
                      std::to_string(sizes->labels) +
                      " labels are no system that can be simulated"};
}

model::Status ReadTables(jet::Database& database, SwitcherState& state) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok()) {
    return status;
  }
  for (int position = 1; !stations->Eof(); ++position) {
    if (model::Status status = ReadStation(*stations, position, state); !status.ok()) return status;
    if (jet::Status status = stations->MoveNext(); !status.ok()) return status;
  }
  return {};
}

model::Status ReadAll(const std::filesystem::path& path, std::optional<SwitcherState>* state) {
  std::unique_ptr<jet::Database> database;
  if (jet::Status status = jet::Database::Open(path, jet::Access::ReadOnly, &database);
      !status.ok()) {
    return status;
  }
  SystemSizes sizes;
  if (model::Status status = ReadSizes(*database, &sizes); !status.ok()) return status;
  SwitcherState read(sizes);
  ClearTables(read);
  if (model::Status status = ReadTables(*database, read); !status.ok()) return status;
  *state = std::move(read);
  return {};
}

}  // namespace

model::Status ReadDatabase(const std::filesystem::path& path, std::optional<SwitcherState>* state) {
  const model::Status status = ReadAll(path, state);
  if (status.ok()) return {};
  return {status.Number(), "cannot start from " + path.string() + ": " + status.Description()};
}

}  // namespace tesksim
