// SPDX-License-Identifier: MIT

#include "views/rules/button_tip.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/small_database.h"

namespace rules {
namespace {

class ButtonTipTest : public testing::Test {
 protected:
  ButtonTipTest() {
    for (int n = 1; n <= 64; ++n) {
      database_.AddStation(
          n, {{"Label", "L" + std::to_string(n)}, {"InLabel", "I" + std::to_string(n)}});
    }
  }

  std::string Tip(int type, const std::string& targets) {
    const stations::TargetLabels labels(database_.Files().Stations());
    stations::ButtonProgram button;
    button.type.value = type;
    button.targets.value = targets;
    return ButtonTip(button, labels, 64);
  }

  test::SmallDatabase database_;
};

TEST_F(ButtonTipTest, NamesTheOperationAndAllTargets) {
  EXPECT_EQ(Tip(0, "011"), "TALK: L2, L3");
  EXPECT_EQ(Tip(1, "0001"), "LISTEN: I4");
  EXPECT_EQ(Tip(3, "00001"), "EXTRN: Chan 05");
  EXPECT_EQ(Tip(254, std::string(64, '0')), "NULL");
}

TEST_F(ButtonTipTest, ManyTargetsTakeLinesAndTheLastAreCounted) {
  EXPECT_EQ(Tip(255, "111111111"), "GROUP: L1, L2, L3, L4, L5, L6, L7, L8,\nL9");
  const std::string all = Tip(255, std::string(64, '1'));
  EXPECT_TRUE(all.ends_with("L31, L32 … (64)")) << all;
}

}  // namespace
}  // namespace rules
