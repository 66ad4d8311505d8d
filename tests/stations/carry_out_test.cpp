// SPDX-License-Identifier: MIT

#include "stations/carry_out.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stations/fold.h"
#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CarryOutTest : public testing::Test {
 protected:
  CarryOutTest() {
    database_.AddStation(5, {{"Label", "MIC"}, {"InLabel", "IN 5"}, {"Hidden", 0}});
    database_.AddStation(7, {{"Label", "CAM"}});
  }

  jet::Database& Database() { return *database_.Files().Database(); }

  static Change LabelOf(int station, const jet::Value& before, const jet::Value& after) {
    return {Origin::Operator, station, {{"Label", before, after}}};
  }

  std::vector<std::string> Conflicts(const std::vector<Change>& changes, Direction direction) {
    std::vector<Conflict> conflicts;
    EXPECT_TRUE(FindConflicts(Database(), changes, direction, &conflicts).ok());
    std::vector<std::string> words;
    for (const Conflict& conflict : conflicts) {
      words.push_back(std::to_string(conflict.station) + " " + conflict.field + ": " +
                      conflict.present.Text() + ", wanted " + conflict.wanted.Text());
    }
    return words;
  }

  model::Status CarryOut(const std::vector<Change>& changes, Direction direction) {
    return stations::CarryOut(Database(), changes, direction, {changes_, Origin::Operator});
  }

  test::SmallDatabase database_;
  Changes changes_;
  test::RecordingChanges heard_{changes_};
};

TEST_F(CarryOutTest, ChangesAreCarriedOutAgainAndTakenBack) {
  const std::vector<Change> changes = {
      {Origin::Operator, 5, {{"Label", "MIC", "LINE"}, {"Hidden", 0, 1}}}, LabelOf(7, "CAM", "VT")};
  ASSERT_TRUE(CarryOut(changes, Direction::Again).ok());
  EXPECT_THAT(heard_.Take(), ElementsAre("operator 5: Label MIC > LINE, Hidden 0 > 1",
                                         "operator 7: Label CAM > VT"));
  EXPECT_EQ(heard_.times, 1) << "they are one act";
  ASSERT_TRUE(CarryOut(changes, Direction::Back).ok());
  EXPECT_THAT(heard_.Take(), ElementsAre("operator 5: Label LINE > MIC, Hidden 1 > 0",
                                         "operator 7: Label VT > CAM"));
}

TEST_F(CarryOutTest, WhereNobodyChangedAnythingSinceThereIsNoConflict) {
  EXPECT_THAT(Conflicts({LabelOf(5, "MIC", "LINE")}, Direction::Again), IsEmpty());
  EXPECT_THAT(Conflicts({LabelOf(5, "LINE", "MIC")}, Direction::Back), IsEmpty());
  EXPECT_THAT(Conflicts({LabelOf(5, "LINE", "MIC")}, Direction::Again), IsEmpty())
      << "it has the wanted value";
}

TEST_F(CarryOutTest, AFieldThatWasChangedSinceIsAConflict) {
  EXPECT_THAT(Conflicts({LabelOf(5, "A", "B"), LabelOf(7, "CAM", "VT")}, Direction::Again),
              ElementsAre("5 Label: MIC, wanted B"));
  EXPECT_THAT(Conflicts({LabelOf(5, "A", "B")}, Direction::Back),
              ElementsAre("5 Label: MIC, wanted A"));
}

TEST_F(CarryOutTest, AStationWithoutARecordIsAConflictAndIsPassedOver) {
  const std::vector<Change> changes = {LabelOf(6, "A", "B"), LabelOf(7, "CAM", "VT")};
  EXPECT_THAT(Conflicts(changes, Direction::Again), ElementsAre("6 : , wanted "));
  ASSERT_TRUE(CarryOut(changes, Direction::Again).ok());
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
}

TEST_F(CarryOutTest, WithoutWhatIsInConflictTheRestIsLeft) {
  const std::vector<Change> changes = {
      {Origin::Operator, 5, {{"Label", "A", "B"}, {"InLabel", "IN 5", "IN"}}},
      LabelOf(6, "A", "B")};
  std::vector<Conflict> conflicts;
  ASSERT_TRUE(FindConflicts(Database(), changes, Direction::Again, &conflicts).ok());
  ASSERT_TRUE(CarryOut(Without(changes, conflicts), Direction::Again).ok());
  EXPECT_THAT(heard_.seen, ElementsAre("operator 5: InLabel IN 5 > IN"));
}

TEST_F(CarryOutTest, OneThatCannotBeStoredKeepsAllFromBeingStored) {
  EXPECT_FALSE(CarryOut({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", std::string(300, 'x'))},
                        Direction::Again)
                   .ok());
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
  EXPECT_THAT(heard_.seen, IsEmpty());
}

TEST_F(CarryOutTest, NullIsAValueToGoBackTo) {
  ASSERT_TRUE(
      CarryOut({{Origin::Operator, 7, {{"Notes", jet::Value(), ""}}}}, Direction::Again).ok());
  EXPECT_THAT(Conflicts({{Origin::Operator, 7, {{"Notes", jet::Value(), ""}}}}, Direction::Back),
              IsEmpty());
  ASSERT_TRUE(
      CarryOut({{Origin::Operator, 7, {{"Notes", jet::Value(), ""}}}}, Direction::Back).ok());
  EXPECT_EQ(database_.Field(7, "Notes"), "null");
}

TEST_F(CarryOutTest, TheSharedRecordSetStaysWhereItIs) {
  database_.GoTo(7);
  ASSERT_TRUE(CarryOut({LabelOf(5, "MIC", "LINE")}, Direction::Again).ok());
  EXPECT_EQ(database_.CurrentStation(), 7);
}

// Whoever hears of it and draws the current record draws that of the operator.
TEST_F(CarryOutTest, WhatItMovesInStandsWhereItStoodWhenItIsToldOf) {
  class Where : public ChangeObserver {
   public:
    Where(Changes& changes, test::SmallDatabase& database)
        : ChangeObserver(changes), database_(database) {}
    void Changed(std::span<const Change> /*changes*/) override {
      station_ = database_.CurrentStation();
    }
    int Station() const { return station_; }

   private:
    test::SmallDatabase& database_;
    int station_ = 0;
  };
  const Where where(changes_, database_);
  database_.GoTo(7);
  ASSERT_TRUE(stations::CarryOut(*database_.Files().Stations(), {{LabelOf(5, "MIC", "LINE")}},
                                 Direction::Again, {changes_, Origin::File})
                  .ok());
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(where.Station(), 7);
  EXPECT_EQ(database_.CurrentStation(), 7);
}

TEST(FoldTest, OfAStationChangedTwiceAtOnceTheFirstAndTheLastCount) {
  const std::vector<Change> changes = {{Origin::Operator, 2, {{"Label", "A", "B"}}},
                                       {Origin::Operator, 2, {{"Label", "B", "C"}}}};
  const std::vector<Change> folded = Fold(changes);
  ASSERT_EQ(folded.size(), 1u);
  EXPECT_EQ(folded[0].fields[0].before, jet::Value("A"));
  EXPECT_EQ(folded[0].fields[0].after, jet::Value("C"));
}

}  // namespace
}  // namespace stations
