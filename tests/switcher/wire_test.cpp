// SPDX-License-Identifier: MIT

#include "switcher/wire/values.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Hex;

TEST(WireWriter, PairIsLowSevenBitsThenBitSeven) {
  WireWriter writer(0xF5);
  writer.PutPair(0);
  writer.PutPair(127);
  writer.PutPair(128);
  writer.PutPair(255);
  // 0 + 127 + 128 + 255 = 510, and 510 mod 128 = 126.
  EXPECT_EQ(Hex(writer.Finish()), "F5 00 00 7F 00 00 01 7F 01 7E FF");
}

TEST(WireWriter, PairsFollowWhatIsThereAndAddToItsChecksum) {
  WireWriter writer(0xF5);
  writer.PutPair(5);
  writer.PutPairs(FromHex("7F 80 FF"));
  writer.PutPairs({});
  writer.PutPair(1);
  // 5 + 127 + 128 + 255 + 1 = 516, and 516 mod 128 = 4.
  EXPECT_EQ(Hex(writer.Finish()), "F5 05 00 7F 00 00 01 7F 01 01 00 04 FF");
}

TEST(WireWriter, CodeIsNotInTheChecksum) {
  WireWriter writer(0xFE);
  EXPECT_EQ(Hex(writer.Finish()), "FE 00 FF");
}

TEST(WireReader, RebuildsPairsAndSumsTheirWholeValues) {
  const Bytes data = FromHex("7F 01 02 00");
  WireReader reader(data);
  int value = 0;
  ASSERT_TRUE(reader.GetPair(&value));
  EXPECT_EQ(value, 255);
  ASSERT_TRUE(reader.GetPair(&value));
  EXPECT_EQ(value, 2);
  EXPECT_EQ(reader.Checksum(), 1);  // 257 mod 128
}

TEST(WireReader, ASecondByteAboveOneGivesAValueAbove255) {
  const Bytes data = FromHex("05 02");
  WireReader reader(data);
  int value = 0;
  ASSERT_TRUE(reader.GetPair(&value));
  EXPECT_EQ(value, 261);
  EXPECT_EQ(reader.Checksum(), 5);
}

TEST(WireReader, HalfAPairIsNotRead) {
  const Bytes data = FromHex("05");
  WireReader reader(data);
  int value = -1;
  EXPECT_FALSE(reader.GetPair(&value));
  EXPECT_EQ(value, -1);
  EXPECT_TRUE(reader.GetByte(&value));
  EXPECT_EQ(value, 5);
  EXPECT_FALSE(reader.GetByte(&value));
  EXPECT_EQ(reader.Finish(), DecodeStatus::ChecksumFailed);
}

TEST(WireReader, TheEndIsTheChecksumAndTheEndByte) {
  const auto finish = [](const char* hex) {
    const Bytes data = FromHex(hex);
    WireReader reader(data);
    int value = 0;
    reader.GetByte(&value);
    return reader.Finish();
  };
  EXPECT_EQ(finish("05 05 FF"), DecodeStatus::Ok);
  EXPECT_EQ(finish("05 06 FF"), DecodeStatus::ChecksumFailed);
  EXPECT_EQ(finish("05 05 7F"), DecodeStatus::MissingEnd);
  EXPECT_EQ(finish("05 05"), DecodeStatus::MissingEnd);
}

}  // namespace
}  // namespace switcher
