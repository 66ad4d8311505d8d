// SPDX-License-Identifier: MIT

#include "switcher/wire/messages/button_data.h"

#include <utility>

#include "switcher/wire/message_table.h"
#include "switcher/wire/messages/flag_groups.h"
#include "switcher/wire/messages/row_number.h"

namespace switcher {

Bytes EncodeButtonData(const ButtonData& data) {
  WireWriter writer(kButtonDataCode);
  writer.PutPair(data.station - 1);
  for (const ButtonData::Button& button : data.buttons) {
    writer.PutPair(button.type);
    writer.PutPair(button.first);
  }
  for (const ButtonData::Button& button : data.buttons) PutFlagGroups(writer, button.targets);
  return writer.Finish();
}

DecodeStatus ParseButtonData(std::span<const std::uint8_t> message, int stationCount,
                             int buttonCount, int groupsPerButton, ButtonData* data) {
  data->station = RowNumber(message);
  const int values = buttonCount * (2 + groupsPerButton);
  if (message.size() != MessageLength(kButtonDataCode, values)) return DecodeStatus::WrongSize;
  if (data->station > stationCount) return DecodeStatus::WrongChannel;

  WireReader reader(message.subspan(1));
  int value = 0;
  reader.GetPair(&value);
  std::vector<ButtonData::Button> received(static_cast<std::size_t>(buttonCount));
  for (ButtonData::Button& button : received) {
    reader.GetPair(&value);
    button.type = value & 0xFF;
    reader.GetPair(&value);
    button.first = value & 0xFF;
  }
  for (ButtonData::Button& button : received) {
    button.targets.resize(static_cast<std::size_t>(groupsPerButton) * 8);
    GetFlagGroups(reader, button.targets);
  }
  if (const DecodeStatus status = reader.Finish(); status != DecodeStatus::Ok) return status;
  data->buttons = std::move(received);
  return DecodeStatus::Ok;
}

}  // namespace switcher
