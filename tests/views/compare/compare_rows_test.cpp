// SPDX-License-Identifier: MIT

#include "views/compare/compare_rows.h"

#include <gmock/gmock.h>

namespace views {
namespace {

using stations::Change;
using stations::Origin;
using switcher::ComparisonResult;
using switcher::DecodeStatus;
using switcher::Table;
using switcher::TablePart;
using testing::ElementsAre;
using testing::IsEmpty;

std::string InWords(const Difference& each) {
  const ChangeRow& row = each.row;
  return (row.where + u'|' + row.what + u'|' + row.before + u'|' + row.after + u'|' + each.obstacle)
      .toStdString();
}

std::vector<std::string> InWords(const ComparisonResult& result) {
  std::vector<std::string> words;
  for (const Difference& each : CompareRows(result, nullptr)) words.push_back(InWords(each));
  return words;
}

// A comparison that came to its end with so many tables.
ComparisonResult Complete(int tables) {
  ComparisonResult result{.completed = true};
  for (int output = 1; output <= tables; ++output) {
    result.accepted.push_back({Table::Inhibits, output});
  }
  return result;
}

Change OneField(int station, const char* field, const jet::Value& before, const jet::Value& after) {
  return {Origin::Switcher, station, {{field, before, after}}};
}

TEST(CompareRows, ADifferenceSaysWhatIsHereAndThere) {
  ComparisonResult result = Complete(2);
  result.differences = {OneField(3, "Label", "CAM 1", "CAM 2"),
                        OneField(5, "Inhibits", "0100", "0000")};
  EXPECT_THAT(InWords(result),
              ElementsAre("Station 3|Label|CAM 1|CAM 2|", "Output 5|Inhibits|2|none|"));
}

TEST(CompareRows, WhatIsNotKnownIsARowThatCannotBeTicked) {
  ComparisonResult result = Complete(1);
  result.refused = {{.part = {Table::Relays, 12}, .status = DecodeStatus::ChecksumFailed},
                    {.part = {Table::OutputLabels}, .status = DecodeStatus::WrongChannel},
                    {.part = {Table::Buttons, 4}, .status = DecodeStatus::NotStored}};
  result.missing = {{Table::Optos},       {Table::InputLabels}, {Table::Inhibits, 5},
                    {Table::Inhibits, 6}, {Table::Inhibits, 7}, {Table::Inhibits, 9},
                    {Table::Relays, 10},  {Table::Buttons, 11}, {Table::Buttons, 12}};
  EXPECT_THAT(
      InWords(result),
      ElementsAre(
          "Output 12|Relays||refused: Failed Csum|What the switcher reported was refused.",
          "All stations|Labels||refused: Channel Error|What the switcher reported was refused.",
          "Station 4|Buttons||refused|What the switcher reported was refused.",
          "All stations|Optos||not reported|The switcher did not report it.",
          "All stations|Input labels||not reported|The switcher did not report it.",
          "Outputs 5 to 7|Inhibits||not reported|The switcher did not report it.",
          "Output 9|Inhibits||not reported|The switcher did not report it.",
          "Output 10|Relays||not reported|The switcher did not report it.",
          "Stations 11, 12|Buttons||not reported|The switcher did not report it."));
}

TEST(CompareSummary, SaysHowMuchDiffersAndWhatIsLacking) {
  EXPECT_EQ(CompareSummary(Complete(1)), QStringLiteral("No difference in 1 table"));
  ComparisonResult result = Complete(195);
  EXPECT_EQ(CompareSummary(result), QStringLiteral("No difference in 195 tables"));
  result.differences = {OneField(3, "Label", "CAM 1", "CAM 2")};
  EXPECT_EQ(CompareSummary(result), QStringLiteral("1 difference in 195 tables"));
  result.differences.push_back(OneField(4, "Label", "CAM 3", "CAM 4"));
  EXPECT_EQ(CompareSummary(result), QStringLiteral("2 differences in 195 tables"));
  result.missing = {{Table::Optos}};
  EXPECT_EQ(CompareSummary(result), QStringLiteral("2 differences in 195 tables, 1 not reported"));
  result.refused = {{.part = {Table::Relays, 12}, .status = DecodeStatus::ChecksumFailed}};
  EXPECT_EQ(CompareSummary(result),
            QStringLiteral("2 differences in 195 tables, 1 refused, 1 not reported"));
  result.refused.clear();
  result.lineLost = true;
  result.completed = false;
  EXPECT_EQ(CompareSummary(result),
            QStringLiteral("Cancelled. 2 differences in 195 tables, 1 not reported. The line was "
                           "lost meanwhile"));
  ComparisonResult none;
  none.missing = {{Table::Optos}};
  EXPECT_EQ(CompareSummary(none), QStringLiteral("Cancelled. No table came"));
}

TEST(PartsOf, NamesEachTableOnceInTheOrderOfADownload) {
  const std::vector<Change> changes{
      {Origin::Operator, 3, {{"B1 Type", 0, 1}, {"B2 Prog", "0", "1"}, {"Label", "A", "B"}}},
      {Origin::Operator, 4, {{"Hidden", 0, 1}, {"Inhibits", "0", "1"}, {"OptoFirst", 1, 2}}},
      {Origin::Operator, 5, {{"Relays", "0", "1"}, {"InLabel", "A", "B"}}},
  };
  EXPECT_THAT(PartsOf(changes),
              ElementsAre(TablePart{Table::Optos}, TablePart{Table::OutputLabels},
                          TablePart{Table::InputLabels}, TablePart{Table::Inhibits, 4},
                          TablePart{Table::Relays, 5}, TablePart{Table::Buttons, 3}));
  EXPECT_THAT(PartsOf({}), IsEmpty());
}

}  // namespace
}  // namespace views
