// SPDX-License-Identifier: MIT

#include "stations/button_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "stations/operations.h"
#include "stations/relays.h"
#include "stations/snapshot.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using test::kNoFlags;
using testing::ElementsAre;

std::string With(int target) {
  std::string flags = kNoFlags;
  flags[static_cast<std::size_t>(target - 1)] = '1';
  return flags;
}

// What is read of the first buttons of the current record, and the first failure.
struct ReadButtons {
  ReadButtons(jet::RecordSet& stations, int count) {
    const StationSnapshot station(&stations, count);
    for (const ButtonProgram& button : station.buttons) {
      const auto caption = ButtonCaption(button, station.targets);
      types.push_back(button.type.value);
      captions.push_back(caption.value);
      if (failure == 0) failure = caption.status.Number();
    }
  }

  std::vector<int> types;
  std::vector<std::string> captions;
  int failure = 0;
};

class ButtonProgramTest : public testing::Test {
 protected:
  ButtonProgramTest() {
    database_.AddStation(1, {{"Label", "Studio A"},
                             {"InLabel", "Mic 1"},
                             {"Relays", kNoFlags},
                             {"B1 Type", 0},
                             {"B1 First", 5},
                             {"B1 Prog", With(5)}});
    database_.AddStation(5, {{"Label", "Prod"}, {"InLabel", "Cam 5"}});
    database_.AddStation(9, {{"InLabel", "Cam 9"}});
    database_.AddStation(69, {{"Label", "Ext. 005"}, {"InLabel", "Line 5"}});
    database_.GoTo(1);
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }
  void Set(const char* field, const jet::Value& value) { database_.Set(1, field, value); }
  std::string Field(const char* field) { return database_.Field(1, field); }

  // Every test ends on the record where it began.
  void TearDown() override {
    if (Stations().HasRecord()) {
      EXPECT_EQ(database_.CurrentStation(), 1);
    }
  }

  std::string Chosen() {
    const StationSnapshot station(&Stations(), 1);
    const auto caption = ChosenCaption(station.buttons[0], station.targets);
    EXPECT_TRUE(caption.status.ok());
    return caption.value;
  }
  std::string Edited() {
    const StationSnapshot station(&Stations(), 1);
    const auto caption = EditedCaption(station.buttons[0], 64, station.targets);
    EXPECT_TRUE(caption.status.ok());
    return caption.value;
  }

  test::SmallDatabase database_;
  Changes changes_;
  const Author author_{changes_, Origin::Operator};
};

TEST_F(ButtonProgramTest, IsReadAndNullIsNothing) {
  const ButtonProgram first = ReadButton(Stations(), 1);
  ASSERT_TRUE(first.Outcome().ok());
  EXPECT_EQ(first.type.value, 0);
  EXPECT_EQ(first.first.value, 5);
  EXPECT_EQ(first.targets.value, With(5));
  const ButtonProgram second = ReadButton(Stations(), 2);
  ASSERT_TRUE(second.Outcome().ok());
  EXPECT_EQ(second.type.value, 0);
  EXPECT_EQ(second.first.value, 0);
  EXPECT_EQ(second.targets.value, "");
  Set("B1 Prog",
      "1x\xC3\xBC"
      "1");
  EXPECT_EQ(ReadButton(Stations(), 1).targets.value, "1001");
}

TEST_F(ButtonProgramTest, CaptionsAreTheLabelsOfTheFirstTargets) {
  Set("B2 Type", 3);
  Set("B2 First", 5);
  Set("B3 First", 9);
  Set("B4 First", 7);
  Set("B5 Type", 1);
  Set("B5 First", 5);
  Set("B6 Type", 3);
  Set("B6 First", 0);
  Set("B7 Type", 254);
  Set("B7 First", 1);
  Set("B8 First", -3);
  const ReadButtons read(Stations(), 9);
  EXPECT_EQ(read.failure, 0);
  EXPECT_THAT(read.captions, ElementsAre("Prod", "Ext. 005", "NONE", "NONE", "Prod", "NONE",
                                         "Studio A", "NONE", "NONE"));
}

TEST_F(ButtonProgramTest, TypesAreRead) {
  Set("B2 Type", 255);
  Set("B3 Type", 77);
  EXPECT_THAT(ReadButtons(Stations(), 4).types, ElementsAre(0, 255, 77, 0));
}

TEST_F(ButtonProgramTest, TheCaptionOfAChosenOperation) {
  for (const int type : {0, 255}) {
    Set("B1 Type", type);
    EXPECT_EQ(Chosen(), "Prod") << type;
  }
  for (const int type : {1, 2}) {
    Set("B1 Type", type);
    EXPECT_EQ(Chosen(), "Cam 5") << type;
  }
  Set("B1 Type", 3);
  EXPECT_EQ(Chosen(), "Ext. 005");
  for (const int type : {254, 77}) {
    Set("B1 Type", type);
    EXPECT_EQ(Chosen(), "INACTIVE") << type;
  }
  Set("B1 Type", 0);
  for (const int first : {0, 7, 9}) {
    Set("B1 First", first);
    EXPECT_EQ(Chosen(), "NONE") << first;
  }
  Set("B1 Type", 1);
  Set("B1 First", 9);
  EXPECT_EQ(Chosen(), "Cam 9");
}

TEST_F(ButtonProgramTest, TargetsAreStoredWithTheLowest) {
  bool isInactive = true;
  ASSERT_TRUE(StoreTarget(Stations(), 1, 3, true, 64, author_, &isInactive).ok());
  EXPECT_FALSE(isInactive);
  EXPECT_EQ(Field("B1 Prog"), "0010100000000000000000000000000000000000000000000000000000000000");
  EXPECT_EQ(Field("B1 First"), "3");
  EXPECT_EQ(Edited(), "NONE") << "there is no station 3";
  ASSERT_TRUE(StoreTarget(Stations(), 1, 3, false, 64, author_, &isInactive).ok());
  EXPECT_EQ(Field("B1 Prog"), With(5));
  EXPECT_EQ(Field("B1 First"), "5");
  EXPECT_EQ(Field("B1 Type"), "0");
  EXPECT_EQ(Edited(), "Prod");
  Set("B1 Type", 3);
  EXPECT_EQ(Edited(), "Ext. 005");
  Set("B1 Type", 1);
  EXPECT_EQ(Edited(), "Prod");
}

TEST_F(ButtonProgramTest, TheLastTargetTakenMakesItInactive) {
  bool isInactive = false;
  ASSERT_TRUE(StoreTarget(Stations(), 1, 5, false, 64, author_, &isInactive).ok());
  EXPECT_TRUE(isInactive);
  EXPECT_EQ(Field("B1 Prog"), kNoFlags);
  EXPECT_EQ(Field("B1 First"), "1");
  EXPECT_EQ(Field("B1 Type"), "254");
  EXPECT_EQ(Edited(), "NONE");
}

TEST_F(ButtonProgramTest, WhatIsStoredIsWellFormed) {
  bool isInactive = false;
  Set("B1 Prog", jet::Value());
  ASSERT_TRUE(StoreTarget(Stations(), 1, 64, true, 64, author_, &isInactive).ok());
  EXPECT_EQ(Field("B1 Prog"), With(64));
  EXPECT_EQ(Field("B1 First"), "64");
  Set("B1 Prog", "x1");
  ASSERT_TRUE(StoreTarget(Stations(), 1, 3, true, 64, author_, &isInactive).ok());
  EXPECT_EQ(Field("B1 Prog"), "011" + std::string(61, '0'));
  Set("B1 Prog", kNoFlags + "1?");
  ASSERT_TRUE(StoreTarget(Stations(), 1, 1, true, 64, author_, &isInactive).ok());
  EXPECT_EQ(Field("B1 Prog"), With(1) + "1?");
  ASSERT_TRUE(StoreTarget(Stations(), 1, 1, false, 64, author_, &isInactive).ok());
  EXPECT_EQ(Field("B1 Prog"), kNoFlags + "1?");
  EXPECT_EQ(Field("B1 Type"), "254") << "a target beyond the boxes is no target";
}

TEST_F(ButtonProgramTest, AnotherTypeIsStored) {
  ASSERT_TRUE(StoreType(Stations(), 1, 2, author_).ok());
  EXPECT_EQ(Field("B1 Type"), "2");
  ASSERT_TRUE(StoreType(Stations(), 2, 0, author_).ok());
  EXPECT_EQ(Field("B2 Type"), "0") << "null is no operation yet";
}

TEST_F(ButtonProgramTest, OnlyAButtonWithoutTargetsIsMadeInactive) {
  bool changed = true;
  ASSERT_TRUE(StoreInactive(Stations(), 1, author_, &changed).ok());
  EXPECT_FALSE(changed);
  EXPECT_EQ(Field("B1 Type"), "0");
  Set("B1 Prog", kNoFlags);
  Set("B1 Type", 1);
  ASSERT_TRUE(StoreInactive(Stations(), 1, author_, &changed).ok());
  EXPECT_TRUE(changed);
  EXPECT_EQ(Field("B1 Type"), "254");
  EXPECT_EQ(Field("B1 First"), "1");
  ASSERT_TRUE(StoreInactive(Stations(), 1, author_, &changed).ok());
  EXPECT_FALSE(changed) << "it is already";
  ASSERT_TRUE(StoreInactive(Stations(), 2, author_, &changed).ok());
  EXPECT_TRUE(changed);
  EXPECT_EQ(Field("B2 Type"), "254");
  EXPECT_EQ(Field("B2 Prog"), "null");
}

TEST_F(ButtonProgramTest, RelaysAreStored) {
  ASSERT_TRUE(StoreRelay(Stations(), 64, true, 64, author_).ok());
  EXPECT_EQ(Field("Relays"), With(64));
  ASSERT_TRUE(StoreRelay(Stations(), 64, false, 64, author_).ok());
  EXPECT_EQ(Field("Relays"), kNoFlags);
  Set("Relays", "1z");
  std::string relays;
  ASSERT_TRUE(ReadRelays(Stations(), &relays).ok());
  EXPECT_EQ(relays, "10");
  ASSERT_TRUE(StoreRelay(Stations(), 3, true, 64, author_).ok());
  EXPECT_EQ(Field("Relays"), "101" + std::string(61, '0'));
}

TEST_F(ButtonProgramTest, WithoutARecordEverythingFailsAndNothingBreaks) {
  ASSERT_TRUE(Stations().MoveLast().ok());
  ASSERT_TRUE(Stations().MoveNext().ok());
  bool flag = true;
  EXPECT_EQ(ReadButton(Stations(), 1).Outcome().Number(), 3021);
  const ReadButtons read(Stations(), 3);
  EXPECT_EQ(read.failure, 3021);
  EXPECT_THAT(read.captions, ElementsAre("NONE", "NONE", "NONE"));
  EXPECT_THAT(read.types, ElementsAre(kNoType, kNoType, kNoType));
  EXPECT_EQ(StoreTarget(Stations(), 1, 1, true, 64, author_, &flag).Number(), 3021);
  EXPECT_EQ(StoreType(Stations(), 1, 1, author_).Number(), 3021);
  EXPECT_EQ(StoreInactive(Stations(), 1, author_, &flag).Number(), 3021);
  EXPECT_EQ(StoreRelay(Stations(), 1, true, 64, author_).Number(), 3021);
  EXPECT_FALSE(flag);
}

TEST(ButtonProgramFields, ThatAreLackingFailAlone) {
  Changes changes;
  const Author author{changes, Origin::Operator};
  test::SmallDatabase database(test::StationsWithout("B2 Type"));
  database.AddStation(1, {{"Label", "A"}, {"B1 First", 1}, {"B2 First", 1}, {"B3 First", 1}});
  jet::RecordSet& stations = *database.Files().Stations();
  ASSERT_TRUE(stations.MoveFirst().ok());
  const ReadButtons read(stations, 3);
  EXPECT_EQ(read.failure, 3265);
  EXPECT_THAT(read.captions, ElementsAre("A", "NONE", "A"));
  EXPECT_THAT(read.types, ElementsAre(0, kNoType, 0));
  bool isInactive = false;
  EXPECT_EQ(StoreTarget(stations, 2, 1, false, 64, author, &isInactive).Number(), 3265);
  EXPECT_FALSE(isInactive);
  EXPECT_FALSE(stations.IsChanging());
  EXPECT_EQ(database.Field(1, "B2 First"), "1") << "stored whole or not at all";
}

TEST(ButtonProgramFields, TargetsThatAreLackingTakeNoCaptionAlong) {
  test::SmallDatabase database(test::StationsWithout("B2 Prog"));
  database.AddStation(1, {{"Label", "A"}, {"B1 First", 1}, {"B2 First", 1}});
  jet::RecordSet& stations = *database.Files().Stations();
  ASSERT_TRUE(stations.MoveFirst().ok());
  const ReadButtons read(stations, 2);
  EXPECT_EQ(read.failure, 0);
  EXPECT_THAT(read.captions, ElementsAre("A", "A"));
  EXPECT_EQ(ReadButton(stations, 2).targets.status.Number(), 3265);
  EXPECT_EQ(ReadButton(stations, 2).Outcome().Number(), 3265);
}

}  // namespace
}  // namespace stations
