// SPDX-License-Identifier: MIT

#include "views/rules/label_paste.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using Reason = PasteRefusal::Reason;
using stations::LabelColumn;
using stations::LabelRecord;
using stations::TextProblem;

// Three stations: 10, 11 and 12.
std::vector<LabelRecord> Rows() {
  std::vector<LabelRecord> rows(3);
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (LabelRecord::Field& field : rows[r].fields) {
      field.value = "old";
      field.isReadable = true;
    }
    rows[r].At(LabelColumn::Station).value = 10 + static_cast<int>(r);
    rows[r].At(LabelColumn::Hidden).value = 0;
  }
  return rows;
}

TEST(PastePlan, ChangesWhatDiffers) {
  std::vector<LabelRecord> rows = Rows();
  rows[2].At(LabelColumn::InputLabel).value.SetNull();
  const PastePlan plan =
      PlanPaste({{"MIC", "old"}, {"old", "old"}, {"old", ""}}, rows, 0, LabelColumn::StationLabel);
  EXPECT_TRUE(plan.refusal.ok());
  ASSERT_EQ(plan.changes.size(), 1U) << "null shows an empty cell, and stays null";
  EXPECT_EQ(plan.changes[0].station, jet::Value(10));
  ASSERT_EQ(plan.changes[0].changes.size(), 1U);
  EXPECT_EQ(plan.changes[0].changes[0].column, LabelColumn::StationLabel);
  EXPECT_EQ(plan.changes[0].changes[0].value, jet::Value("MIC"));
}

TEST(PastePlan, TakesWholeRowsBack) {
  const PastePlan plan =
      PlanPaste({{"11", "A", "B", "Yes", "C", "D", "two\nlines"}}, Rows(), 1, LabelColumn::Station);
  EXPECT_TRUE(plan.refusal.ok());
  ASSERT_EQ(plan.changes.size(), 1U);
  ASSERT_EQ(plan.changes[0].changes.size(), 6U);
  EXPECT_EQ(plan.changes[0].changes[2].value, jet::Value(1));
  EXPECT_EQ(plan.changes[0].changes[5].value, jet::Value("two\nlines"));
}

TEST(PastePlan, ShorterRowsLeaveCellsAlone) {
  const PastePlan plan = PlanPaste({{"A", "B"}, {"C"}}, Rows(), 1, LabelColumn::SystemInput);
  EXPECT_TRUE(plan.refusal.ok());
  ASSERT_EQ(plan.changes.size(), 2U);
  EXPECT_EQ(plan.changes[0].changes.size(), 2U);
  EXPECT_EQ(plan.changes[1].changes.size(), 1U);
}

TEST(PastePlan, HiddenWords) {
  std::vector<LabelRecord> rows = Rows();
  rows[1].At(LabelColumn::Hidden).value = 7;
  const PastePlan plan = PlanPaste({{"1"}, {"7"}, {"0"}}, rows, 0, LabelColumn::Hidden);
  EXPECT_TRUE(plan.refusal.ok());
  ASSERT_EQ(plan.changes.size(), 1U) << "a strange value stays as it is when it is not changed";
  EXPECT_EQ(plan.changes[0].station, jet::Value(10));
  EXPECT_EQ(plan.changes[0].changes[0].value, jet::Value(1));
}

TEST(PastePlan, IsRefusedAsAWhole) {
  struct Case {
    TextBlock block;
    std::size_t row;
    LabelColumn column;
    Reason reason;
    std::size_t refusedRow;
    LabelColumn refusedColumn;
    TextProblem problem;
  };
  const Case cases[] = {
      {{}, 0, LabelColumn::Notes, Reason::Empty, 0, LabelColumn::Station, TextProblem::None},
      {{{"a"}, {"b"}, {"c"}},
       1,
       LabelColumn::Notes,
       Reason::TooManyRows,
       2,
       LabelColumn::Station,
       TextProblem::None},
      {{{"a"}, {"b", "c"}},
       0,
       LabelColumn::Notes,
       Reason::TooManyColumns,
       1,
       LabelColumn::Station,
       TextProblem::None},
      {{{"10", "MIC"}, {"12", "MIC"}},
       0,
       LabelColumn::Station,
       Reason::StationNumber,
       1,
       LabelColumn::Station,
       TextProblem::None},
      {{{"MIC", "MIC", "maybe"}},
       2,
       LabelColumn::StationLabel,
       Reason::NotAChoice,
       2,
       LabelColumn::Hidden,
       TextProblem::None},
      {{{"MIC"}, {"MIC", "123456789"}},
       0,
       LabelColumn::StationLabel,
       Reason::Text,
       1,
       LabelColumn::InputLabel,
       TextProblem::TooLong},
      {{{"MIC"}, {"Ж"}},
       0,
       LabelColumn::SystemInput,
       Reason::Text,
       1,
       LabelColumn::SystemInput,
       TextProblem::NotInCodePage},
      {{{"MICÿ"}},
       0,
       LabelColumn::InputLabel,
       Reason::Text,
       0,
       LabelColumn::InputLabel,
       TextProblem::EndOfMessage},
  };
  for (const Case& each : cases) {
    const PastePlan plan = PlanPaste(each.block, Rows(), each.row, each.column);
    EXPECT_EQ(plan.refusal.reason, each.reason);
    EXPECT_EQ(plan.refusal.row, each.refusedRow);
    EXPECT_EQ(plan.refusal.column, each.refusedColumn);
    EXPECT_EQ(plan.refusal.text.problem, each.problem);
    EXPECT_TRUE(plan.changes.empty());
  }
}

TEST(PastePlan, AFieldThatCannotBeReadIsNotWritten) {
  std::vector<LabelRecord> rows = Rows();
  rows[0].At(LabelColumn::Notes).value.SetNull();
  rows[0].At(LabelColumn::Notes).isReadable = false;
  EXPECT_EQ(PlanPaste({{""}}, rows, 0, LabelColumn::Notes).refusal.reason, Reason::Unreadable);
  EXPECT_EQ(PlanPaste({{"x"}}, rows, 0, LabelColumn::Notes).refusal.reason, Reason::Unreadable);
}

}  // namespace
}  // namespace rules
