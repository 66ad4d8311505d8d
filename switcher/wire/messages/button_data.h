// SPDX-License-Identifier: MIT
//
// 0xFB, both directions: the button programming of one station.  2 * buttons * (2 + groups) + 5
// bytes: code, station pair (0-based), then for each button the pairs type and first station,
// then for each button one pair for every eight target stations (bit 0 is the first of them),
// checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_BUTTON_DATA_H_
#define SWITCHER_WIRE_MESSAGES_BUTTON_DATA_H_

#include <cstdint>
#include <span>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

struct ButtonData {
  struct Button {
    int type = 0;                       // 0..255
    int first = 0;                      // 0..255
    std::vector<std::uint8_t> targets;  // element 0 is station 1; 1 = the button acts on it

    bool operator==(const Button&) const = default;
  };

  int station = 0;              // from 1; 0 when the message was too short to name it
  std::vector<Button> buttons;  // element 0 is button 1

  bool operator==(const ButtonData&) const = default;
};

// The message.  Each button brings as many groups as its targets need; a last group that is not
// full has its missing members off.
Bytes EncodeButtonData(const ButtonData& data);

// Reads the button data of a system of `stationCount` stations with `buttonCount` buttons each,
// sent with `groupsPerButton` groups of eight targets.  The checks come in this order: length,
// station number, checksum, end byte.  data->station is read before the length is judged;
// data->buttons (buttonCount elements with groupsPerButton * 8 targets each) is filled only for
// Ok.  Of a value above 255 the low eight bits count.
DecodeStatus ParseButtonData(std::span<const std::uint8_t> message, int stationCount,
                             int buttonCount, int groupsPerButton, ButtonData* data);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_BUTTON_DATA_H_
