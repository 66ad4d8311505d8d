// SPDX-License-Identifier: MIT

#include "gateway/panel_tables.h"

#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <vector>

#include "db/schema.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "switcher/stored_labels.h"
#include "switcher/wire/message_table.h"

namespace gateway {

namespace {

// The largest value of a pair.
constexpr std::size_t kPairLimit = 16384;

// The places of the fields of one button in a record.
struct ButtonFields {
  int type;
  int first;
  int prog;
};

void PutRow(const model::SystemModel& model, int channel, FrameBuilder& frame) {
  const std::span<const std::uint8_t> row = model.CrosspointMap.Row(channel);
  int made = 0;
  for (const std::uint8_t crosspoint : row) made += crosspoint == 1 ? 1 : 0;
  frame.PutPair(made);
  frame.PutByte(model.ChannelStatus[channel]);
  for (std::size_t column = 0; column < row.size(); ++column) {
    if (row[column] == 1) frame.PutPair(static_cast<int>(column));
  }
}

void PutProg(const std::vector<std::uint8_t>& members, FrameBuilder& frame) {
  const auto said = std::span(members).first(std::min(members.size(), kPairLimit - 1));
  int set = 0;
  for (const std::uint8_t member : said) set += member;
  frame.PutPair(set);
  for (std::size_t position = 0; position < said.size(); ++position) {
    if (said[position] != 0) frame.PutPair(static_cast<int>(position));
  }
}

// Calls `put` for each of the first `count` records; it returns a status.
template <typename Put>
model::Status WalkRecords(jet::RecordSet& stations, int count, Put put) {
  for (int r = 1; r <= count; ++r) {
    if (const jet::Status status = put(); !status.ok()) return status;
    // The move behind the last record wanted may lead past the end; the next read tells.
    if (const jet::Status moved = stations.MoveNext(); !moved.ok()) return moved;
  }
  return {};
}

model::Status CheckChannels(const model::SystemModel& model, int first, int count) {
  if (first < 1 || count < 0 || first - 1 + count > model.CrosspointMap.Size()) {
    return {kOutOfRange, "There is no such channel"};
  }
  return {};
}

}  // namespace

model::Status BuildCrosspointMap(const model::SystemModel& model, int first, int count,
                                 Bytes* frame) {
  if (model::Status status = CheckChannels(model, first, count); !status.ok()) return status;
  FrameBuilder builder(kCrosspointMapType);
  builder.PutByte(0);
  builder.PutPair(count);
  builder.PutPair(first - 1);
  for (int channel = first; channel < first + count; ++channel) PutRow(model, channel, builder);
  *frame = builder.Finish();
  return {};
}

model::Status BuildLabelTable(jet::Database& database, const model::SystemModel& model, int kind,
                              Bytes* frame) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok()) {
    return status;
  }
  const char* const field = kind == switcher::kOutputLabels ? db::kLabelField : db::kInLabelField;
  FrameBuilder builder(kLabelTableType);
  builder.PutByte(kind);
  builder.PutByte(kLabelWidth);
  builder.PutPair(model.ChannelCount);
  builder.PutPair(0);
  jet::Value value;
  model::Status status = WalkRecords(*stations, model.ChannelCount, [&]() -> jet::Status {
    if (jet::Status read = stations->Get(field, &value); !read.ok()) return read;
    for (const char character : PanelLabel(value.Text())) builder.PutByte(character);
    if (jet::Status read = stations->Get(db::kStationNumField, &value); !read.ok()) {
      return read;
    }
    builder.PutPair(value.Int() - 1);
    return {};
  });
  if (status.ok()) *frame = builder.Finish();
  return status;
}

Bytes BuildStationList(const model::SystemModel& model) {
  FrameBuilder builder(kStationListType);
  builder.PutByte(0);
  builder.PutPair(model.ChannelCount);
  builder.PutPair(0);
  for (int station = 1; station <= model.ChannelCount; ++station) builder.PutPair(station);
  return builder.Finish();
}

model::Status BuildButtonProgramming(jet::Database& database, const model::SystemModel& model,
                                     Bytes* frame) {
  std::unique_ptr<jet::RecordSet> stations;
  if (model::Status status = stations::OpenStations(database, &stations); !status.ok()) {
    return status;
  }
  std::array<ButtonFields, db::kButtons> buttons{};
  for (int button = 1; button <= db::kButtons; ++button) {
    const auto index = [&](const char* suffix) {
      return stations->FieldIndex(db::ButtonField(button, suffix));
    };
    buttons[static_cast<std::size_t>(button - 1)] = {
        index(db::kButtonType), index(db::kButtonFirst), index(db::kButtonTargets)};
  }
  FrameBuilder builder(kButtonProgrammingType);
  builder.PutByte(0);
  builder.PutPair(model.ChannelCount);
  builder.PutPair(0);
  builder.PutPair(db::kButtons);
  jet::Value value;
  model::Status status = WalkRecords(*stations, model.ChannelCount, [&]() -> jet::Status {
    for (const ButtonFields& button : buttons) {
      if (jet::Status read = stations->Get(button.type, &value); !read.ok()) return read;
      builder.PutPair(PanelButtonType(value.Int()));
      if (jet::Status read = stations->Get(button.first, &value); !read.ok()) return read;
      builder.PutPair(value.Int() - 1);
      if (jet::Status read = stations->Get(button.prog, &value); !read.ok()) return read;
      PutProg(model::FlagMembers(value.Text()), builder);
    }
    return {};
  });
  if (status.ok()) *frame = builder.Finish();
  return status;
}

int PanelButtonType(int type) {
  switch (type) {
    case 0:
      return 2;
    case 1:
      return 0;
    case 2:
      return 1;
    case 3:
      return 5;
    case 254:
      return 255;
    case 255:
      return 3;
    default:
      return 0;
  }
}

std::string PanelLabel(std::string_view label) {
  std::string bytes = switcher::WireLabel(label, false);
  for (char& byte : bytes) {
    if ((byte & 0x80) != 0) byte = '?';
  }
  return bytes;
}

}  // namespace gateway
