// SPDX-License-Identifier: MIT

#include "gateway/panel_frame.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::FromHex;
using test::Hex;

TEST(TcpChecksum, LeavesOutTypeChecksumAndTerminator) {
  EXPECT_EQ(TcpChecksum(FromHex("FE 20 00 05 00 07 00 2C FF")), 0x2C);
  EXPECT_EQ(TcpChecksum(FromHex("81 35 35 FF")), 0x35);
  EXPECT_EQ(TcpChecksum(FromHex("81 00 00 FF")), 0);
}

TEST(TcpChecksum, CountsBothBytesOfAPairAndKeepsSevenBits) {
  EXPECT_EQ(TcpChecksum(FromHex("FE 25 02 7F 01 7F 01 00 FF")), 0x27);
  EXPECT_EQ(TcpChecksum(FromHex("F6 7F 7F 7F 00 FF")), 0x7D);
}

TEST(TcpChecksum, OfLessThanAFrameIsNothing) {
  for (const char* const frame : {"", "FF", "81 FF", "81 35 FF"}) {
    EXPECT_EQ(TcpChecksum(FromHex(frame)), 0) << frame;
  }
}

TEST(ChecksumMatches, TellsRightFromWrong) {
  EXPECT_TRUE(ChecksumMatches(FromHex("FE 20 00 05 00 07 00 2C FF")));
  EXPECT_FALSE(ChecksumMatches(FromHex("FE 20 00 05 00 07 00 2D FF")));
  EXPECT_FALSE(ChecksumMatches(FromHex("FE 20 00 05 00 07 00 AC FF")));
  EXPECT_FALSE(ChecksumMatches(FromHex("")));
  EXPECT_FALSE(ChecksumMatches(FromHex("FF")));
  EXPECT_FALSE(ChecksumMatches(FromHex("81 FF")));
}

TEST(PairValue, IsLowSevenBitsFirst) {
  EXPECT_EQ(PairValue(0x00, 0x00), 0);
  EXPECT_EQ(PairValue(0x7F, 0x00), 127);
  EXPECT_EQ(PairValue(0x00, 0x01), 128);
  EXPECT_EQ(PairValue(0x25, 0x02), 293);
  EXPECT_EQ(PairValue(0x7F, 0x7F), 16383);
}

TEST(FrameBuilder, PutsPairsAndBytesBetweenTypeAndChecksum) {
  FrameBuilder builder(0xFC);
  builder.PutByte(0x14);
  builder.PutPair(5);
  builder.PutPair(255);
  builder.PutPair(256);
  builder.PutPair(16383);
  EXPECT_EQ(Hex(builder.Finish()), "FC 14 05 00 7F 01 00 02 7F 7F 19 FF");
}

TEST(FrameBuilder, NeverPutsAByteThatIsNoData) {
  FrameBuilder builder(0xFC);
  builder.PutByte(0xFF);
  builder.PutPair(-1);
  builder.PutPair(16384);
  EXPECT_EQ(Hex(builder.Finish()), "FC 7F 7F 7F 00 00 7D FF");
}

TEST(FrameBuilder, AFrameWithoutData) { EXPECT_EQ(Hex(FrameBuilder(0x81).Finish()), "81 00 FF"); }

}  // namespace
}  // namespace gateway
