// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/take.h"
#include "switcher/wire/messages/tally.h"
#include "tests/support/hex.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Hex;

struct TakeCase {
  const char* name;
  Take take;
  const char* bytes;
};

constexpr TakeCase kTakes[] = {
    {"make 1,1", {1, 1, 0x02}, "FD 02 00 00 00 00 00 02 FF"},
    {"above 127", {200, 130, 0x86}, "FD 06 01 01 01 47 01 4E FF"},
    {"take 6 from 8", {6, 8, 0x03}, "FD 03 00 07 00 05 00 0F FF"},
    {"break sum", {6, 8, 0x00}, "FD 00 00 07 00 05 00 0C FF"},
    {"break call", {2, 1, 0x84}, "FD 04 01 00 00 01 00 05 FF"},
    {"make priority listen", {1, 2, 0x8A}, "FD 0A 01 01 00 00 00 0B FF"},
    {"break priority listen", {1, 2, 0x88}, "FD 08 01 01 00 00 00 09 FF"},
    {"last channel", {256, 256, 0x03}, "FD 03 00 7F 01 7F 01 01 FF"},
};

TEST(TakeMessage, Bytes) {
  for (const TakeCase& take : kTakes) {
    SCOPED_TRACE(take.name);
    EXPECT_EQ(Hex(EncodeTake(take.take)), take.bytes);
    EXPECT_EQ(ParseTake(FromHex(take.bytes)), take.take);
  }
}

TEST(TakeMessage, RefusesWhatIsBroken) {
  EXPECT_EQ(ParseTake(FromHex("FD 02 00 00 00 00 00 03 FF")), std::nullopt);  // checksum
  EXPECT_EQ(ParseTake(FromHex("FD 02 00 00 00 00 02 FF")), std::nullopt);     // one short
  EXPECT_EQ(ParseTake(FromHex("FD 02 00 00 00 00 00 00 02 FF")), std::nullopt);
  EXPECT_EQ(ParseTake(FromHex("FD 02 00 00 00 00 00 02 FE")), std::nullopt);
  EXPECT_EQ(ParseTake(FromHex("E3 02 00 00 00 00 00 02 FF")), std::nullopt);
  EXPECT_EQ(ParseTake({}), std::nullopt);
}

TEST(GainMessage, Bytes) {
  EXPECT_EQ(Hex(EncodeGain({.input = 5, .step = 100})), "E3 05 64 69 FF");
  EXPECT_EQ(Hex(EncodeGain({.input = 63, .step = 127})), "E3 3F 7F 3E FF");
  EXPECT_EQ(ParseGain(FromHex("E3 05 64 69 FF")), (Gain{.input = 5, .step = 100}));
}

TEST(GainMessage, FoldsAnInputAbove63) {
  EXPECT_EQ(Hex(EncodeGain({.input = 64, .step = 1})), "E3 00 01 01 FF");
}

TEST(GainMessage, RefusesWhatIsBroken) {
  EXPECT_EQ(ParseGain(FromHex("E3 05 64 68 FF")), std::nullopt);
  EXPECT_EQ(ParseGain(FromHex("E3 05 64 FF")), std::nullopt);
  EXPECT_EQ(ParseGain(FromHex("E3 05 64 69 00 FF")), std::nullopt);
}

// Sixteen channels; output 3, priority, sources 1, 8 and 16.
constexpr char kRowOf16[] = "F3 02 00 01 00 01 01 00 01 04 FF";

TEST(CrosspointRowMessage, AcceptedRow) {
  CrosspointRow row;
  ASSERT_EQ(ParseCrosspointRow(FromHex(kRowOf16), 16, &row), DecodeStatus::Ok);
  EXPECT_EQ(row.output, 3);
  EXPECT_EQ(row.status, 1);
  EXPECT_EQ(row.sources,
            (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
  EXPECT_EQ(Hex(EncodeCrosspointRow(row)), kRowOf16);
}

TEST(CrosspointRowMessage, OneByteShortOrLongIsTheWrongSizeButNamed) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 00 01 FF"), 16, &row),
            DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 3);
  EXPECT_TRUE(row.sources.empty());
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 00 01 04 00 FF"), 16, &row),
            DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 3);
}

TEST(CrosspointRowMessage, ATooShortMessageHasNoNumber) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 FF"), 16, &row), DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 0);
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 FF"), 16, &row), DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 0);
}

TEST(CrosspointRowMessage, OutputBeyondTheSystem) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 10 00 00 00 00 00 00 00 10 FF"), 16, &row),
            DecodeStatus::WrongChannel);
  EXPECT_EQ(row.output, 17);
  EXPECT_TRUE(row.sources.empty());
}

TEST(CrosspointRowMessage, WrongChecksumStillGivesTheRow) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 00 01 05 FF"), 16, &row),
            DecodeStatus::ChecksumFailed);
  EXPECT_EQ(row.status, 1);
  EXPECT_EQ(row.sources[0], 1);
}

TEST(CrosspointRowMessage, MissingEndIsJudgedAfterTheChecksum) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 00 01 04 00"), 16, &row),
            DecodeStatus::MissingEnd);
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 00 01 05 00"), 16, &row),
            DecodeStatus::ChecksumFailed);
}

TEST(CrosspointRowMessage, ChannelsThatAreNoMultipleOfEightCannotBeStored) {
  CrosspointRow row;
  EXPECT_EQ(ParseCrosspointRow(FromHex("F3 02 00 01 00 01 01 04 FF"), 12, &row),
            DecodeStatus::WrongSize);
}

TEST(CrosspointRowMessage, StatusAboveEightBitsKeepsItsLowEight) {
  CrosspointRow row;
  ASSERT_EQ(ParseCrosspointRow(FromHex("F3 00 00 01 02 00 00 00 00 01 FF"), 16, &row),
            DecodeStatus::Ok);
  EXPECT_EQ(row.status, 1);
}

TEST(CrosspointRowMessage, HighOutputsTakeBothBytes) {
  CrosspointRow row{.output = 200, .status = 0, .sources = std::vector<std::uint8_t>(256)};
  row.sources[255] = 1;
  const Bytes message = EncodeCrosspointRow(row);
  ASSERT_EQ(message.size(), 71U);
  EXPECT_EQ(Hex(std::span(message).first(5)), "F3 47 01 00 00");
  // 199 + 128 = 327, and 327 mod 128 = 71.
  EXPECT_EQ(Hex(std::span(message).last(4)), "00 01 47 FF");
  CrosspointRow back;
  EXPECT_EQ(ParseCrosspointRow(message, 256, &back), DecodeStatus::Ok);
  EXPECT_EQ(back, row);
}

TEST(GainReportMessage, OneByteForEachChannel) {
  std::vector<std::int16_t> steps;
  ASSERT_EQ(ParseGainReport(FromHex("E2 00 01 40 64 7F 05 06 07 36 FF"), 8, &steps),
            DecodeStatus::Ok);
  EXPECT_EQ(steps, (std::vector<std::int16_t>{0, 1, 64, 100, 127, 5, 6, 7}));
  EXPECT_EQ(Hex(EncodeGainReport(steps)), "E2 00 01 40 64 7F 05 06 07 36 FF");
}

TEST(GainReportMessage, RefusalsGiveNothing) {
  std::vector<std::int16_t> steps{9};
  EXPECT_EQ(ParseGainReport(FromHex("E2 00 01 40 64 7F 05 06 07 37 FF"), 8, &steps),
            DecodeStatus::ChecksumFailed);
  EXPECT_EQ(ParseGainReport(FromHex("E2 00 01 40 64 7F 05 06 36 FF"), 8, &steps),
            DecodeStatus::WrongSize);
  EXPECT_EQ(ParseGainReport(FromHex("E2 00 01 40 64 7F 05 06 07 00 36 FF"), 8, &steps),
            DecodeStatus::WrongSize);
  EXPECT_EQ(ParseGainReport(FromHex("E2 00 01 40 64 7F 05 06 07 36 00"), 8, &steps),
            DecodeStatus::MissingEnd);
  EXPECT_EQ(steps, std::vector<std::int16_t>{9});
}

TEST(TallyMessage, SixtyFourPairs) {
  std::string hex = "E4 01 00 7F 01";
  for (int point = 3; point <= 63; ++point) hex += " 00 00";
  hex += " 02 00 02 FF";  // 1 + 255 + 2 = 258
  TallyValues values{};
  ASSERT_EQ(ParseTally(FromHex(hex), &values), DecodeStatus::Ok);
  EXPECT_EQ(values[0], 1);
  EXPECT_EQ(values[1], 255);
  EXPECT_EQ(values[2], 0);
  EXPECT_EQ(values[63], 2);
  EXPECT_EQ(Hex(EncodeTally(values)), hex);
}

TEST(TallyMessage, MustHave131Bytes) {
  TallyValues values{};
  values.fill(7);
  const std::string whole = Hex(EncodeTally(values));
  ASSERT_EQ(whole.size(), 131U * 3 - 1);
  const std::string inside = whole.substr(0, whole.size() - 3);  // without the end byte
  TallyValues untouched{};
  EXPECT_EQ(ParseTally(FromHex(inside.substr(0, inside.size() - 3) + " FF"), &untouched),
            DecodeStatus::WrongSize);
  EXPECT_EQ(ParseTally(FromHex(inside + " 00 FF"), &untouched), DecodeStatus::WrongSize);
  EXPECT_EQ(untouched, TallyValues{});
}

TEST(InhibitRowMessage, SixteenChannelsAreNineBytes) {
  EXPECT_EQ(Hex(EncodeInhibitRow(2, "1000000100000001", 16)), "F5 01 00 01 01 00 01 02 FF");
}

TEST(InhibitRowMessage, AShortTextInhibitsNothingBeyondItsEnd) {
  EXPECT_EQ(Hex(EncodeInhibitRow(1, "111", 16)), "F5 00 00 07 00 00 00 07 FF");
}

TEST(InhibitRowMessage, AnythingButOneIsClear) {
  EXPECT_EQ(Hex(EncodeInhibitRow(1, "1x 2y0?1", 8)), "F5 00 00 01 01 01 FF");
}

TEST(InhibitRowMessage, ReadsBackWhatItSends) {
  FlagRow row;
  ASSERT_EQ(ParseInhibitRow(FromHex("F5 01 00 01 01 00 01 02 FF"), 16, &row), DecodeStatus::Ok);
  EXPECT_EQ(row.output, 2);
  EXPECT_EQ(row.members,
            (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1}));
}

TEST(InhibitRowMessage, RefusalsGiveNothingButTheNumber) {
  FlagRow row;
  EXPECT_EQ(ParseInhibitRow(FromHex("F5 01 00 01 01 00 01 03 FF"), 16, &row),
            DecodeStatus::ChecksumFailed);
  EXPECT_EQ(ParseInhibitRow(FromHex("F5 10 00 01 01 00 01 12 FF"), 16, &row),
            DecodeStatus::WrongChannel);
  EXPECT_EQ(row.output, 17);
  EXPECT_EQ(ParseInhibitRow(FromHex("F5 01 00 01 01 03 FF"), 16, &row), DecodeStatus::WrongSize);
  EXPECT_EQ(row.output, 2);
  EXPECT_TRUE(row.members.empty());
}

struct SizeCase {
  int channels;
  std::size_t row;       // 0xF3
  std::size_t inhibits;  // 0xF5
  std::size_t gains;     // 0xE2
};

constexpr SizeCase kSizes[] = {
    {8, 9, 7, 11}, {16, 11, 9, 19}, {64, 23, 21, 67}, {128, 39, 37, 131}, {256, 71, 69, 259}};

// A message with nothing but zeros between its code and its end byte.
Bytes Zeros(std::uint8_t code, std::size_t length) {
  Bytes message(length);
  message.front() = code;
  message.back() = 0xFF;
  return message;
}

TEST(MessageSizes, GoByTheChannelsOfTheSystem) {
  for (const SizeCase& size : kSizes) {
    SCOPED_TRACE(size.channels);
    CrosspointRow row;
    FlagRow inhibits;
    std::vector<std::int16_t> steps;
    for (const int off : {-1, 0, 1}) {
      const DecodeStatus expected = off == 0 ? DecodeStatus::Ok : DecodeStatus::WrongSize;
      const auto length = [off](std::size_t right) {
        return right + static_cast<std::size_t>(off);
      };
      EXPECT_EQ(ParseCrosspointRow(Zeros(0xF3, length(size.row)), size.channels, &row), expected);
      EXPECT_EQ(ParseInhibitRow(Zeros(0xF5, length(size.inhibits)), size.channels, &inhibits),
                expected);
      EXPECT_EQ(ParseGainReport(Zeros(0xE2, length(size.gains)), size.channels, &steps), expected);
    }
  }
}

TEST(StatusWord, IsTheWordOfTheHistory) {
  EXPECT_EQ(StatusWord(DecodeStatus::Ok), "OK");
  EXPECT_EQ(StatusWord(DecodeStatus::ChecksumFailed), "Failed Csum");
  EXPECT_EQ(StatusWord(DecodeStatus::WrongSize), "Size Error");
  EXPECT_EQ(StatusWord(DecodeStatus::WrongChannel), "Channel Error");
  EXPECT_EQ(StatusWord(DecodeStatus::MissingEnd), "Missing EOM");
  EXPECT_EQ(StatusWord(static_cast<DecodeStatus>(5)), "");
}

}  // namespace
}  // namespace switcher
