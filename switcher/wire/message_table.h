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

// Which labels a message of labels is about; panels are sent it as the kind of a label table.
inline constexpr int kOutputLabels = 20;
inline constexpr int kInputLabels = 10;

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

enum class MessageUse {
  Command,  // to the switcher, which acts on it at once
  Report,   // from the switcher, of what it does
  Table,    // to the switcher, which keeps it
};

struct MessageKind {
  MessageCode code;
  MessageUse use;
  std::string_view name;  // one word, as the simulator knows it
  // "%1" is its output or station.  What has a title comes from the switcher: a report, and a table
  // that goes both ways.
  std::string_view title;
  int length;      // in bytes, from the code to the end byte, without items
  int itemLength;  // of each item
  int valueBytes;  // of one value

  constexpr bool ToSwitcher() const { return use != MessageUse::Report; }
  constexpr bool FromSwitcher() const { return !title.empty(); }
};

// Behind each: what its item is.  A group is one of eight sources or relays.
inline constexpr MessageKind kMessages[] = {
    // code, use, name, title, length, length of an item, bytes of a value
    {kTakeCode, MessageUse::Command, "take", "", 9, 0, 2},
    {kGainCode, MessageUse::Command, "gain", "", 5, 0, 1},
    {kGainReportCode, MessageUse::Report, "gains", "DCA Gain Settings", 3, 1, 1},  // channel
    {kCrosspointRowCode, MessageUse::Report, "row", "Output %1 Crosspoint Map", 7, 2, 2},  // group
    {kTallyCode, MessageUse::Report, "tally", "QDV Responding Tally", 131, 0, 2},
    {kLabelOrderCode, MessageUse::Table, "label-order", "", 5, 2, 2},                      // label
    {kAlphaLabelsCode, MessageUse::Table, "label-texts", "Alpha Labels", 4, 8, 1},         // label
    {kInhibitRowCode, MessageUse::Table, "inhibits", "Output %1 Inhibit Map", 5, 2, 2},    // group
    {kRelayRowCode, MessageUse::Table, "relays", "Output %1 Relay Assignments", 5, 2, 2},  // group
    {kOptoDataCode, MessageUse::Table, "optos", "Opto Programming Data", 3, 22, 2},        // opto
    {kButtonDataCode, MessageUse::Table, "buttons", "Station %1 Button Data", 5, 2, 2},    // value
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
  return kind != nullptr && kind->FromSwitcher();
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
