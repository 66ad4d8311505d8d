// SPDX-License-Identifier: MIT

#include "stations/operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/keep_position.h"
#include "tests/support/small_database.h"

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

class TargetCaptionsTest : public testing::Test {
 protected:
  TargetCaptionsTest() {
    database_.AddStation(1, {{"Label", "Studio A"}, {"InLabel", "Mic 1"}});
    database_.AddStation(2, {{"Label", jet::Value()}, {"InLabel", jet::Value()}});
    database_.AddStation(3, {{"Label", "Régie"}, {"InLabel", ""}});
  }

  std::vector<std::string> Captions(int code, int count) {
    std::vector<std::string> captions;
    status_ = ReadTargetCaptions(*database_.Files().Stations(), code, count, &captions);
    return captions;
  }

  test::SmallDatabase database_;
  model::Status status_;
};

TEST_F(TargetCaptionsTest, AreTheLabelsOfStationsOrSources) {
  for (const int code : {0, 255}) {
    EXPECT_THAT(Captions(code, 3), ElementsAre("Studio A", "Sta. 002", "Régie"));
    EXPECT_TRUE(status_.ok());
  }
  for (const int code : {1, 2}) {
    EXPECT_THAT(Captions(code, 3), ElementsAre("Mic 1", "Sta. 002", ""));
    EXPECT_TRUE(status_.ok());
  }
}

TEST_F(TargetCaptionsTest, AreNumbersOfChannelsForTheOthers) {
  for (const int code : {3, 254, 99}) {
    EXPECT_THAT(Captions(code, 3), ElementsAre("Chan 01", "Chan 02", "Chan 03"));
    EXPECT_TRUE(status_.ok());
  }
}

TEST_F(TargetCaptionsTest, OfStationsThatAreNotThereAreTheirNumbers) {
  EXPECT_THAT(Captions(0, 5), ElementsAre("Studio A", "Sta. 002", "Régie", "Sta. 004", "Sta. 005"));
  EXPECT_TRUE(status_.ok()) << "a small system is no damaged one";
}

}  // namespace
}  // namespace stations
