// SPDX-License-Identifier: MIT
//
// What the frames say.  Outputs, inputs, stations and buttons count from 1 here and, but for the
// list of stations, from 0 on the wire.

#ifndef TESKPANEL_MESSAGES_H_
#define TESKPANEL_MESSAGES_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/teskpanel/frame.h"

namespace teskpanel {

// From the panel.
inline constexpr std::uint8_t kServiceRequestType = 0xF2;
inline constexpr std::uint8_t kLinkPoll = 0xF5;  // a single byte
inline constexpr std::uint8_t kTakeType = 0xFE;

// Both ways: the console asks who is there, and the panel replies.
inline constexpr std::uint8_t kConnectionType = 0x81;

// From the console.
inline constexpr std::uint8_t kLinkDownAnswer = 0xF1;  // a single byte
inline constexpr std::uint8_t kLinkUpAnswer = 0xF4;    // a single byte
inline constexpr std::uint8_t kCrosspointMapType = 0xF6;
inline constexpr std::uint8_t kStationListType = 0xFB;
inline constexpr std::uint8_t kLabelTableType = 0xFC;
inline constexpr std::uint8_t kButtonProgrammingType = 0xFD;

// What a service request may ask for; combined with |.
inline constexpr int kAskMap = 0x01;
inline constexpr int kAskInputLabels = 0x02;
inline constexpr int kAskStationLabels = 0x04;
inline constexpr int kAskProgramming = 0x40;

// The inputs that an output hears.
struct MapRow {
  int output = 1;
  int status = 0;
  std::vector<int> inputs;

  bool operator==(const MapRow&) const = default;
};

// All outputs, or the one that changed.
struct CrosspointMap {
  std::vector<MapRow> rows;
};

enum class LabelKind { Input = 10, Station = 20 };

struct Label {
  int station = 1;
  std::string text;  // without the spaces at its end
};

struct LabelTable {
  LabelKind kind = LabelKind::Station;
  std::vector<Label> labels;
};

// What a button does; other numbers may come.
enum ButtonType : int {
  kListenButton = 0,
  kPriorityListenButton = 1,
  kTalkButton = 2,
  kGroupButton = 3,
  kExternalButton = 5,
  kInactiveButton = 255,
};

struct Button {
  int type = kInactiveButton;
  int first = 0;  // station; 0: none
  std::vector<int> stations;

  bool operator==(const Button&) const = default;
};

// The buttons of each station of the list that came before.
struct ButtonProgramming {
  std::vector<std::vector<Button>> stations;
};

// "I am a panel of this type."  REQUIRES: 0 <= type <= 127
Bytes EncodeConnectionReply(int type);

// Asks for tables: kAskMap and the like.  REQUIRES: 0 <= mask <= 127
Bytes EncodeServiceRequest(int mask);

// Asks for a crosspoint.  REQUIRES: 0 <= command <= kLargestPair, 1 <= output, input <=
// kLargestPair + 1
Bytes EncodeTake(int command, int output, int input);

// Each reads a frame of its type, with a right checksum.  Nothing when bytes are missing or left
// over.
std::optional<CrosspointMap> ParseCrosspointMap(std::span<const std::uint8_t> frame);
std::optional<LabelTable> ParseLabelTable(std::span<const std::uint8_t> frame);
std::optional<std::vector<int>> ParseStationList(std::span<const std::uint8_t> frame);
std::optional<ButtonProgramming> ParseButtonProgramming(std::span<const std::uint8_t> frame);

}  // namespace teskpanel

#endif  // TESKPANEL_MESSAGES_H_
