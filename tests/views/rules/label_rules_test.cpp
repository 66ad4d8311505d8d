// SPDX-License-Identifier: MIT

#include "views/rules/label_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TextProblem Problem(LabelColumn column, std::string_view text) {
  return CheckText(column, text).problem;
}

TEST(LabelColumns, AreTheSevenOfTheGrid) {
  struct Expected {
    const char* caption;
    const char* key;
    const char* field;
    int maxLength;
    int twips;
  };
  const Expected expected[] = {
      {"Station", "StaNum", "StationNum", 0, 960},
      {"Station Label", "StaLabel", "Label", 8, 1400},
      {"Input Label", "SysInLabel", "InLabel", 8, 1400},
      {"Hidden", "StaHidden", "Hidden", 0, 1000},
      {"System Input", "SysInput", "SysInput", 20, 1400},
      {"System Output", "SysOutput", "SysOutput", 20, 1500},
      {"Station Notes", "StaNotes", "Notes", 128, 3500},
  };
  ASSERT_EQ(std::size(expected), kLabelColumns.size());
  for (std::size_t i = 0; i < kLabelColumns.size(); ++i) {
    EXPECT_STREQ(kLabelColumns[i].caption, expected[i].caption);
    EXPECT_STREQ(kLabelColumns[i].key, expected[i].key);
    EXPECT_STREQ(kLabelColumns[i].field, expected[i].field);
    EXPECT_EQ(kLabelColumns[i].maxLength, expected[i].maxLength) << expected[i].caption;
    EXPECT_EQ(kLabelColumns[i].twips, expected[i].twips) << expected[i].caption;
  }
}

TEST(LabelText, LengthsAreCountedInCharacters) {
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "12345678"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "123456789"), TextProblem::TooLong);
  EXPECT_EQ(Problem(LabelColumn::InputLabel, "WÜRZBGÄß"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::SystemInput, std::string(20, 'x')), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::SystemOutput, std::string(21, 'x')), TextProblem::TooLong);
  EXPECT_EQ(Problem(LabelColumn::Notes, std::string(128, 'x')), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::Notes, std::string(129, 'x')), TextProblem::TooLong);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, ""), TextProblem::None);
}

TEST(LabelText, WhatCodePage1252DoesNotHaveIsNamed) {
  const TextCheck check = CheckText(LabelColumn::StationLabel, "Studio Жук");
  EXPECT_EQ(check.problem, TextProblem::NotInCodePage);
  EXPECT_EQ(check.character, "Ж");
  EXPECT_EQ(CheckText(LabelColumn::Notes, "ok 😀").character, "😀");
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "€“”™Ÿ"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "\xFF\xFE"), TextProblem::NotInCodePage)
      << "not UTF-8 at all";
}

TEST(LabelText, OnlyALabelCannotHoldTheEndOfAMessage) {
  const TextCheck check = CheckText(LabelColumn::InputLabel, "Louÿs");
  EXPECT_EQ(check.problem, TextProblem::EndOfMessage);
  EXPECT_EQ(check.character, "ÿ");
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "ÿ"), TextProblem::EndOfMessage);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "þŸ"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::Notes, "Louÿs"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::SystemInput, "Louÿs"), TextProblem::None);
}

TEST(LabelText, OnlyNotesHoldLineBreaks) {
  EXPECT_EQ(Problem(LabelColumn::Notes, "one\r\ntwo\tthree"), TextProblem::None);
  EXPECT_EQ(Problem(LabelColumn::Notes, "\x07"), TextProblem::Control);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "a\nb"), TextProblem::Control);
  EXPECT_EQ(Problem(LabelColumn::SystemOutput, "a\tb"), TextProblem::Control);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "\x7F"), TextProblem::Control);
  EXPECT_EQ(Problem(LabelColumn::StationLabel, "\xC2\x85"), TextProblem::Control);
}

TEST(LabelText, CharactersAbove127AreFound) {
  EXPECT_EQ(FirstWideCharacter("Sta. 001~"), "");
  EXPECT_EQ(FirstWideCharacter("MÜLLÄ"), "Ü");
  EXPECT_EQ(FirstWideCharacter("5€"), "€");
}

TEST(HiddenFlag, Words) {
  EXPECT_EQ(HiddenText(0), "No");
  EXPECT_EQ(HiddenText(1), "Yes");
  EXPECT_EQ(HiddenText(jet::Value()), "");
  EXPECT_EQ(HiddenText(-1), "-1");
  EXPECT_EQ(HiddenText(7), "7");
  EXPECT_EQ(HiddenText("maybe"), "maybe");
  EXPECT_EQ(HiddenText(true), "Yes");
  for (const char* const word : {"No", "no", "NO", "0"}) EXPECT_EQ(ParseHidden(word), 0) << word;
  for (const char* const word : {"Yes", "yes", "YES", "1"}) EXPECT_EQ(ParseHidden(word), 1) << word;
  for (const char* const word : {"", "2", "-1", "true", "Ye", "No "}) {
    EXPECT_EQ(ParseHidden(word), std::nullopt) << word;
  }
}

TEST(Block, TabsAndLineEnds) {
  EXPECT_THAT(ParseBlock(""), IsEmpty());
  EXPECT_THAT(ParseBlock("MIC"), ElementsAre(ElementsAre("MIC")));
  EXPECT_THAT(ParseBlock("a\tb\r\nc\td\r\n"),
              ElementsAre(ElementsAre("a", "b"), ElementsAre("c", "d")));
  EXPECT_THAT(ParseBlock("a\nb\rc"),
              ElementsAre(ElementsAre("a"), ElementsAre("b"), ElementsAre("c")));
  EXPECT_THAT(ParseBlock("\ta\t\n\n"), ElementsAre(ElementsAre("", "a", ""), ElementsAre("")));
}

TEST(Block, CellsInQuotes) {
  EXPECT_THAT(ParseBlock("\"two\nlines\"\tb\n"), ElementsAre(ElementsAre("two\nlines", "b")));
  EXPECT_THAT(ParseBlock("\"a\tb\""), ElementsAre(ElementsAre("a\tb")));
  EXPECT_THAT(ParseBlock("\"say \"\"so\"\"\""), ElementsAre(ElementsAre("say \"so\"")));
  EXPECT_THAT(ParseBlock("\"\""), ElementsAre(ElementsAre("")));
}

TEST(Block, QuotesThatAreText) {
  EXPECT_THAT(ParseBlock("5\" reel\tx"), ElementsAre(ElementsAre("5\" reel", "x")));
  EXPECT_THAT(ParseBlock("\"A\" desk\tx"), ElementsAre(ElementsAre("\"A\" desk", "x")));
  EXPECT_THAT(ParseBlock("\"open\tx\ny"),
              ElementsAre(ElementsAre("\"open", "x"), ElementsAre("y")));
  EXPECT_THAT(ParseBlock("\""), ElementsAre(ElementsAre("\"")));
}

TEST(Block, IsWrittenAsItIsRead) {
  EXPECT_EQ(WriteBlock({{"5", "Sta. 005"}, {"6", ""}}), "5\tSta. 005\n6\t\n");
  EXPECT_EQ(WriteBlock({{"two\nlines", "\"A\""}}), "\"two\nlines\"\t\"\"\"A\"\"\"\n");
  EXPECT_EQ(WriteBlock({{"5\" reel"}}), "5\" reel\n");
}

}  // namespace
}  // namespace rules
