// SPDX-License-Identifier: MIT

#include "switcher/wire/message_table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "switcher/table.h"
#include "tests/support/hex.h"
#include "tests/support/message_codecs.h"

namespace switcher {
namespace {

TEST(MessageTable, EveryMessageIsThereOnce) {
  std::set<std::string_view> names;
  for (const MessageKind& kind : kMessages) {
    EXPECT_EQ(FindMessage(kind.code), &kind) << kind.name;
    EXPECT_GE(kind.code, 0x80) << kind.name;
    EXPECT_TRUE(names.insert(kind.name).second) << kind.name;
    EXPECT_TRUE(kind.ToSwitcher() || kind.FromSwitcher()) << kind.name;
  }
  EXPECT_EQ(FindMessage(0xE0), nullptr);
  EXPECT_EQ(FindMessage(0xED), nullptr);
}

TEST(MessageTable, TheseAreReceivedAndTheseAreSent) {
  std::set<int> received;
  std::set<int> sent;
  for (const MessageKind& kind : kMessages) {
    if (kind.FromSwitcher()) received.insert(kind.code);
    if (kind.ToSwitcher()) sent.insert(kind.code);
  }
  EXPECT_EQ(received, (std::set<int>{0xE1, 0xE2, 0xE4, 0xF3, 0xF4, 0xF5, 0xF9, 0xFB}));
  EXPECT_EQ(sent, (std::set<int>{0xE1, 0xE3, 0xF4, 0xF5, 0xF7, 0xF9, 0xFB, 0xFD}));
}

TEST(MessageTable, WhatWasReceivedIsNamedWithItsNumber) {
  EXPECT_EQ(DescribeMessage(kCrosspointRowCode, 5), "Output 5 Crosspoint Map");
  EXPECT_EQ(DescribeMessage(kButtonDataCode, 256), "Station 256 Button Data");
  EXPECT_EQ(DescribeMessage(kAlphaLabelsCode, 5), "Alpha Labels");
}

TEST(MessageTable, WhatTheSwitcherKeepsIsOfATable) {
  for (const MessageKind& kind : kMessages) {
    const std::uint8_t message[] = {kind.code, kOutputLabels, 0, 0xFF};
    EXPECT_EQ(PartOf(message).has_value(), kind.use == MessageUse::Table) << kind.name;
  }
}

constexpr test::MessageCounts kCounts{.channels = 16,
                                      .stations = 16,
                                      .labels = 16,
                                      .buttons = 4,
                                      .optos = 2,
                                      .relays = 16,
                                      .targets = 16};

// The fuzz target makes its streams of these.
TEST(MessageTable, EveryMessageHasAnExampleThatIsAccepted) {
  for (const MessageKind& kind : kMessages) {
    const Bytes example = test::ExampleMessage(kind.code, kCounts);
    ASSERT_FALSE(example.empty()) << kind.name;
    EXPECT_EQ(example.front(), kind.code) << kind.name;
    test::WithCodec(kind.code, [&](auto codec) {
      typename decltype(codec)::Value value{};
      EXPECT_EQ(codec.Parse(example, kCounts, &value), DecodeStatus::Ok) << kind.name;
      EXPECT_TRUE(value == codec.Example(kCounts)) << kind.name;
    });
  }
}

TEST(MessageTable, AMessageThatTheLineHasSpoiledIsRefused) {
  for (const MessageKind& kind : kMessages) {
    const Bytes example = test::ExampleMessage(kind.code, kCounts);
    Bytes cutShort = example;
    cutShort.erase(cutShort.end() - 2);
    Bytes doubled = example;
    doubled.insert(doubled.end() - 2, doubled[doubled.size() - 2]);
    Bytes wrongSum = example;
    wrongSum[wrongSum.size() - 2] ^= 0x01;
    Bytes withoutEnd = example;
    withoutEnd.back() = 0x7F;
    test::WithCodec(kind.code, [&](auto codec) {
      for (const Bytes& spoiled : {cutShort, doubled, wrongSum, withoutEnd}) {
        typename decltype(codec)::Value value{};
        EXPECT_NE(codec.Parse(spoiled, kCounts, &value), DecodeStatus::Ok)
            << kind.name << ": " << test::Hex(spoiled);
      }
    });
  }
}

}  // namespace
}  // namespace switcher
