// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/hex.h"
#include "tools/teskpanel/frame.h"

namespace teskpanel {
namespace {

using test::FromHex;
using test::Hex;
using Result = FrameCutter::Result;

constexpr char kRow[] = "F6 00 01 00 05 00 01 00 00 07 00 0E FF";

// Cuts all that is in the cutter; the frames, one a string.
std::vector<std::string> CutAll(FrameCutter& cutter, Result last = Result::NeedMore) {
  std::vector<std::string> frames;
  Bytes frame;
  Result result = Result::Frame;
  while ((result = cutter.Next(&frame)) == Result::Frame) frames.push_back(Hex(frame));
  EXPECT_EQ(result, last) << cutter.Problem();
  return frames;
}

TEST(FrameCutter, AFrameAndTheKeepAlivesAroundIt) {
  FrameCutter cutter;
  cutter.Append(FromHex("F4 81 00 00 FF F1 F4"));
  cutter.Append(FromHex(kRow));
  EXPECT_EQ(CutAll(cutter), (std::vector<std::string>{"F4", "81 00 00 FF", "F1", "F4", kRow}));
}

TEST(FrameCutter, EveryPrefixWaits) {
  const Bytes whole = FromHex(kRow);
  for (std::size_t n = 0; n < whole.size(); ++n) {
    SCOPED_TRACE(n);
    FrameCutter cutter;
    cutter.Append(std::span(whole).first(n));
    EXPECT_TRUE(CutAll(cutter).empty());
    cutter.Append(std::span(whole).subspan(n));
    EXPECT_EQ(CutAll(cutter), std::vector<std::string>{kRow});
  }
}

TEST(FrameCutter, ByteByByte) {
  FrameCutter cutter;
  std::vector<std::string> frames;
  for (const std::uint8_t byte : FromHex("81 00 00 FF F4 F6 00 00 00 00 00 00 FF")) {
    cutter.Append({&byte, 1});
    for (std::string& frame : CutAll(cutter)) frames.push_back(std::move(frame));
  }
  EXPECT_EQ(frames, (std::vector<std::string>{"81 00 00 FF", "F4", "F6 00 00 00 00 00 00 FF"}));
}

TEST(FrameCutter, TheSumLeavesTheTypeOutAndKeepsSevenBits) {
  FrameCutter cutter;
  cutter.Append(FromHex("F6 7F 7F 02 00 FF"));
  EXPECT_EQ(CutAll(cutter).size(), 1U);
}

struct BrokenCase {
  const char* bytes;
  const char* problem;
};

TEST(FrameCutter, WhatIsNoFrameBreaksTheStream) {
  const BrokenCase cases[] = {
      {"53 53 48", "0x53 stands where a frame should begin"},
      {"FF", "0xFF stands where a frame should begin"},
      {"F6 00 01 F6", "0xF6 stands within a frame of type 0xF6"},
      {"F6 00 01 F4 00", "0xF4 stands within a frame of type 0xF6"},
      {"FC 00 80 00 FF", "0x80 stands within a frame of type 0xFC"},
      {"F6 FF", "a frame of type 0xF6 is too short"},
      {"F6 00 01 00 05 00 01 00 00 07 00 0F FF", "a frame of type 0xF6 has a wrong checksum"},
      {"81 01 00 FF", "a frame of type 0x81 has a wrong checksum"},
  };
  for (const BrokenCase& broken : cases) {
    SCOPED_TRACE(broken.bytes);
    FrameCutter cutter;
    cutter.Append(FromHex("F4"));
    cutter.Append(FromHex(broken.bytes));
    EXPECT_EQ(CutAll(cutter, Result::Broken), std::vector<std::string>{"F4"});
    EXPECT_EQ(cutter.Problem(), broken.problem);
    // It stays broken, whatever comes.
    cutter.Append(FromHex("F4"));
    EXPECT_TRUE(CutAll(cutter, Result::Broken).empty());
    EXPECT_EQ(cutter.Problem(), broken.problem);
  }
}

TEST(FrameCutter, AFrameWithoutAnEndIsGivenUp) {
  FrameCutter cutter;
  cutter.Append(FromHex("F6"));
  const Bytes block(std::size_t{1} << 20, 0);
  for (int i = 0; i < 7; ++i) {
    cutter.Append(block);
    EXPECT_TRUE(CutAll(cutter).empty());
  }
  cutter.Append(block);
  EXPECT_TRUE(CutAll(cutter, Result::Broken).empty());
  EXPECT_EQ(cutter.Problem(), "a frame of type 0xF6 does not end");
}

TEST(FrameCutter, ALargeFrameComesWhole) {
  Bytes large(std::size_t{5} << 20, 1);  // its data, 5242877 ones, sum up to 125
  large.front() = 0xFD;
  large[large.size() - 2] = 125;
  large.back() = 0xFF;
  FrameCutter cutter;
  cutter.Append(large);
  Bytes frame;
  ASSERT_EQ(cutter.Next(&frame), Result::Frame) << cutter.Problem();
  EXPECT_TRUE(frame == large);
}

TEST(FrameWriter, LiteralBytes) {
  EXPECT_EQ(Hex(FrameWriter(0x81).Finish()), "81 00 FF");
  EXPECT_EQ(Hex(FrameWriter(0x81).Byte(127).Byte(2).Finish()), "81 7F 02 01 FF");
  EXPECT_EQ(Hex(FrameWriter(0xFE).Pair(0).Pair(127).Pair(128).Pair(16383).Finish()),
            "FE 00 00 7F 00 00 01 7F 7F 7E FF");
}

TEST(FrameReader, ReadsToTheChecksumAndNotBeyond) {
  const Bytes frame = FromHex("FC 14 7F 7F 41 42 20 00 FF");
  FrameReader reader(frame);
  int value = 0;
  std::string text;
  EXPECT_TRUE(reader.Byte(&value));
  EXPECT_EQ(value, 20);
  EXPECT_TRUE(reader.Pair(&value));
  EXPECT_EQ(value, 16383);
  EXPECT_FALSE(reader.Text(4, &text));
  EXPECT_FALSE(reader.AtEnd());
  EXPECT_TRUE(reader.Text(2, &text));
  EXPECT_EQ(text, "AB");
  EXPECT_FALSE(reader.Pair(&value));
  EXPECT_TRUE(reader.Byte(&value));
  EXPECT_EQ(value, 0x20);
  EXPECT_TRUE(reader.AtEnd());
  EXPECT_FALSE(reader.Byte(&value));
}

}  // namespace
}  // namespace teskpanel
