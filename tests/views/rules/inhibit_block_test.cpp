// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_block.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace rules {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::optional<std::string>>;

class PlanInhibitsTest : public testing::Test {
 protected:
  PlanInhibitsTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    grid_.Clear();
  }

  model::SystemModel model_;
  XmapGrid grid_{model_};
};

TEST_F(PlanInhibitsTest, SetsTheFlagsOfTheBlockAndKeepsAllOthers) {
  const InhibitPlan plan =
      PlanInhibits(grid_, {2, 3, 3, 5}, true, Texts{"10000001", "00100000rest"});
  ASSERT_EQ(plan.rows.size(), 2U);
  EXPECT_EQ(plan.rows[0].output, 2);
  EXPECT_EQ(plan.rows[0].flags, "10111001");
  EXPECT_THAT(plan.rows[0].inputs, ElementsAre(3, 4, 5));
  EXPECT_EQ(plan.rows[1].output, 3);
  EXPECT_EQ(plan.rows[1].flags, "00111000rest");
  EXPECT_THAT(plan.rows[1].inputs, ElementsAre(4, 5));
  EXPECT_EQ(plan.changes, 5);
  EXPECT_EQ(plan.leftOut, 0);
}

TEST_F(PlanInhibitsTest, LeavesOutWhatHoldsACrosspoint) {
  grid_.SetMark(1, 2, Mark::Crosspoint);
  grid_.SetMark(2, 1, Mark::Priority);
  grid_.SetMark(2, 2, Mark::Reserved);
  grid_.SetMark(2, 8, Mark::Crosspoint);  // beside the block
  const InhibitPlan plan = PlanInhibits(grid_, {1, 2, 1, 2}, true, Texts{"", "0"});
  ASSERT_EQ(plan.rows.size(), 1U);
  EXPECT_EQ(plan.rows[0].output, 1);
  EXPECT_EQ(plan.rows[0].flags, "1");
  EXPECT_EQ(plan.changes, 1);
  EXPECT_EQ(plan.leftOut, 3);
}

// The database may have an inhibit where the map shows a crosspoint that conflicts with it.
TEST_F(PlanInhibitsTest, ClearsFlagsWhateverTheMapShows) {
  grid_.SetMark(1, 1, Mark::Crosspoint);
  grid_.SetMark(1, 2, Mark::Inhibit);
  const InhibitPlan plan = PlanInhibits(grid_, {1, 2, 1, 3}, false, Texts{"11011111", "0"});
  ASSERT_EQ(plan.rows.size(), 1U);
  EXPECT_EQ(plan.rows[0].flags, "00011111");
  EXPECT_THAT(plan.rows[0].inputs, ElementsAre(1, 2));
  EXPECT_EQ(plan.changes, 2);
  EXPECT_EQ(plan.leftOut, 0);
}

TEST_F(PlanInhibitsTest, PassesOverOutputsWithoutARecord) {
  const InhibitPlan plan = PlanInhibits(grid_, {1, 2, 1, 1}, true, Texts{std::nullopt, "0"});
  ASSERT_EQ(plan.rows.size(), 1U);
  EXPECT_EQ(plan.rows[0].output, 2);
}

// A block of one cell stores what the tool stores of a single one.
TEST_F(PlanInhibitsTest, OfOneCellItStoresWhatTheToolStores) {
  for (const char* const text : {"", "1", "01", "00000000", "0101x", "2"}) {
    for (int input = 1; input <= 8; ++input) {
      const InhibitDecision one = grid_.DecideInhibit(text, 2, input + 1);
      const bool inhibit = one.mark == Mark::Inhibit;
      const InhibitPlan plan = PlanInhibits(grid_, {1, 1, input, input}, inhibit, Texts{text});
      ASSERT_EQ(plan.rows.size(), 1U) << text << " " << input;
      EXPECT_EQ(plan.rows[0].flags, one.flags) << text << " " << input;
    }
  }
}

TEST_F(PlanInhibitsTest, NothingToDoIsNothingToStore) {
  const InhibitPlan plan = PlanInhibits(grid_, {1, 1, 1, 2}, true, Texts{"11"});
  EXPECT_THAT(plan.rows, IsEmpty());
  EXPECT_EQ(plan.changes, 0);
}

TEST(CellBlock, CountsItsCells) {
  EXPECT_EQ(CellBlock().Cells(), 0);
  EXPECT_EQ((CellBlock{3, 8, 1, 6}.Cells()), 36);
  EXPECT_EQ((CellBlock{3, 3, 1, 1}.Cells()), 1);
}

}  // namespace
}  // namespace rules
