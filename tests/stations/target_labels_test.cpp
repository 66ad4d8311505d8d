// SPDX-License-Identifier: MIT

#include "stations/target_labels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/small_database.h"

namespace stations {
namespace {

using testing::ElementsAre;

class TargetCaptionsTest : public testing::Test {
 protected:
  TargetCaptionsTest() {
    database_.AddStation(1, {{"Label", "Studio A"}, {"InLabel", "Mic 1"}});
    database_.AddStation(2, {{"Label", jet::Value()}, {"InLabel", jet::Value()}});
    database_.AddStation(3, {{"Label", "Régie"}, {"InLabel", ""}});
  }

  std::vector<std::string> Captions(int code, int count) {
    auto captions = TargetLabels(database_.Files().Stations()).Captions(code, count);
    status_ = captions.status;
    return captions.value;
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
