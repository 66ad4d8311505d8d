// SPDX-License-Identifier: MIT
//
// All messages of the line, in one table.  docs/wire-format.md has their bytes.

#ifndef SWITCHER_WIRE_MESSAGE_TABLE_H_
#define SWITCHER_WIRE_MESSAGE_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace switcher {

// A switch over these without a default makes the compiler name the message that is missing.
enum MessageCode : std::uint8_t {
  kTakeCode = 0xFD,
  kGainCode = 0xE3,
  kLabelOrderCode = 0xF7,
  kGainReportCode = 0xE2,
  kCrosspointRowCode = 0xF3,
  kAlphaLabelsCode = 0xF9,
  kButtonDataCode = 0xFB,
  kRelayRowCode = 0xF4,
  kInhibitRowCode = 0xF5,
  kTallyCode = 0xE4,
  kOptoDataCode = 0xE1,
};

struct MessageKind {
  MessageCode code;
  std::string_view name;        // one word, as the simulator knows it
  std::string_view title = {};  // of one that was received; "#" is its output or station
  bool toSwitcher = false;
  bool fromSwitcher = false;
  bool isTable = false;  // what the switcher keeps; else it acts at once
  int length = 0;        // from the code to the end byte, without items
  int itemLength = 0;    // and so many bytes for each item
  int valueBytes = 2;    // of one value
};

// Items are outputs, inputs, labels, optos, groups of eight members, or the values of the buttons.
inline constexpr MessageKind kMessages[] = {
    {.code = kTakeCode, .name = "take", .toSwitcher = true, .length = 9},
    {.code = kGainCode, .name = "gain", .toSwitcher = true, .length = 5, .valueBytes = 1},
    {.code = kLabelOrderCode,
     .name = "label-order",
     .toSwitcher = true,
     .isTable = true,
     .length = 5,
     .itemLength = 2},
    {.code = kGainReportCode,
     .name = "gains",
     .title = "DCA Gain Settings",
     .fromSwitcher = true,
     .length = 3,
     .itemLength = 1,
     .valueBytes = 1},
    {.code = kCrosspointRowCode,
     .name = "row",
     .title = "Output # Crosspoint Map",
     .fromSwitcher = true,
     .length = 7,
     .itemLength = 2},
    {.code = kAlphaLabelsCode,
     .name = "label-texts",
     .title = "Alpha Labels",
     .toSwitcher = true,
     .fromSwitcher = true,
     .isTable = true,
     .length = 4,
     .itemLength = 8,
     .valueBytes = 1},
    {.code = kButtonDataCode,
     .name = "buttons",
     .title = "Station # Button Data",
     .toSwitcher = true,
     .fromSwitcher = true,
     .isTable = true,
     .length = 5,
     .itemLength = 2},
    {.code = kRelayRowCode,
     .name = "relays",
     .title = "Output # Relay Assignments",
     .toSwitcher = true,
     .fromSwitcher = true,
     .isTable = true,
     .length = 5,
     .itemLength = 2},
    {.code = kInhibitRowCode,
     .name = "inhibits",
     .title = "Output # Inhibit Map",
     .toSwitcher = true,
     .fromSwitcher = true,
     .isTable = true,
     .length = 5,
     .itemLength = 2},
    {.code = kTallyCode,
     .name = "tally",
     .title = "QDV Responding Tally",
     .fromSwitcher = true,
     .length = 131},
    {.code = kOptoDataCode,
     .name = "optos",
     .title = "Opto Programming Data",
     .toSwitcher = true,
     .fromSwitcher = true,
     .isTable = true,
     .length = 3,
     .itemLength = 22},
};

// The message of this code; null when there is none.
constexpr const MessageKind* FindMessage(std::uint8_t code) {
  for (const MessageKind& kind : kMessages) {
    if (kind.code == code) return &kind;
  }
  return nullptr;
}

// Whether messages with this code come from the switcher.
constexpr bool IsReceivedCode(std::uint8_t code) {
  const MessageKind* const kind = FindMessage(code);
  return kind != nullptr && kind->fromSwitcher;
}

// The bytes of a message with so many items, from its code to its end byte.
constexpr std::size_t MessageLength(MessageCode code, int items = 0) {
  const MessageKind& kind = *FindMessage(code);
  return static_cast<std::size_t>(kind.length + kind.itemLength * items);
}

// A received message by its title and, if it has one, its number: "Output 5 Crosspoint Map".
std::string DescribeMessage(MessageCode code, int number);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGE_TABLE_H_
