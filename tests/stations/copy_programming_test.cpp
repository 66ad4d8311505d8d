// SPDX-License-Identifier: MIT

#include "stations/copy_programming.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stations/carry_out.h"
#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using test::kNoFlags;
using testing::ElementsAre;
using testing::IsEmpty;

std::string Targets(const std::vector<int>& members) {
  std::string flags = kNoFlags;
  for (const int member : members) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

class CopyProgrammingTest : public testing::Test {
 protected:
  CopyProgrammingTest() {
    for (const int station : {1, 2, 3, 66, 67}) {
      database_.AddStation(station, {{"Relays", kNoFlags},
                                     {"B1 Type", 254},
                                     {"B1 First", 1},
                                     {"B1 Prog", kNoFlags},
                                     {"B2 Type", 254},
                                     {"B2 First", 1},
                                     {"B2 Prog", kNoFlags},
                                     {"Label", "Sta."}});
    }
  }

  void SetButton(int station, int button, int type, int first, const std::string& targets) {
    const std::string name = "B" + std::to_string(button);
    database_.Set(station, name + " Type", type);
    database_.Set(station, name + " First", first);
    database_.Set(station, name + " Prog", targets);
  }

  // "0 5 000010...": type, first target and the targets' numbers.
  std::string Button(int station, int button) {
    const std::string name = "B" + std::to_string(button);
    std::string words = database_.Field(station, name + " Type") + " " +
                        database_.Field(station, name + " First") + ":";
    const std::string flags = database_.Field(station, name + " Prog");
    for (std::size_t i = 0; i < flags.size(); ++i) {
      if (flags[i] == '1') words += " " + std::to_string(i + 1);
    }
    return words;
  }

  CopyPlan Plan(const CopyOrder& order, const std::vector<int>& to) {
    CopyPlan plan;
    EXPECT_TRUE(PlanCopy(*database_.Files().Stations(), order, to, &plan).ok());
    return plan;
  }

  CopyPlan Copy(const CopyOrder& order, const std::vector<int>& to) {
    CopyPlan plan = Plan(order, to);
    EXPECT_TRUE(CarryOut(*database_.Files().Stations(), plan.changes, Direction::Again,
                         {changes_, Origin::Operator})
                    .ok());
    return plan;
  }

  static CopyOrder Buttons(int from, int first, int last, bool own = false) {
    return {.from = from,
            .firstButton = first,
            .lastButton = last,
            .pointsAtOwn = own,
            .targetCount = 64};
  }

  test::SmallDatabase database_;
  Changes changes_;
  test::RecordingChanges heard_{changes_};
};

TEST_F(CopyProgrammingTest, OneButtonGoesWithOperationTargetsAndFirstTarget) {
  SetButton(1, 1, 255, 5, Targets({5, 9}));
  SetButton(1, 2, 1, 7, Targets({7}));
  const CopyPlan plan = Copy(Buttons(1, 1, 1), {2, 3});
  EXPECT_THAT(plan.cannotPoint, IsEmpty());
  EXPECT_EQ(Button(2, 1), "255 5: 5 9");
  EXPECT_EQ(Button(3, 1), "255 5: 5 9");
  EXPECT_EQ(Button(2, 2), "254 1:") << "only that button";
  EXPECT_EQ(heard_.times, 1) << "one act";
  EXPECT_THAT(heard_.Take(),
              ElementsAre("operator 2: B1 Prog " + kNoFlags + " > " + Targets({5, 9}) +
                              ", B1 First 1 > 5, B1 Type 254 > 255",
                          "operator 3: B1 Prog " + kNoFlags + " > " + Targets({5, 9}) +
                              ", B1 First 1 > 5, B1 Type 254 > 255"));
}

TEST_F(CopyProgrammingTest, WhoHasItAlreadyDoesNotChangeAndPlanningStoresNothing) {
  SetButton(1, 1, 0, 5, Targets({5}));
  SetButton(2, 1, 0, 5, Targets({5}));
  const CopyPlan plan = Plan(Buttons(1, 1, 2), {1, 2, 3, 40});
  ASSERT_EQ(plan.changes.size(), 1U) << "itself, one that has it and one that is not there are not";
  EXPECT_EQ(plan.changes[0].station, 3);
  EXPECT_EQ(Button(3, 1), "254 1:");
  EXPECT_THAT(heard_.seen, IsEmpty());
}

TEST_F(CopyProgrammingTest, AShortOrMissingTextOfTargetsIsOneWithoutThem) {
  SetButton(1, 1, 0, 3, "001");
  SetButton(2, 1, 0, 3, Targets({3}));
  SetButton(3, 1, 0, 3, "0010");
  database_.Set(3, "Relays", jet::Value());
  CopyOrder order = Buttons(1, 1, 1);
  order.relays = true;
  EXPECT_THAT(Plan(order, {2, 3}).changes, IsEmpty());
}

TEST_F(CopyProgrammingTest, AButtonWithoutTargetsIsCopiedAsInactive) {
  SetButton(1, 1, 0, 5, kNoFlags);  // an operation was chosen and no target yet
  SetButton(2, 1, 1, 4, Targets({4}));
  Copy(Buttons(1, 1, 1), {2});
  EXPECT_EQ(Button(2, 1), "254 1:");
  EXPECT_EQ(Button(1, 1), "0 5:") << "what is copied stays as it is";
}

TEST_F(CopyProgrammingTest, TheFirstTargetIsTheLowestWhateverIsStoredOfIt) {
  SetButton(1, 1, 2, 60, Targets({8, 60}));
  Copy(Buttons(1, 1, 1), {2});
  EXPECT_EQ(Button(2, 1), "2 8: 8 60");
}

TEST_F(CopyProgrammingTest, TargetsBeyondTheCountStayThoseOfTheCopy) {
  SetButton(1, 1, 0, 2, Targets({2}) + "1");
  SetButton(2, 1, 254, 1, kNoFlags + "011");
  Copy(Buttons(1, 1, 1), {2});
  EXPECT_EQ(database_.Field(2, "B1 Prog"), Targets({2}) + "011");
}

TEST_F(CopyProgrammingTest, AnOperationOutsideTheTableAndAnInactiveOneWithTargetsAreKept) {
  SetButton(1, 1, 77, 2, Targets({2}));
  SetButton(1, 2, 254, 1, Targets({1, 3}));
  Copy(Buttons(1, 1, 2, true), {3});
  EXPECT_EQ(Button(3, 1), "77 2: 2");
  EXPECT_EQ(Button(3, 2), "254 1: 1 3") << "its targets are no stations";
}

TEST_F(CopyProgrammingTest, AButtonThatPointsAtItsOwnStationPointsAtTheCopysOwnOnDemand) {
  SetButton(1, 1, 1, 1, Targets({1}));
  SetButton(1, 2, 255, 1, Targets({1, 3, 9}));
  Copy(Buttons(1, 1, 2, true), {2, 3});
  EXPECT_EQ(Button(2, 1), "1 2: 2");
  EXPECT_EQ(Button(2, 2), "255 2: 2 3 9");
  EXPECT_EQ(Button(3, 1), "1 3: 3");
  EXPECT_EQ(Button(3, 2), "255 3: 3 9") << "it was a target already";
  Copy(Buttons(1, 1, 2), {2});
  EXPECT_EQ(Button(2, 1), "1 1: 1") << "not asked for";
}

// Behind the 64 stations, an external destination is what a station is called by.
TEST_F(CopyProgrammingTest, AnExternalDestinationIsTheStationBehindThe64) {
  SetButton(66, 1, 3, 2, Targets({2, 9}));
  SetButton(66, 2, 3, 1, Targets({1}));
  const CopyPlan plan = Copy(Buttons(66, 1, 2, true), {67, 3});
  EXPECT_EQ(Button(67, 1), "3 3: 3 9");
  EXPECT_EQ(Button(67, 2), "3 1: 1");
  EXPECT_THAT(plan.cannotPoint, ElementsAre(3));
  EXPECT_EQ(Button(3, 1), "254 1:") << "nothing of it is stored";
}

TEST_F(CopyProgrammingTest, AStationBeyondTheTargetsCannotPointAtItself) {
  SetButton(1, 1, 0, 1, Targets({1}));
  EXPECT_THAT(Plan(Buttons(1, 1, 1, true), {2, 66}).cannotPoint, ElementsAre(66));
  EXPECT_THAT(Plan(Buttons(1, 1, 1), {2, 66}).cannotPoint, IsEmpty());
}

TEST_F(CopyProgrammingTest, RelaysGoAlone) {
  database_.Set(1, "Relays", Targets({3, 17}));
  SetButton(1, 1, 0, 5, Targets({5}));
  database_.Set(3, "Relays", kNoFlags + "1");
  Copy({.from = 1, .relays = true, .targetCount = 64}, {2, 3});
  EXPECT_EQ(database_.Field(2, "Relays"), Targets({3, 17}));
  EXPECT_EQ(database_.Field(3, "Relays"), Targets({3, 17}) + "1");
  EXPECT_EQ(Button(2, 1), "254 1:");
}

TEST_F(CopyProgrammingTest, WhatCannotBeReadIsNotCopied) {
  CopyPlan plan;
  EXPECT_EQ(
      PlanCopy(*database_.Files().Stations(), Buttons(9, 1, 1), std::vector{2}, &plan).Number(),
      3021);
  test::SmallDatabase without(test::StationsWithout("B2 Prog"));
  without.AddStation(1, {{"B1 Prog", Targets({1})}});
  without.AddStation(2, {});
  EXPECT_EQ(PlanCopy(*without.Files().Stations(), Buttons(1, 1, 2), std::vector{2}, &plan).Number(),
            3265);
  EXPECT_THAT(plan.changes, IsEmpty());
}

}  // namespace
}  // namespace stations
