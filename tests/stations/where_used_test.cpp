// SPDX-License-Identifier: MIT

#include "stations/where_used.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/small_database.h"

namespace stations {
namespace {

using test::kNoFlags;
using testing::ElementsAre;

std::string At(int member) {
  std::string flags = kNoFlags;
  flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

class WhereUsedTest : public testing::Test {
 protected:
  WhereUsedTest() {
    model_.StationCount = 66;
    model_.ChannelCount = 8;
    model_.ButtonCount = 2;
    model_.ChkBoxCount = 64;
    for (const int station : {1, 2, 3, 5, 66, 70}) {
      database_.AddStation(station, {{"B1 Type", 254},
                                     {"B1 Prog", kNoFlags},
                                     {"B2 Type", 254},
                                     {"B2 Prog", kNoFlags},
                                     {"OptoType", 254},
                                     {"OptoStations", kNoFlags},
                                     {"OptoChannel", 1},
                                     {"Inhibits", "00000000"}});
    }
  }

  std::vector<std::string> Uses(int station) {
    std::vector<Use> uses;
    EXPECT_TRUE(FindUses(*database_.Files().Stations(), station, model_, &uses).ok());
    std::vector<std::string> words;
    for (const Use& use : uses) {
      constexpr const char* kKinds[] = {"button", "opto", "channel", "inhibit"};
      words.push_back(std::string(kKinds[static_cast<int>(use.kind)]) + " " +
                      std::to_string(use.station) + " " + std::to_string(use.part) + " " +
                      std::to_string(use.type));
    }
    return words;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
};

TEST_F(WhereUsedTest, ButtonsThenOptosThenInhibits) {
  database_.Set(1, "Inhibits", "00100000");  // output 1 does not hear input 3
  database_.Set(2, "OptoType", 1);
  database_.Set(2, "OptoStations", At(3));
  database_.Set(2, "OptoChannel", 3);
  database_.Set(3, "Inhibits", "10000001");
  database_.Set(5, "B1 Type", 0);
  database_.Set(5, "B1 Prog", At(3));
  database_.Set(5, "B2 Type", 1);
  database_.Set(5, "B2 Prog", At(3));
  EXPECT_THAT(Uses(3), ElementsAre("button 5 1 0", "button 5 2 1", "opto 2 2 1", "channel 2 2 1",
                                   "inhibit 1 3 0", "inhibit 3 1 0", "inhibit 3 8 0"));
  EXPECT_THAT(Uses(8), ElementsAre("inhibit 3 8 0"));
}

TEST_F(WhereUsedTest, WhatIsInactiveOrOutsideTheTablePointsNowhere) {
  database_.Set(1, "B1 Prog", At(3));  // inactive, with a target left
  database_.Set(1, "B2 Type", 77);
  database_.Set(1, "B2 Prog", At(3));
  database_.Set(1, "OptoStations", At(3));
  database_.Set(1, "OptoChannel", 3);
  EXPECT_THAT(Uses(3), ElementsAre());
}

TEST_F(WhereUsedTest, AnExternalDestinationIsTheStationBehindThe64) {
  database_.Set(1, "B1 Type", 3);
  database_.Set(1, "B1 Prog", At(2));
  EXPECT_THAT(Uses(66), ElementsAre("button 1 1 3"));
  EXPECT_THAT(Uses(2), ElementsAre());
}

TEST_F(WhereUsedTest, StationsBeyondTheCountAreNotLookedAt) {
  database_.Set(70, "B1 Type", 0);
  database_.Set(70, "B1 Prog", At(3));
  database_.Set(66, "Inhibits", "00100000");
  EXPECT_THAT(Uses(3), ElementsAre());
}

TEST_F(WhereUsedTest, WhatCannotBeReadIsLeftOutAndSaid) {
  test::SmallDatabase without(test::StationsWithout("Inhibits"));
  without.AddStation(1, {{"B1 Type", 0}, {"B1 Prog", At(3)}, {"B2 Type", 0}, {"B2 Prog", ""}});
  std::vector<Use> uses;
  EXPECT_EQ(FindUses(*without.Files().Stations(), 3, model_, &uses).Number(), 3265);
  EXPECT_THAT(uses, ElementsAre(Use{.kind = Use::Kind::Button, .station = 1, .part = 1}));
}

}  // namespace
}  // namespace stations
