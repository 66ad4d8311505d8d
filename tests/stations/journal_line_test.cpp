// SPDX-License-Identifier: MIT

#include "stations/journal/line.h"

#include <gtest/gtest.h>

#include <string>

namespace stations {
namespace {

using Kind = JournalLine::Kind;

constexpr char kText[] = R"(17 e5c1d4be act 12 {"title":"Label of station 17"})";

TEST(JournalLine, HasItsNumberItsChecksumWhatItIsItsRunAndItsObject) {
  EXPECT_EQ(WriteLine({.number = 17,
                       .kind = Kind::Act,
                       .run = 12,
                       .content = R"({"title":"Label of station 17"})"}),
            std::string(kText) + "\n");
}

TEST(JournalLine, IsReadAsItWasWritten) {
  for (const Kind kind : {Kind::Run, Kind::Act, Kind::Saved, Kind::Restored, Kind::Discarded}) {
    std::string text =
        WriteLine({.number = 5, .kind = kind, .run = 3, .content = R"({"a":"b c"})"});
    text.pop_back();
    JournalLine line;
    ASSERT_TRUE(ReadLine(text, &line)) << text;
    EXPECT_EQ(line.number, 5);
    EXPECT_EQ(line.kind, kind);
    EXPECT_EQ(line.run, 3);
    EXPECT_EQ(line.content, R"({"a":"b c"})");
  }
}

TEST(JournalLine, WithAnyByteChangedItIsNotWhole) {
  const std::string whole(kText);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (int flip = 1; flip < 256; ++flip) {
      std::string text = whole;
      text[at] = static_cast<char>(text[at] ^ flip);
      JournalLine line;
      EXPECT_FALSE(ReadLine(text, &line)) << text;
    }
  }
}

TEST(JournalLine, CutAnywhereItIsNotWhole) {
  const std::string whole(kText);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    JournalLine line;
    EXPECT_FALSE(ReadLine(std::string_view(whole).substr(0, length), &line)) << length;
  }
}

TEST(JournalLine, WithAnImpossibleNumberItIsNotRead) {
  for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-1}, INT64_MAX}) {
    std::string text = WriteLine({.number = number, .kind = Kind::Act, .run = 1, .content = "{}"});
    text.pop_back();
    JournalLine line;
    EXPECT_FALSE(ReadLine(text, &line)) << text;
  }
}

}  // namespace
}  // namespace stations
