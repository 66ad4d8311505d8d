// SPDX-License-Identifier: MIT

#include "gateway/received_bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::FromHex;
using test::Hex;
using testing::IsEmpty;

ReceivedBytes Received(std::string_view hex) {
  ReceivedBytes received;
  received.Append(FromHex(hex));
  return received;
}

TEST(ReceivedBytesTest, GivesThemInTheOrderOfTheirArrival) {
  ReceivedBytes received;
  EXPECT_TRUE(received.empty());
  received.Append(FromHex("F2 00"));
  received.Append(FromHex("01 FF F5"));
  EXPECT_EQ(received.size(), 5U);
  EXPECT_EQ(received.front(), 0xF2);
  EXPECT_EQ(Hex(received.Cut(4)), "F2 00 01 FF");
  EXPECT_EQ(Hex(received.View()), "F5");
  EXPECT_EQ(Hex(received.Cut(1)), "F5");
  EXPECT_THAT(received, IsEmpty());
}

TEST(ReceivedBytesTest, FindsTheTerminator) {
  ReceivedBytes received = Received("F2 00");
  EXPECT_EQ(received.LengthToTerminator(), 0U);
  received.Append(FromHex("FF 81 FF"));
  EXPECT_EQ(received.LengthToTerminator(), 3U);
  received.Cut(1);
  EXPECT_EQ(received.LengthToTerminator(), 2U);
  received.Cut(2);
  EXPECT_EQ(received.LengthToTerminator(), 2U);
  received.Cut(2);
  EXPECT_EQ(received.LengthToTerminator(), 0U);
}

TEST(ReceivedBytesTest, ATerminatorInFrontCounts) {
  ReceivedBytes received = Received("FF FF");
  EXPECT_EQ(received.LengthToTerminator(), 1U);
  received.Cut(1);
  EXPECT_EQ(received.LengthToTerminator(), 1U);
}

TEST(ReceivedBytesTest, WhatWasSearchedIsNotSearchedAgain) {
  ReceivedBytes received;
  for (int part = 0; part < 16; ++part) {
    EXPECT_EQ(received.Searched(), 4096U * static_cast<unsigned>(part));
    received.Append(Bytes(4096, 0x11));
    EXPECT_EQ(received.LengthToTerminator(), 0U);
    EXPECT_EQ(received.LengthToTerminator(), 0U);
  }
  // Nor when bytes are taken off its front.
  received.Cut(1000);
  EXPECT_EQ(received.Searched(), 64536U);
  received.Append(FromHex("FF 11"));
  EXPECT_EQ(received.LengthToTerminator(), 64537U);
  EXPECT_EQ(received.Searched(), 64536U);
}

TEST(ReceivedBytesTest, OthersTakeTheirPlace) {
  ReceivedBytes received = Received("80 11 22 FF 33");
  received.LengthToTerminator();
  received.Cut(2);
  received.Assign(FromHex("F5 FF"));
  EXPECT_EQ(Hex(received.View()), "F5 FF");
  EXPECT_EQ(received.LengthToTerminator(), 2U);
  received.Clear();
  EXPECT_THAT(received, IsEmpty());
  EXPECT_EQ(received.LengthToTerminator(), 0U);
}

// Beside a plain vector, with bytes that are a terminator every fourth time.
TEST(ReceivedBytesTest, GoesLikeAVectorWhateverIsDone) {
  std::mt19937 random(5);
  ReceivedBytes received;
  Bytes plain;
  for (int step = 0; step < 20000; ++step) {
    if (random() % 2 == 0) {
      Bytes bytes(random() % 9);
      for (std::uint8_t& byte : bytes) byte = random() % 4 == 0 ? 0xFF : 0x11;
      received.Append(bytes);
      plain.insert(plain.end(), bytes.begin(), bytes.end());
    } else {
      const std::size_t count = random() % (std::min<std::size_t>(plain.size(), 9) + 1);
      const auto end = plain.begin() + static_cast<std::ptrdiff_t>(count);
      ASSERT_EQ(received.Cut(count), Bytes(plain.begin(), end));
      plain.erase(plain.begin(), end);
    }
    const auto terminator = std::find(plain.begin(), plain.end(), 0xFF);
    const auto length = static_cast<std::size_t>(terminator - plain.begin()) + 1;
    ASSERT_EQ(received.LengthToTerminator(), terminator == plain.end() ? 0 : length);
    ASSERT_EQ(received.size(), plain.size());
  }
}

}  // namespace
}  // namespace gateway
