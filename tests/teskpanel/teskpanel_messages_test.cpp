// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/hex.h"
#include "tools/teskpanel/messages.h"
#include "tools/teskpanel/take_action.h"

namespace teskpanel {
namespace {

using test::FromHex;
using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Encode, ConnectionReply) {
  EXPECT_EQ(Hex(EncodeConnectionReply(10)), "81 0A 0A FF");
  EXPECT_EQ(Hex(EncodeConnectionReply(30)), "81 1E 1E FF");
  EXPECT_EQ(Hex(EncodeConnectionReply(127)), "81 7F 7F FF");
}

TEST(Encode, ServiceRequest) {
  EXPECT_EQ(Hex(EncodeServiceRequest(kAskMap)), "F2 00 01 00 00 00 00 00 00 01 FF");
  EXPECT_EQ(Hex(EncodeServiceRequest(kAskInputLabels | kAskStationLabels)),
            "F2 00 06 00 00 00 00 00 00 06 FF");
  EXPECT_EQ(Hex(EncodeServiceRequest(kAskProgramming)), "F2 00 40 00 00 00 00 00 00 40 FF");
}

TEST(Encode, Take) {
  EXPECT_EQ(Hex(EncodeTake(32, 6, 8)), "FE 20 00 05 00 07 00 2C FF");
  EXPECT_EQ(Hex(EncodeTake(36, 200, 130)), "FE 24 00 47 01 01 01 6E FF");
  EXPECT_EQ(Hex(EncodeTake(165, 6, 8)), "FE 25 01 05 00 07 00 32 FF");
  EXPECT_EQ(Hex(EncodeTake(293, 6, 8)), "FE 25 02 05 00 07 00 33 FF");
}

TEST(TakeActions, NamesAndCodes) {
  EXPECT_EQ(ParseTakeAction("listen"), (TakeAction{36, true}));
  EXPECT_EQ(ParseTakeAction("listen-off"), (TakeAction{32, false}));
  EXPECT_EQ(ParseTakeAction("priority"), (TakeAction{37, true}));
  EXPECT_EQ(ParseTakeAction("priority-off"), (TakeAction{33, false}));
  EXPECT_EQ(ParseTakeAction("call"), (TakeAction{165, true}));
  EXPECT_EQ(ParseTakeAction("call-off"), (TakeAction{161, false}));
  EXPECT_EQ(ParseTakeAction("call-priority"), (TakeAction{293, true}));
  EXPECT_EQ(ParseTakeAction("call-priority-off"), (TakeAction{289, false}));
  EXPECT_EQ(ParseTakeAction("165"), (TakeAction{165, true}));
  EXPECT_EQ(ParseTakeAction("34"), (TakeAction{34, false}));  // unknown: breaks
  for (const char* wrong : {"", "talk", "Listen", "-1", "16384", "36 "}) {
    EXPECT_FALSE(ParseTakeAction(wrong).has_value()) << wrong;
  }
}

TEST(Parse, CrosspointMap) {
  const auto map = ParseCrosspointMap(
      FromHex("F6 00 03 00 00 00  01 00 00 01 00  00 00 00  02 00 05 00 00 02 00  0E FF"));
  ASSERT_TRUE(map.has_value());
  EXPECT_THAT(map->rows, ElementsAre(MapRow{1, 0, {2}}, MapRow{2, 0, {}}, MapRow{3, 5, {1, 3}}));
}

TEST(Parse, OneRowOfTheMap) {
  const auto map = ParseCrosspointMap(FromHex("F6 00 01 00 47 01  01 00 00 01 01  4C FF"));
  ASSERT_TRUE(map.has_value());
  EXPECT_THAT(map->rows, ElementsAre(MapRow{200, 0, {130}}));
}

TEST(Parse, MapOfNoChannels) {
  const auto map = ParseCrosspointMap(FromHex("F6 00 00 00 00 00 00 FF"));
  ASSERT_TRUE(map.has_value());
  EXPECT_THAT(map->rows, IsEmpty());
}

TEST(Parse, StationLabels) {
  const auto table =
      ParseLabelTable(FromHex("FC 14 08 02 00 00 00 53 54 55 44 49 4F 20 31 00 00 "
                              "43 41 4D 20 32 20 20 20 01 00 4B FF"));
  ASSERT_TRUE(table.has_value());
  EXPECT_EQ(table->kind, LabelKind::Station);
  ASSERT_EQ(table->labels.size(), 2U);
  EXPECT_EQ(table->labels[0].station, 1);
  EXPECT_EQ(table->labels[0].text, "STUDIO 1");
  EXPECT_EQ(table->labels[1].station, 2);
  EXPECT_EQ(table->labels[1].text, "CAM 2");
}

TEST(Parse, InputLabels) {
  const auto table =
      ParseLabelTable(FromHex("FC 0A 08 01 00 00 00 22 5C 1B 20 20 20 20 20 47 01 14 FF"));
  ASSERT_TRUE(table.has_value());
  EXPECT_EQ(table->kind, LabelKind::Input);
  ASSERT_EQ(table->labels.size(), 1U);
  EXPECT_EQ(table->labels[0].station, 200);
  EXPECT_EQ(table->labels[0].text, "\"\\\x1B");
}

TEST(Parse, StationList) {
  const auto list = ParseStationList(FromHex("FB 00 02 00 00 00 01 00 02 00 05 FF"));
  ASSERT_TRUE(list.has_value());
  EXPECT_THAT(*list, ElementsAre(1, 2));
}

TEST(Parse, ButtonProgramming) {
  const auto programming =
      ParseButtonProgramming(FromHex("FD 00 02 00 00 00 02 00"
                                     " 02 00 04 00 02 00 01 00 03 00  7F 01 00 00 00 00"
                                     " 03 00 00 00 00 00  7F 01 7F 7F 00 00 11 FF"));
  ASSERT_TRUE(programming.has_value());
  ASSERT_EQ(programming->stations.size(), 2U);
  EXPECT_THAT(programming->stations[0],
              ElementsAre(Button{kTalkButton, 5, {2, 4}}, Button{kInactiveButton, 1, {}}));
  EXPECT_THAT(programming->stations[1],
              ElementsAre(Button{kGroupButton, 1, {}}, Button{kInactiveButton, 0, {}}));
}

// Each byte of the data taken away in turn, and one put behind them: the counts do not fit.
template <typename Parse>
void ExpectOnlyTheWholeParses(const char* frame, Parse parse) {
  const Bytes whole = FromHex(frame);
  EXPECT_TRUE(parse(whole).has_value());
  for (std::size_t kept = 1; kept + 2 < whole.size(); ++kept) {
    SCOPED_TRACE(kept);
    Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept));
    cut.insert(cut.end(), {0x00, 0xFF});
    EXPECT_FALSE(parse(cut).has_value());
  }
  Bytes longer = whole;
  longer.insert(longer.end() - 2, 0x00);
  EXPECT_FALSE(parse(longer).has_value());
}

TEST(Parse, ACutOrPaddedFrameIsRefused) {
  ExpectOnlyTheWholeParses("F6 00 03 00 00 00 01 00 00 01 00 00 00 00 02 00 05 00 00 02 00 0E FF",
                           &ParseCrosspointMap);
  ExpectOnlyTheWholeParses("FC 0A 08 01 00 00 00 22 5C 1B 20 20 20 20 20 47 01 14 FF",
                           &ParseLabelTable);
  ExpectOnlyTheWholeParses("FB 00 02 00 00 00 01 00 02 00 05 FF", &ParseStationList);
  ExpectOnlyTheWholeParses(
      "FD 00 02 00 00 00 02 00 02 00 04 00 02 00 01 00 03 00 7F 01 00 00 00 00 03 00 00 00 00 00 "
      "7F 01 7F 7F 00 00 11 FF",
      &ParseButtonProgramming);
}

}  // namespace
}  // namespace teskpanel
