// SPDX-License-Identifier: MIT

#include "switcher/comparison/carried.h"

#include <gtest/gtest.h>

#include <string>

namespace switcher {
namespace {

TEST(Carried, LabelsWithoutWhatDoesNotFitIntoEightCharacters) {
  EXPECT_TRUE(IsSameInMessage("Label", "MIC", "MIC   "));
  EXPECT_TRUE(IsSameInMessage("InLabel", "STUDIO 1 LEFT", "STUDIO 1"));
  EXPECT_TRUE(IsSameInMessage("Label", jet::Value(), ""));
  EXPECT_FALSE(IsSameInMessage("Label", "MIC", "MIK"));
  EXPECT_FALSE(IsSameInMessage("InLabel", "MIC", " MIC"));
  EXPECT_FALSE(IsSameInMessage("Label", "MIC", jet::Value()));
}

TEST(Carried, HiddenIsOneOrNot) {
  EXPECT_TRUE(IsSameInMessage("Hidden", jet::Value(), 0));
  EXPECT_TRUE(IsSameInMessage("Hidden", 2, 0));
  EXPECT_FALSE(IsSameInMessage("Hidden", 1, 0));
  EXPECT_FALSE(IsSameInMessage("Hidden", 2, 1));
}

TEST(Carried, MissingFlagsAreZero) {
  for (const char* const field : {"Inhibits", "Relays", "OptoStations", "B32 Prog"}) {
    EXPECT_TRUE(IsSameInMessage(field, "01", "0100")) << field;
    EXPECT_TRUE(IsSameInMessage(field, jet::Value(), std::string(64, '0'))) << field;
    EXPECT_TRUE(IsSameInMessage(field, "x1", "01")) << field;
    EXPECT_FALSE(IsSameInMessage(field, "01", "0101")) << field;
  }
}

TEST(Carried, NumbersHaveEightBits) {
  for (const char* const field : {"B1 Type", "B1 First", "OptoType", "OptoChannel", "OptoFirst"}) {
    EXPECT_TRUE(IsSameInMessage(field, jet::Value(), 0)) << field;
    EXPECT_TRUE(IsSameInMessage(field, -1, 255)) << field;
    EXPECT_TRUE(IsSameInMessage(field, 257, 1)) << field;
    EXPECT_FALSE(IsSameInMessage(field, 1, 2)) << field;
  }
}

TEST(Carried, NothingOfWhatNeverTravels) {
  for (const char* const field : {"Notes", "SysOutput", "StationNum", "B0 Type", "Unheard Of"}) {
    EXPECT_TRUE(IsSameInMessage(field, "one", "other")) << field;
  }
}

}  // namespace
}  // namespace switcher
