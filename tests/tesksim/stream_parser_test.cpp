// SPDX-License-Identifier: MIT

#include "tools/tesksim/stream_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace tesksim {
namespace {

using std::chrono::milliseconds;
using test::FromHex;
using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Describe(const std::vector<Received>& found) {
  std::vector<std::string> texts;
  for (const Received& piece : found) {
    static constexpr const char* kNames[] = {"poll ", "message ", "broken ", "noise "};
    texts.push_back(kNames[static_cast<int>(piece.kind)] + Hex(piece.bytes));
  }
  return texts;
}

class StreamParserTest : public testing::Test {
 protected:
  std::vector<std::string> Feed(std::string_view hex, milliseconds at = milliseconds(0)) {
    return Describe(parser_.Feed(FromHex(hex), Time{} + at));
  }

  StreamParser parser_{1};  // label texts of 12 bytes
};

TEST_F(StreamParserTest, PollsAreSingleBytes) {
  EXPECT_THAT(Feed("E5 E4 ED E7"), ElementsAre("poll E5", "poll E4", "poll ED", "poll E7"));
}

TEST_F(StreamParserTest, EveryKindOfMessageEndsWithItsEndByte) {
  for (const char* code : {"FD", "E3", "F5", "F4", "F7", "FB", "E1"}) {
    SCOPED_TRACE(code);
    EXPECT_THAT(Feed(std::string(code) + " 01 7F 00 FF ED"),
                ElementsAre("message " + std::string(code) + " 01 7F 00 FF", "poll ED"));
  }
}

TEST_F(StreamParserTest, AMessageInPortions) {
  EXPECT_THAT(Feed("FD 02 00"), IsEmpty());
  EXPECT_THAT(Feed("00 00 00 00"), IsEmpty());
  EXPECT_THAT(Feed("02 FF E3 05"), ElementsAre("message FD 02 00 00 00 00 00 02 FF"));
  EXPECT_THAT(Feed("64 69 FF"), ElementsAre("message E3 05 64 69 FF"));
}

TEST_F(StreamParserTest, WhatBelongsToNothingIsNoise) {
  EXPECT_THAT(Feed("00 7F 80 FF E0 E2 F3 ED 01"),
              ElementsAre("noise 00 7F 80 FF E0 E2 F3", "poll ED", "noise 01"));
}

TEST_F(StreamParserTest, APollByteInsideAMessageBreaksItAndIsAPoll) {
  EXPECT_THAT(Feed("FD 02 00 ED 00 00 00 00 02 FF"),
              ElementsAre("broken FD 02 00", "poll ED", "noise 00 00 00 00 02 FF"));
}

TEST_F(StreamParserTest, ACutMessageDoesNotSwallowTheNextOne) {
  EXPECT_THAT(Feed("FD 02 00 E3 05 64 69 FF"),
              ElementsAre("broken FD 02 00", "message E3 05 64 69 FF"));
}

TEST_F(StreamParserTest, AnyOtherHighByteBreaksAMessage) {
  EXPECT_THAT(Feed("FD 02 90 05"), ElementsAre("broken FD 02", "noise 90 05"));
}

TEST_F(StreamParserTest, LabelTextsHaveEightBits) {
  EXPECT_THAT(Feed("F9 14 ED E4 E5 FD 80 F4 EB FE 24 FF"),
              ElementsAre("message F9 14 ED E4 E5 FD 80 F4 EB FE 24 FF"));
}

TEST_F(StreamParserTest, AnEndByteMayBeACharacterOfLabelTexts) {
  // 0x14 + 8 * 0xFF: 0x0C in seven bits.
  EXPECT_THAT(Feed("F9 14 FF FF FF FF"), IsEmpty());
  EXPECT_THAT(Feed("FF FF FF FF 0C FF ED"),
              ElementsAre("message F9 14 FF FF FF FF FF FF FF FF 0C FF", "poll ED"));
}

TEST_F(StreamParserTest, LabelTextsThatAreTooShortEndAtTheirEndByte) {
  // The keep-alive, the take and the poll behind them are looked at again.
  EXPECT_THAT(Feed("F9 14 20 34 FF ED FD 00 FF E5 00"), IsEmpty());
  EXPECT_THAT(Feed("01"), ElementsAre("message F9 14 20 34 FF", "poll ED", "message FD 00 FF",
                                      "poll E5", "noise 00 01"));
}

TEST_F(StreamParserTest, LabelTextsThatAreTooShortEndWhenNothingComes) {
  EXPECT_THAT(Feed("F9 14 20 34 FF ED F9 20", milliseconds(1000)), IsEmpty());
  EXPECT_EQ(parser_.Deadline(), Time{} + milliseconds(1500));
  EXPECT_THAT(Describe(parser_.GiveUp()),
              ElementsAre("message F9 14 20 34 FF", "poll ED", "broken F9 20"));
  EXPECT_EQ(parser_.Deadline(), std::nullopt);
}

TEST_F(StreamParserTest, LabelTextsThatAreTooLongEndAtTheirEndByte) {
  EXPECT_THAT(Feed("F9 14 20 20 20 20 20 20 20 20 20 20 20 34 FF ED"),
              ElementsAre("message F9 14 20 20 20 20 20 20 20 20 20 20 20 34 FF", "poll ED"));
}

TEST_F(StreamParserTest, LabelTextsOfTheRightLengthWithAWrongChecksumAreOneMessage) {
  EXPECT_THAT(Feed("F9 14 20 20 20 20 20 20 20 20 15 FF"),
              ElementsAre("message F9 14 20 20 20 20 20 20 20 20 15 FF"));
}

TEST_F(StreamParserTest, AMessageThatStallsIsGivenUpWhenTheNextByteComes) {
  EXPECT_THAT(Feed("F9 14 20 20", milliseconds(1000)), IsEmpty());
  EXPECT_THAT(Feed("20", milliseconds(1499)), IsEmpty());
  EXPECT_THAT(Feed("ED", milliseconds(1999)), ElementsAre("broken F9 14 20 20 20", "poll ED"));
}

// A machine that gave nobody a processor for a while: the rest was on its way.
TEST_F(StreamParserTest, AGapBeginsAnewForWhoWasHeldUp) {
  EXPECT_THAT(Feed("FD 01", milliseconds(1000)), IsEmpty());
  parser_.HeldUp(Time{} + milliseconds(1700));
  EXPECT_EQ(parser_.Deadline(), Time{} + milliseconds(2200));
  EXPECT_THAT(Feed("7F 00 FF", milliseconds(1800)), ElementsAre("message FD 01 7F 00 FF"));
}

TEST_F(StreamParserTest, SaysUntilWhenItWaits) {
  EXPECT_EQ(parser_.Deadline(), std::nullopt);
  EXPECT_THAT(parser_.GiveUp(), IsEmpty());
  Feed("FD 02", milliseconds(1000));
  EXPECT_EQ(parser_.Deadline(), Time{} + milliseconds(1500));
  EXPECT_THAT(Describe(parser_.GiveUp()), ElementsAre("broken FD 02"));
  EXPECT_EQ(parser_.Deadline(), std::nullopt);
}

TEST_F(StreamParserTest, AMessageWithoutAnEndIsBounded) {
  Bytes endless(StreamParser::kLongestMessage + 3, 0x11);
  endless.front() = 0xFB;
  const std::vector<Received> found = parser_.Feed(endless, Time{});
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].kind, Received::Kind::Broken);
  EXPECT_EQ(found[0].bytes.size(), 8192u);
  EXPECT_EQ(Hex(found[1].bytes), "11 11 11");
  EXPECT_EQ(found[1].kind, Received::Kind::Noise);
}

TEST(MessageName, OnlyForCodesThatComeFromTheConsole) {
  EXPECT_EQ(MessageName(0xFD), "take");
  EXPECT_EQ(MessageName(0xF3), "");
  EXPECT_EQ(MessageName(0xE4), "");
  EXPECT_EQ(MessageCodeOf("relays"), 0xF4);
  EXPECT_EQ(MessageCodeOf("row"), std::nullopt);
  EXPECT_EQ(MessageCodeOf(""), std::nullopt);
  EXPECT_TRUE(IsPoll(0xE4));
  EXPECT_FALSE(IsPoll(0xEB));
}

}  // namespace
}  // namespace tesksim
