// SPDX-License-Identifier: MIT

#include "tools/teskpanel/messages.h"

#include <utility>

namespace teskpanel {

namespace {

// The data bytes of a service request around the one that matters.
constexpr int kRequestBytes = 8;
constexpr int kMaskPlace = 1;

// Reads `count` pairs that count from 0.
bool ReadNumbers(FrameReader& reader, int count, std::vector<int>* numbers) {
  int number = 0;
  for (int i = 0; i < count; ++i) {
    if (!reader.Pair(&number)) return false;
    numbers->push_back(number + 1);
  }
  return true;
}

// Reads the count of the records, and the number of the first, from 1.
bool ReadHeader(FrameReader& reader, int* count, int* first) {
  if (!reader.Pair(count) || !reader.Pair(first)) return false;
  ++*first;
  return true;
}

bool ReadRow(FrameReader& reader, MapRow* row) {
  int made = 0;
  return reader.Pair(&made) && reader.Byte(&row->status) && ReadNumbers(reader, made, &row->inputs);
}

bool ReadButton(FrameReader& reader, Button* button) {
  int first = 0;
  int members = 0;
  if (!reader.Pair(&button->type) || !reader.Pair(&first) || !reader.Pair(&members)) return false;
  // A button without a first station has 0 in the database and all bits set on the wire.
  button->first = first == kLargestPair ? 0 : first + 1;
  return ReadNumbers(reader, members, &button->stations);
}

}  // namespace

Bytes EncodeConnectionReply(int type) { return FrameWriter(kConnectionType).Byte(type).Finish(); }

Bytes EncodeServiceRequest(int mask) {
  FrameWriter writer(kServiceRequestType);
  for (int place = 0; place < kRequestBytes; ++place) writer.Byte(place == kMaskPlace ? mask : 0);
  return writer.Finish();
}

Bytes EncodeTake(int command, int output, int input) {
  return FrameWriter(kTakeType).Pair(command).Pair(output - 1).Pair(input - 1).Finish();
}

std::optional<CrosspointMap> ParseCrosspointMap(std::span<const std::uint8_t> frame) {
  FrameReader reader(frame);
  int unused = 0;
  int count = 0;
  int first = 0;
  if (!reader.Byte(&unused) || !ReadHeader(reader, &count, &first)) return std::nullopt;
  CrosspointMap map;
  for (int i = 0; i < count; ++i) {
    MapRow row;
    row.output = first + i;
    if (!ReadRow(reader, &row)) return std::nullopt;
    map.rows.push_back(std::move(row));
  }
  if (!reader.AtEnd()) return std::nullopt;
  return map;
}

std::optional<LabelTable> ParseLabelTable(std::span<const std::uint8_t> frame) {
  FrameReader reader(frame);
  int kind = 0;
  int width = 0;
  int count = 0;
  int first = 0;
  if (!reader.Byte(&kind) || !reader.Byte(&width) || !ReadHeader(reader, &count, &first)) {
    return std::nullopt;
  }
  LabelTable table;
  table.kind = kind == static_cast<int>(LabelKind::Station) ? LabelKind::Station : LabelKind::Input;
  for (int i = 0; i < count; ++i) {
    Label label;
    if (!reader.Text(static_cast<std::size_t>(width), &label.text) ||
        !reader.Pair(&label.station)) {
      return std::nullopt;
    }
    ++label.station;
    label.text.erase(label.text.find_last_not_of(' ') + 1);
    table.labels.push_back(std::move(label));
  }
  if (!reader.AtEnd()) return std::nullopt;
  return table;
}

std::optional<std::vector<int>> ParseStationList(std::span<const std::uint8_t> frame) {
  FrameReader reader(frame);
  int unused = 0;
  int count = 0;
  int first = 0;
  if (!reader.Byte(&unused) || !ReadHeader(reader, &count, &first)) return std::nullopt;
  std::vector<int> stations;
  for (int i = 0; i < count; ++i) {
    int station = 0;
    if (!reader.Pair(&station)) return std::nullopt;
    stations.push_back(station);
  }
  if (!reader.AtEnd()) return std::nullopt;
  return stations;
}

std::optional<ButtonProgramming> ParseButtonProgramming(std::span<const std::uint8_t> frame) {
  FrameReader reader(frame);
  int unused = 0;
  int count = 0;
  int first = 0;
  int buttons = 0;
  if (!reader.Byte(&unused) || !ReadHeader(reader, &count, &first) || !reader.Pair(&buttons)) {
    return std::nullopt;
  }
  ButtonProgramming programming;
  for (int i = 0; i < count; ++i) {
    std::vector<Button> station;
    for (int n = 0; n < buttons; ++n) {
      Button button;
      if (!ReadButton(reader, &button)) return std::nullopt;
      station.push_back(std::move(button));
    }
    programming.stations.push_back(std::move(station));
  }
  if (!reader.AtEnd()) return std::nullopt;
  return programming;
}

}  // namespace teskpanel
