// SPDX-License-Identifier: MIT

#include "switcher/frame.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Hex;

TEST(CutMessage, NothingIsCutFromAnEmptyBuffer) {
  Bytes rxBuffer;
  Bytes message;
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::Empty);
}

TEST(CutMessage, LosesOneByteWithoutTopBitPerCall) {
  Bytes rxBuffer = FromHex("41 00 7F E4 FF");
  Bytes message;
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::DroppedByte);
  EXPECT_EQ(Hex(rxBuffer), "00 7F E4 FF");
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::DroppedByte);
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::DroppedByte);
  EXPECT_EQ(Hex(rxBuffer), "E4 FF");
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "E4 FF");
}

TEST(CutMessage, EveryPrefixWaitsWhole) {
  const Bytes whole = FromHex("F3 00 00 00 00 01 00 00 00 01 FF");
  for (std::size_t length = 1; length < whole.size(); ++length) {
    Bytes rxBuffer(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const Bytes before = rxBuffer;
    Bytes message;
    EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::NeedMore) << length;
    EXPECT_EQ(rxBuffer, before);
  }
}

TEST(CutMessage, TwoMessagesInOneReadComeOffOneByOne) {
  Bytes rxBuffer = FromHex("E2 01 01 FF F3 02 02 FF");
  Bytes message;
  ASSERT_EQ(CutMessage(rxBuffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "E2 01 01 FF");
  ASSERT_EQ(CutMessage(rxBuffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "F3 02 02 FF");
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::Empty);
}

TEST(CutMessage, UnknownCodeBlocksForGood) {
  Bytes rxBuffer = FromHex("E0 01 FF F3 00 00 FF");
  Bytes message;
  for (int call = 0; call < 3; ++call) {
    EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::Blocked);
    EXPECT_EQ(Hex(rxBuffer), "E0 01 FF F3 00 00 FF");
  }
  EXPECT_TRUE(message.empty());
}

TEST(CutMessage, ALoneEndByteIsAnUnknownCode) {
  Bytes rxBuffer = FromHex("FF F3 00 FF");
  Bytes message;
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::Blocked);
}

TEST(CutMessage, UnknownCodeWithoutEndByteIsStillWaitedFor) {
  Bytes rxBuffer = FromHex("E0 01");
  Bytes message;
  EXPECT_EQ(CutMessage(rxBuffer, &message), Cut::NeedMore);
}

TEST(IsReceivedCode, KnowsTheEightCodesOfTheSwitcherAndNoOther) {
  const Bytes known = FromHex("E1 E2 E4 F3 F4 F5 F9 FB");
  for (int code = 0; code <= 0xFF; ++code) {
    const bool expected = std::find(known.begin(), known.end(), code) != known.end();
    EXPECT_EQ(IsReceivedCode(static_cast<std::uint8_t>(code)), expected) << code;
  }
}

}  // namespace
}  // namespace switcher
