// SPDX-License-Identifier: MIT

#include "views/differences/difference.h"

#include <gmock/gmock.h>

namespace views {
namespace {

using stations::Change;
using stations::Origin;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Difference, ChoosesTheFieldsOfTickedRows) {
  const std::vector<Change> changes{
      {Origin::Operator,
       3,
       {{"Label", "CAM 1", "CAM 2"}, {"B1 Type", 0, 1}, {"B1 First", 2, 3}, {"Hidden", 0, 1}}},
      {Origin::Operator, 7, {{"Label", "MIC", "VTR"}}},
  };
  Difference button;
  button.station = 3;
  button.fields = {"B1 Type", "B1 First"};
  Difference label;
  label.station = 7;
  label.fields = {"Label"};

  const std::vector<Change> chosen = ChangesOf(changes, std::vector{button});
  ASSERT_EQ(chosen.size(), 1U);
  EXPECT_EQ(chosen[0].station, 3);
  ASSERT_EQ(chosen[0].fields.size(), 2U);
  EXPECT_EQ(chosen[0].fields[0].field, "B1 Type");
  EXPECT_EQ(chosen[0].fields[1].field, "B1 First");

  const std::vector<Change> both = ChangesOf(changes, std::vector{label, button});
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[1].station, 7);
  EXPECT_THAT(ChangesOf(changes, {}), IsEmpty());
}

// A label of one station is not that of another.
TEST(Difference, ARowOfAnotherStationChoosesNothing) {
  const std::vector<Change> changes{{Origin::Operator, 3, {{"Label", "CAM 1", "CAM 2"}}}};
  Difference other;
  other.station = 4;
  other.fields = {"Label"};
  EXPECT_THAT(ChangesOf(changes, std::vector{other}), IsEmpty());
}

}  // namespace
}  // namespace views
