// SPDX-License-Identifier: MIT

#include "stations/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace stations {
namespace {

using testing::ElementsAre;

std::string Line(const Operation& operation) {
  char colour[8];
  std::snprintf(colour, sizeof colour, "%06X", operation.colour);
  return std::to_string(operation.code) + "|" + operation.label + "|" + operation.option + "|" +
         colour + "|" + operation.buttonTargets + "|" + operation.optoTargets;
}

TEST(Operations, AreSixWithTheirTexts) {
  std::vector<std::string> lines;
  for (const Operation& operation : AllOperations()) lines.push_back(Line(operation));
  EXPECT_THAT(
      lines,
      ElementsAre("0|TALK|Talk|80FF80|Station(s) To Be Called Upon Button Press"
                  "|Station(s) To Be Called When OPTO Is Activated",
                  "1|LISTEN|Listen|FFFF80|Source To Be Monitored Upon Button Press"
                  "|Source To Be Monitored When OPTO Is Activated",
                  "2|P-LSTN|P-Listen|FF8080|Source To Be Monitored Upon Button Press"
                  "|Source To Be Monitored When OPTO Is Activated",
                  "3|EXTRN|External|FF80FF|External Switcher Destinatons"
                  "|External Channel To Be Called When OPTO Is Activated",
                  "254|NULL|Inactive|808080|Button Specified Inactive|OPTO Specified Inactive",
                  "255|GROUP|Group|8080FF|Station(s) To Be Called Upon Button Press"
                  "|Station(s) To Be Called When OPTO Is Activated"));
}

TEST(Operations, OfAnotherCodeIsShownAsInactive) {
  for (const int code : {-1, 4, 77, 253, 256, 32767}) {
    EXPECT_STREQ(OperationOf(code).label, "NULL") << code;
    EXPECT_EQ(OperationOf(code).targets, TargetKind::Channels) << code;
    EXPECT_FALSE(IsOperation(code)) << code;
  }
  for (const int code : {0, 1, 2, 3, 254, 255}) EXPECT_TRUE(IsOperation(code)) << code;
}

}  // namespace
}  // namespace stations
