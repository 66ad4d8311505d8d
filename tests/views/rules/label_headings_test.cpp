// SPDX-License-Identifier: MIT

#include "views/rules/label_headings.h"

#include <gtest/gtest.h>

namespace rules {
namespace {

using stations::kLabelColumns;

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
  ASSERT_EQ(std::size(expected), kLabelHeadings.size());
  for (std::size_t i = 0; i < kLabelColumns.size(); ++i) {
    EXPECT_STREQ(kLabelHeadings[i].caption, expected[i].caption);
    EXPECT_STREQ(kLabelHeadings[i].key, expected[i].key);
    EXPECT_STREQ(kLabelColumns[i].field, expected[i].field);
    EXPECT_EQ(kLabelColumns[i].maxLength, expected[i].maxLength) << expected[i].caption;
    EXPECT_EQ(kLabelHeadings[i].twips, expected[i].twips) << expected[i].caption;
  }
}

}  // namespace
}  // namespace rules
