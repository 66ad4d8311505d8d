// SPDX-License-Identifier: MIT

#include "stations/label_texts.h"

#include <gtest/gtest.h>

namespace stations {
namespace {

TextProblem Problem(LabelColumn column, std::string_view text) {
  return CheckText(column, text).problem;
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

}  // namespace
}  // namespace stations
