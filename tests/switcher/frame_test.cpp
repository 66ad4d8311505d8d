// SPDX-License-Identifier: MIT

#include "switcher/wire/frame.h"

#include <gtest/gtest.h>

#include "tests/support/hex.h"

namespace switcher {
namespace {

using test::FromHex;
using test::Hex;

TEST(CutMessage, NothingIsCutFromAnEmptyBuffer) {
  ReceiveBuffer buffer;
  Bytes message;
  EXPECT_EQ(CutMessage(buffer, &message), Cut::Empty);
}

TEST(CutMessage, LosesOneByteWithoutTopBitPerCall) {
  ReceiveBuffer buffer{.bytes = FromHex("41 00 7F E4 FF")};
  Bytes message;
  EXPECT_EQ(CutMessage(buffer, &message), Cut::DroppedByte);
  EXPECT_EQ(Hex(buffer.bytes), "00 7F E4 FF");
  EXPECT_EQ(CutMessage(buffer, &message), Cut::DroppedByte);
  EXPECT_EQ(CutMessage(buffer, &message), Cut::DroppedByte);
  EXPECT_EQ(Hex(buffer.bytes), "E4 FF");
  EXPECT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "E4 FF");
}

TEST(CutMessage, EveryPrefixWaitsWhole) {
  const Bytes whole = FromHex("F3 00 00 00 00 01 00 00 00 01 FF");
  for (std::size_t length = 1; length < whole.size(); ++length) {
    const Bytes before(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    ReceiveBuffer buffer{.bytes = before};
    Bytes message;
    EXPECT_EQ(CutMessage(buffer, &message), Cut::NeedMore) << length;
    EXPECT_EQ(buffer.bytes, before);
  }
}

TEST(CutMessage, TwoMessagesInOneReadComeOffOneByOne) {
  ReceiveBuffer buffer{.bytes = FromHex("E2 01 01 FF F3 02 02 FF")};
  Bytes message;
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "E2 01 01 FF");
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "F3 02 02 FF");
  EXPECT_EQ(CutMessage(buffer, &message), Cut::Empty);
}

TEST(CutMessage, UnknownCodeBlocksForGood) {
  ReceiveBuffer buffer{.bytes = FromHex("E0 01 FF F3 00 00 FF")};
  Bytes message;
  for (int call = 0; call < 3; ++call) {
    EXPECT_EQ(CutMessage(buffer, &message), Cut::Blocked);
    EXPECT_EQ(Hex(buffer.bytes), "E0 01 FF F3 00 00 FF");
  }
  EXPECT_TRUE(message.empty());
}

TEST(CutMessage, ALoneEndByteIsAnUnknownCode) {
  ReceiveBuffer buffer{.bytes = FromHex("FF F3 00 FF")};
  Bytes message;
  EXPECT_EQ(CutMessage(buffer, &message), Cut::Blocked);
}

TEST(CutMessage, UnknownCodeWithoutEndByteIsStillWaitedFor) {
  ReceiveBuffer buffer{.bytes = FromHex("E0 01")};
  Bytes message;
  EXPECT_EQ(CutMessage(buffer, &message), Cut::NeedMore);
}

// The end of a message that never comes is looked for in what is new.
TEST(CutMessage, WhatWasSearchedOnceIsNotSearchedAgain) {
  ReceiveBuffer buffer{.bytes = FromHex("F3 00 00")};
  Bytes message;
  ASSERT_EQ(CutMessage(buffer, &message), Cut::NeedMore);
  buffer.bytes[2] = 0xFF;  // nobody looks there any more
  EXPECT_EQ(CutMessage(buffer, &message), Cut::NeedMore);
  buffer.bytes.push_back(0xFF);
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "F3 00 FF FF");

  // The next message is searched from its own front.
  buffer.bytes = FromHex("F4 FF");
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "F4 FF");
}

TEST(CutMessage, TheEndOfAMessageThatBlocksIsNotLookedForAgain) {
  ReceiveBuffer buffer{.bytes = FromHex("E0 01 FF F4 FF")};
  Bytes message;
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Blocked);
  buffer.bytes[1] = 0xFF;  // nobody looks there any more
  EXPECT_EQ(CutMessage(buffer, &message), Cut::Blocked);
  EXPECT_EQ(buffer.searched, 2U);
  // Without its code the rest goes its way, to the end that was found.
  DropFirst(buffer);
  buffer.bytes[0] = 0xF3;
  ASSERT_EQ(CutMessage(buffer, &message), Cut::Message);
  EXPECT_EQ(Hex(message), "F3 FF");
  EXPECT_EQ(Hex(buffer.bytes), "F4 FF");
}

TEST(DropFirst, TakesExactlyOneByte) {
  ReceiveBuffer buffer{.bytes = FromHex("CD 00")};
  DropFirst(buffer);
  EXPECT_EQ(Hex(buffer.bytes), "00");
  DropFirst(buffer);
  DropFirst(buffer);
  EXPECT_TRUE(buffer.bytes.empty());
}

}  // namespace
}  // namespace switcher
