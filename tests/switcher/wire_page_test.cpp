// SPDX-License-Identifier: MIT
//
// Holds the examples of docs/wire-format.md against the program: lines of bytes, then a line that
// begins with "= " and says what they mean.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "switcher/wire/frame.h"
#include "tests/support/hex.h"
#include "tests/support/message_codecs.h"
#include "tests/support/page_examples.h"

namespace switcher {
namespace {

// The system of the page.
constexpr test::MessageCounts kPage = {.channels = 16,
                                       .stations = 16,
                                       .labels = 2,
                                       .buttons = 2,
                                       .optos = 1,
                                       .relays = 16,
                                       .targets = 16};

struct Example {
  Bytes bytes;
  std::string meaning;
};

std::vector<Example> Examples() {
  std::vector<Example> examples(1);
  for (const std::string& line : test::PageLines("wire-format.md", "hex")) {
    if (line.starts_with("= ")) {
      examples.back().meaning = line.substr(2);
      examples.emplace_back();
    } else {
      const Bytes bytes = test::FromHex(line);
      examples.back().bytes.insert(examples.back().bytes.end(), bytes.begin(), bytes.end());
    }
  }
  EXPECT_TRUE(examples.back().bytes.empty()) << "bytes without a meaning";
  examples.pop_back();
  return examples;
}

// What a message says, and the same message built from that.
struct Read {
  std::string meaning;
  Bytes rebuilt;
};

Read ReadMessage(const Bytes& message) {
  if (FindMessage(message.front()) == nullptr) return {"no known message", {}};
  return test::WithCodec(static_cast<MessageCode>(message.front()), [&](auto codec) -> Read {
    typename decltype(codec)::Value value{};
    const DecodeStatus status = codec.Parse(message, kPage, &value);
    if (status != DecodeStatus::Ok) return {std::string(StatusWord(status)), {}};
    return {codec.Describe(value), codec.Encode(value, kPage)};
  });
}

TEST(WirePageTest, TheExamplesSayWhatThePageSays) {
  for (const Example& example : Examples()) {
    ASSERT_FALSE(example.bytes.empty()) << example.meaning;
    const Read read = ReadMessage(example.bytes);
    EXPECT_EQ(read.meaning, example.meaning) << test::Hex(example.bytes);
    EXPECT_EQ(test::Hex(read.rebuilt), test::Hex(example.bytes)) << example.meaning;
  }
}

TEST(WirePageTest, WhatTheSwitcherSendsIsCutOffWhole) {
  for (const Example& example : Examples()) {
    if (!IsReceivedCode(example.bytes.front())) continue;
    ReceiveBuffer received{.bytes = example.bytes};
    Bytes message;
    EXPECT_EQ(CutMessage(received, &message), Cut::Message) << example.meaning;
    EXPECT_EQ(message, example.bytes) << example.meaning;
  }
}

TEST(WirePageTest, EveryMessageHasAnExample) {
  std::set<std::uint8_t> codes;
  for (const Example& example : Examples()) codes.insert(example.bytes.front());
  for (const MessageKind& kind : kMessages) EXPECT_TRUE(codes.contains(kind.code)) << kind.name;
}

// A system of the table of lengths.
struct PageSize {
  int channels;
  int labels;
};
constexpr PageSize kPageSizes[] = {{16, 128}, {64, 128}, {256, 256}};

// `way` is "to" or "from" the switcher: a stored text of a button, which goes to it, has 64
// members, or as many as there are stations beyond.
test::MessageCounts CountsOf(const PageSize& size, const std::string& way) {
  return {.channels = size.channels,
          .stations = size.channels,
          .labels = size.labels,
          .buttons = 32,
          .optos = 64,
          .relays = 64,
          .targets = way == "to" ? std::max(64, size.channels) : size.channels};
}

TEST(WirePageTest, TheLengthsAreThoseOfThePage) {
  std::set<std::string> codes;
  for (const auto& row : test::PageTable("wire-format.md", "## Lengths")) {
    ASSERT_EQ(row.size(), 7U) << row.front();
    codes.insert(row[0]);
    const MessageKind* const kind =
        std::ranges::find_if(kMessages, [&](const MessageKind& message) {
          return "0x" + test::Hex(Bytes{message.code}) == row[0];
        });
    ASSERT_NE(kind, std::end(kMessages)) << row[0];
    test::WithCodec(kind->code,
                    [&](auto codec) { EXPECT_TRUE(row[1].starts_with(codec.kName)) << row[1]; });
    for (std::size_t i = 0; i < std::size(kPageSizes); ++i) {
      const Bytes message = test::ExampleMessage(kind->code, CountsOf(kPageSizes[i], row[2]));
      EXPECT_EQ(std::to_string(message.size()), row[4 + i]) << row[1];
      EXPECT_EQ(message.front(), kind->code) << row[1];
    }
  }
  for (const MessageKind& kind : kMessages) {
    EXPECT_TRUE(codes.contains("0x" + test::Hex(Bytes{kind.code}))) << kind.name;
  }
}

TEST(WirePageTest, TheSwitcherSendsWhatThePageSays) {
  std::set<std::string> received;
  std::set<std::string> sent;
  for (const auto& row : test::PageTable("wire-format.md", "## Lengths")) {
    ASSERT_THAT(row[2], testing::AnyOf("to", "from", "both"));
    if (row[2] != "to") received.insert(row[0]);
    if (row[2] != "from") sent.insert(row[0]);
  }
  for (int code = 0; code <= 0xFF; ++code) {
    const auto byte = static_cast<std::uint8_t>(code);
    const std::string name = "0x" + test::Hex(Bytes{byte});
    EXPECT_EQ(IsReceivedCode(byte), received.contains(name)) << name;
    const MessageKind* const kind = FindMessage(byte);
    EXPECT_EQ(kind != nullptr && kind->ToSwitcher(), sent.contains(name)) << name;
  }
}

}  // namespace
}  // namespace switcher
