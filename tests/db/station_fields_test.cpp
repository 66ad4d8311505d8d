// SPDX-License-Identifier: MIT

#include "db/station_fields.h"

#include <gtest/gtest.h>

namespace db {
namespace {

TEST(StationFields, AButtonsFieldsNameIt) {
  EXPECT_EQ(ButtonField(1, kButtonType), "B1 Type");
  EXPECT_EQ(ButtonOfField("B1 Type"), 1);
  EXPECT_EQ(ButtonOfField("B32 First"), 32);
  EXPECT_EQ(ButtonOfField("B9 Prog"), 9);
}

TEST(StationFields, OtherFieldsAreNoButtons) {
  for (const char* const field : {"", "B", "B ", "B1", "B1 ", "B0 Type", "B-1 Type", "B01 Type",
                                  "B1 Typ", "B1 Type ", "B99999999999 Type", "Label", "C1 Type"}) {
    EXPECT_EQ(ButtonOfField(field), 0) << field;
  }
}

}  // namespace
}  // namespace db
