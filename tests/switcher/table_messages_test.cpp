// SPDX-License-Identifier: MIT
//
// The messages that carry tables, both ways.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "tests/support/hex.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Hex;
using test::Times;

// `count` members of which those in `set` (from 1) are on.
std::vector<std::uint8_t> Members(int count, std::initializer_list<int> set) {
  std::vector<std::uint8_t> members(static_cast<std::size_t>(count));
  for (const int member : set) members[static_cast<std::size_t>(member - 1)] = 1;
  return members;
}

// A refusal: the message and what comes of it.
struct Refused {
  const char* why;
  std::string bytes;
  DecodeStatus status;
};

// Selector 20; stations 2, 1 and 130.
constexpr char kOrder[] = "F7 14 00 01 00 00 00 01 01 16 FF";

TEST(LabelOrderMessage, Bytes) {
  const LabelOrder order{.selector = 20, .stations = {2, 1, 130}};
  EXPECT_EQ(Hex(EncodeLabelOrder(order)), kOrder);
  EXPECT_EQ(ParseLabelOrder(FromHex(kOrder), 3), order);
  EXPECT_EQ(Hex(EncodeLabelOrder({.selector = 10, .stations = {}})), "F7 0A 00 0A FF");
}

TEST(LabelOrderMessage, SizeBySystem) {
  for (const auto& [labels, size] : {std::pair(16, 37U), {128, 261U}, {256, 517U}}) {
    LabelOrder order{.selector = 10, .stations = {}};
    for (int station = labels; station >= 1; --station) order.stations.push_back(station);
    const Bytes message = EncodeLabelOrder(order);
    EXPECT_EQ(message.size(), size);
    EXPECT_EQ(ParseLabelOrder(message, labels), order);
  }
}

TEST(LabelOrderMessage, RefusesWhatIsBroken) {
  EXPECT_EQ(ParseLabelOrder(FromHex(kOrder), 2), std::nullopt);
  EXPECT_EQ(ParseLabelOrder(FromHex("F7 14 00 01 00 00 00 01 01 17 FF"), 3), std::nullopt);
  EXPECT_EQ(ParseLabelOrder(FromHex("F7 14 00 01 00 00 00 01 01 16 00"), 3), std::nullopt);
  EXPECT_EQ(ParseLabelOrder(FromHex("F7 14 00 01 00 00 00 01 01 FF"), 3), std::nullopt);
  EXPECT_EQ(ParseLabelOrder(FromHex("F9 14 00 01 00 00 00 01 01 16 FF"), 3), std::nullopt);
  EXPECT_EQ(ParseLabelOrder({}, 3), std::nullopt);
}

TEST(LabelOrderMessage, AStationAboveEightBitsIsFolded) {
  // 2 * 128 + 1: the low eight bits say station 2.
  const auto order = ParseLabelOrder(FromHex("F7 14 00 01 02 15 FF"), 1);
  ASSERT_TRUE(order.has_value());
  EXPECT_EQ(order->stations, std::vector<int>{2});
  EXPECT_EQ(Hex(EncodeLabelOrder({.selector = 20, .stations = {258}})), "F7 14 00 01 00 15 FF");
}

// A hidden "MIC" and "Sta. 002".
constexpr char kTexts[] = "F9 14 7B 49 43 20 20 20 20 20 53 74 61 2E 20 30 30 32 43 FF";

TEST(LabelTextsMessage, Bytes) {
  const LabelTexts texts{.selector = 20, .labels = {"{IC     ", "Sta. 002"}};
  EXPECT_EQ(Hex(EncodeLabelTexts(texts)), kTexts);
  LabelTexts back;
  ASSERT_EQ(ParseLabelTexts(FromHex(kTexts), 2, &back), DecodeStatus::Ok);
  EXPECT_EQ(back, texts);
}

TEST(LabelTextsMessage, WholeBytesTravelAndAreSummed) {
  // 10 + 255 + 7 * 32 = 489, and 489 mod 128 = 105.
  EXPECT_EQ(Hex(EncodeLabelTexts({.selector = 10, .labels = {"\xFF       "}})),
            "F9 0A FF 20 20 20 20 20 20 20 69 FF");
  LabelTexts back;
  ASSERT_EQ(ParseLabelTexts(FromHex("F9 0A E9 20 20 20 20 20 20 20 53 FF"), 1, &back),
            DecodeStatus::Ok);
  EXPECT_EQ(back.labels, std::vector<std::string>{"\xE9       "});
}

TEST(LabelTextsMessage, SelectorHasSevenBits) {
  EXPECT_EQ(Hex(EncodeLabelTexts({.selector = 0x94, .labels = {}})), "F9 14 14 FF");
  LabelTexts back;
  ASSERT_EQ(ParseLabelTexts(FromHex("F9 7F 7F FF"), 0, &back), DecodeStatus::Ok);
  EXPECT_EQ(back.selector, 127);
  EXPECT_EQ(ParseLabelTexts(FromHex("F9 94 14 FF"), 0, &back), DecodeStatus::WrongChannel);
  EXPECT_EQ(back.selector, 127);
}

TEST(LabelTextsMessage, SizeBySystem) {
  for (const auto& [labels, size] : {std::pair(16, 132U), {128, 1028U}, {256, 2052U}}) {
    LabelTexts texts{.selector = 20, .labels = {}};
    for (int label = 1; label <= labels; ++label) {
      texts.labels.push_back("Out. " + std::to_string(1000 + label).substr(1));
    }
    const Bytes message = EncodeLabelTexts(texts);
    EXPECT_EQ(message.size(), size);
    LabelTexts back;
    EXPECT_EQ(ParseLabelTexts(message, labels, &back), DecodeStatus::Ok);
    EXPECT_EQ(back, texts);
  }
}

TEST(LabelTextsMessage, RefusalsGiveNothing) {
  const std::string inside = "F9 14 7B 49 43 20 20 20 20 20 53 74 61 2E 20 30 30 32 ";
  for (const auto& [why, bytes, status] : {
           Refused{"checksum", inside + "44 FF", DecodeStatus::ChecksumFailed},
           Refused{"end", inside + "43 00", DecodeStatus::MissingEnd},
           Refused{"checksum before end", inside + "44 00", DecodeStatus::ChecksumFailed},
           Refused{"short", inside + "FF", DecodeStatus::WrongSize},
           Refused{"long", inside + "00 43 FF", DecodeStatus::WrongSize},
           Refused{"no values", "F9 FF", DecodeStatus::WrongSize},
           Refused{"size before header", "F9 94 14 FF", DecodeStatus::WrongSize},
           Refused{"header before checksum", "F9 94" + inside.substr(5) + "44 FF",
                   DecodeStatus::WrongChannel},
       }) {
    LabelTexts texts{.selector = 77, .labels = {"kept"}};
    EXPECT_EQ(ParseLabelTexts(FromHex(bytes), 2, &texts), status) << why;
    EXPECT_EQ(texts, (LabelTexts{.selector = 77, .labels = {"kept"}})) << why;
  }
}

// Output 2, relays 1, 8 and 64 of 64.
const std::string kRelays = "F4 01 00 01 01 " + Times(6, "00 00") + "00 01 ";

TEST(RelayRowMessage, Bytes) {
  std::string flags(64, '0');
  flags[0] = flags[7] = flags[63] = '1';
  // 1 + 129 + 128 = 258.
  EXPECT_EQ(Hex(EncodeRelayRow(2, flags, 64)), kRelays + "02 FF");
  FlagRow row;
  ASSERT_EQ(ParseRelayRow(FromHex(kRelays + "02 FF"), 16, 64, &row), DecodeStatus::Ok);
  EXPECT_EQ(row, (FlagRow{.output = 2, .members = Members(64, {1, 8, 64})}));
}

TEST(RelayRowMessage, SizeGoesByTheRelaysNotTheChannels) {
  EXPECT_EQ(EncodeRelayRow(1, std::string(64, '0'), 64).size(), 21U);
  EXPECT_EQ(Hex(EncodeRelayRow(200, "1", 8)), "F4 47 01 01 00 48 FF");
  FlagRow row;
  EXPECT_EQ(ParseRelayRow(FromHex("F4 47 01 01 00 48 FF"), 256, 8, &row), DecodeStatus::Ok);
  EXPECT_EQ(row.output, 200);
}

TEST(RelayRowMessage, RefusalsGiveNothingButTheNumber) {
  for (const auto& [why, bytes, status] : {
           Refused{"checksum", kRelays + "03 FF", DecodeStatus::ChecksumFailed},
           Refused{"end", kRelays + "02 00", DecodeStatus::MissingEnd},
           Refused{"checksum before end", kRelays + "03 00", DecodeStatus::ChecksumFailed},
           Refused{"short", kRelays + "FF", DecodeStatus::WrongSize},
           Refused{"long", kRelays + "00 02 FF", DecodeStatus::WrongSize},
       }) {
    FlagRow row;
    EXPECT_EQ(ParseRelayRow(FromHex(bytes), 16, 64, &row), status) << why;
    EXPECT_EQ(row, (FlagRow{.output = 2, .members = {}})) << why;
  }
  FlagRow row;
  EXPECT_EQ(ParseRelayRow(FromHex("F4 10 00 01 00 11 FF"), 16, 8, &row),
            DecodeStatus::WrongChannel);
  EXPECT_EQ(row.output, 17);
  EXPECT_EQ(ParseRelayRow(FromHex("F4 FF"), 16, 8, &row), DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 0);
}

TEST(InhibitRowMessage, SizeBySystem) {
  for (const auto& [channels, size] : {std::pair(16, 9U), {64, 21U}, {128, 37U}, {256, 69U}}) {
    std::string flags(static_cast<std::size_t>(channels), '0');
    flags.back() = '1';
    const Bytes message = EncodeInhibitRow(channels, flags, channels);
    EXPECT_EQ(message.size(), size);
    FlagRow row;
    EXPECT_EQ(ParseInhibitRow(message, channels, &row), DecodeStatus::Ok);
    EXPECT_EQ(row, (FlagRow{.output = channels, .members = Members(channels, {channels})}));
  }
}

TEST(InhibitRowMessage, AGroupAboveEightBitsKeepsItsLowEightAndIsSummedWhole) {
  // 3 * 128 + 2 = 386 has the low eight bits 0x82: sources 2 and 8.
  FlagRow row;
  ASSERT_EQ(ParseInhibitRow(FromHex("F5 00 00 02 03 02 FF"), 8, &row), DecodeStatus::Ok);
  EXPECT_EQ(row.members, Members(8, {2, 8}));
  // An output above eight bits is outside every system.
  EXPECT_EQ(ParseInhibitRow(FromHex("F5 00 02 00 00 00 FF"), 8, &row), DecodeStatus::WrongChannel);
  EXPECT_EQ(row.output, 257);
}

// Station 3 of a system of sixteen with two buttons.  Button 1: group, first 1, stations 1, 8
// and 16.  Button 2: priority listen, first 129, station 9.
constexpr char kButtons[] = "FB 02 00 7F 01 01 00 02 00 01 01 01 01 00 01 00 00 01 00 ";

ButtonData TwoButtons() {
  return {.station = 3,
          .buttons = {{.type = 255, .first = 1, .targets = Members(16, {1, 8, 16})},
                      {.type = 2, .first = 129, .targets = Members(16, {9})}}};
}

TEST(ButtonDataMessage, Bytes) {
  // 2 + 255 + 1 + 2 + 129 + 129 + 128 + 0 + 1 = 647.
  EXPECT_EQ(Hex(EncodeButtonData(TwoButtons())), std::string(kButtons) + "07 FF");
  ButtonData back;
  ASSERT_EQ(ParseButtonData(FromHex(std::string(kButtons) + "07 FF"), 16, 2, 2, &back),
            DecodeStatus::Ok);
  EXPECT_EQ(back, TwoButtons());
}

TEST(ButtonDataMessage, GroupsGoByTheTargets) {
  ButtonData data{.station = 1, .buttons = {{.type = 0, .first = 2, .targets = Members(9, {9})}}};
  EXPECT_EQ(Hex(EncodeButtonData(data)), "FB 00 00 00 00 02 00 00 00 01 00 03 FF");
  data.buttons[0].targets.clear();
  EXPECT_EQ(Hex(EncodeButtonData(data)), "FB 00 00 00 00 02 00 02 FF");
}

TEST(ButtonDataMessage, SizeBySystem) {
  for (const auto& [stations, size] :
       {std::pair(16, 261U), {64, 645U}, {128, 1157U}, {256, 2181U}}) {
    ButtonData data{.station = stations, .buttons = {}};
    for (int button = 1; button <= 32; ++button) {
      data.buttons.push_back({.type = 254,
                              .first = button & 0xFF,
                              .targets = Members(stations, {1, stations - button % 8})});
    }
    const Bytes message = EncodeButtonData(data);
    EXPECT_EQ(message.size(), size);
    ButtonData back;
    EXPECT_EQ(ParseButtonData(message, stations, 32, stations / 8, &back), DecodeStatus::Ok);
    EXPECT_EQ(back, data);
  }
}

TEST(ButtonDataMessage, RefusalsGiveNothingButTheNumber) {
  const std::string inside = kButtons;
  for (const auto& [why, bytes, status] : {
           Refused{"checksum", inside + "08 FF", DecodeStatus::ChecksumFailed},
           Refused{"end", inside + "07 00", DecodeStatus::MissingEnd},
           Refused{"checksum before end", inside + "08 00", DecodeStatus::ChecksumFailed},
           Refused{"short", inside + "FF", DecodeStatus::WrongSize},
           Refused{"long", inside + "00 07 FF", DecodeStatus::WrongSize},
       }) {
    ButtonData data;
    EXPECT_EQ(ParseButtonData(FromHex(bytes), 16, 2, 2, &data), status) << why;
    EXPECT_EQ(data, (ButtonData{.station = 3, .buttons = {}})) << why;
  }
  ButtonData data;
  EXPECT_EQ(ParseButtonData(FromHex(inside + "07 FF"), 2, 2, 2, &data), DecodeStatus::WrongChannel);
  EXPECT_EQ(data.station, 3);
  EXPECT_EQ(ParseButtonData(FromHex("FB 02 FF"), 16, 2, 2, &data), DecodeStatus::WrongSize);
  EXPECT_EQ(data.station, 0);
}

TEST(ButtonDataMessage, ValuesAboveEightBitsKeepTheirLowEightAndAreSummedWhole) {
  // Type 2 * 128 + 1 = 257, first 3 * 128 = 384: stored as 1 and 128, summed as 641.
  ButtonData data;
  ASSERT_EQ(ParseButtonData(FromHex("FB 00 00 01 02 00 03 00 00 01 FF"), 8, 1, 1, &data),
            DecodeStatus::Ok);
  EXPECT_EQ(data.buttons[0].type, 1);
  EXPECT_EQ(data.buttons[0].first, 128);
  EXPECT_EQ(ParseButtonData(FromHex("FB 00 00 01 7F 00 00 00 00 01 FF"), 8, 1, 1, &data),
            DecodeStatus::Ok);
  EXPECT_EQ(data.buttons[0].type, 129);
}

// Opto 1: inactive, channel 1, first 1, station 1.  Opto 2: talk, channel 130, first 2,
// station 64.
const std::string kOptos = "E1 7E 01 01 00 01 00 01 00 " + Times(7, "00 00") +
                           "00 00 02 01 02 00 " + Times(7, "00 00") + "00 01 ";

OptoData TwoOptos() {
  return {.optos = {{.type = 254, .channel = 1, .first = 1, .stations = Members(64, {1})},
                    {.type = 0, .channel = 130, .first = 2, .stations = Members(64, {64})}}};
}

TEST(OptoDataMessage, Bytes) {
  // 254 + 1 + 1 + 1 + 0 + 130 + 2 + 128 = 517.
  EXPECT_EQ(Hex(EncodeOptoData(TwoOptos())), kOptos + "05 FF");
  OptoData back;
  ASSERT_EQ(ParseOptoData(FromHex(kOptos + "05 FF"), 2, &back), DecodeStatus::Ok);
  EXPECT_EQ(back, TwoOptos());
}

TEST(OptoDataMessage, GroupsGoByTheStations) {
  const OptoData data{.optos = {{.type = 1, .channel = 2, .first = 3, .stations = {}},
                                {.type = 3, .channel = 0, .first = 0, .stations = {1, 0, 1}}}};
  EXPECT_EQ(Hex(EncodeOptoData(data)), "E1 01 00 02 00 03 00 03 00 00 00 00 00 05 00 0E FF");
}

TEST(OptoDataMessage, SixtyFourOptosAre1411Bytes) {
  OptoData data;
  for (int opto = 1; opto <= 64; ++opto) {
    data.optos.push_back(
        {.type = 254, .channel = opto, .first = opto, .stations = Members(64, {opto})});
  }
  const Bytes message = EncodeOptoData(data);
  EXPECT_EQ(message.size(), 1411U);
  OptoData back;
  EXPECT_EQ(ParseOptoData(message, 64, &back), DecodeStatus::Ok);
  EXPECT_EQ(back, data);
}

TEST(OptoDataMessage, RefusalsGiveNothing) {
  for (const auto& [why, bytes, status] : {
           Refused{"checksum", kOptos + "06 FF", DecodeStatus::ChecksumFailed},
           Refused{"end", kOptos + "05 00", DecodeStatus::MissingEnd},
           Refused{"checksum before end", kOptos + "06 00", DecodeStatus::ChecksumFailed},
           Refused{"short", kOptos + "FF", DecodeStatus::WrongSize},
           Refused{"long", kOptos + "00 05 FF", DecodeStatus::WrongSize},
           Refused{"no values", "E1 FF", DecodeStatus::WrongSize},
       }) {
    OptoData data;
    EXPECT_EQ(ParseOptoData(FromHex(bytes), 2, &data), status) << why;
    EXPECT_TRUE(data.optos.empty()) << why;
  }
}

TEST(OptoDataMessage, ValuesAboveEightBitsKeepTheirLowEight) {
  OptoData data;
  const std::string bytes = "E1 01 02 02 03 03 04 " + Times(8, "00 00") + "06 FF";
  ASSERT_EQ(ParseOptoData(FromHex(bytes), 1, &data), DecodeStatus::Ok);
  EXPECT_EQ(data.optos[0].type, 1);
  EXPECT_EQ(data.optos[0].channel, 130);
  EXPECT_EQ(data.optos[0].first, 3);
}

}  // namespace
}  // namespace switcher
