// SPDX-License-Identifier: MIT

#include "stations/history.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "stations/batch.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Outcome = History::Outcome;

class HistoryTest : public testing::Test {
 protected:
  HistoryTest() {
    for (int station = 1; station <= 4; ++station) {
      database_.AddStation(station, {{"Label", "A"}, {"InLabel", "IN"}, {"Hidden", 0}});
    }
  }

  jet::Database& Database() { return *database_.Files().Database(); }

  void Store(Origin origin, int station, std::string_view field, const jet::Value& value) {
    std::unique_ptr<jet::RecordSet> stations;
    ASSERT_TRUE(OpenStation(Database(), station, &stations).ok());
    ASSERT_NE(stations, nullptr);
    Record record(*stations);
    record.Set(field, value);
    ASSERT_TRUE(record.Commit({changes_, origin}).ok());
  }
  void Edit(int station, const std::string& label) {
    Store(Origin::Operator, station, "Label", label);
  }

  // What comes of going in that direction; "-" where there is nothing to go to.
  std::string Go(Direction direction, bool may = true) { return Go(&history_, direction, may); }
  std::string Go(History* history, Direction direction, bool may = true) {
    if (history->Next(direction) == nullptr) return "-";
    Outcome outcome{};
    const model::Status status = history->Go(
        Database(), direction, [may](const Step&) { return may; }, &outcome);
    if (!status.ok()) return "failed";
    const std::map<Outcome, std::string> words = {
        {Outcome::Gone, "gone"}, {Outcome::Refused, "refused"}, {Outcome::Stale, "stale"}};
    return words.at(outcome);
  }
  std::string Undo() { return Go(Direction::Back); }
  std::string Redo() { return Go(Direction::Again); }

  std::string Label(int station) { return database_.Field(station, "Label"); }

  test::SmallDatabase database_;
  Changes changes_;
  History history_{changes_, {.steps = 5, .bytes = 10'000}};
  test::RecordingChanges heard_{changes_};
};

TEST_F(HistoryTest, EditsAreTakenBackAndDoneAgainInTheirOrder) {
  EXPECT_EQ(Undo(), "-");
  EXPECT_EQ(Redo(), "-");
  Edit(1, "B");
  Edit(2, "C");
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(Undo(), "-");
  EXPECT_EQ(Redo(), "gone");
  EXPECT_EQ(Redo(), "gone");
  EXPECT_EQ(Redo(), "-");
  EXPECT_EQ(Undo(), "gone");
  EXPECT_THAT(heard_.seen,
              ElementsAre("operator 1: Label A > B", "operator 2: Label A > C",
                          "undo 2: Label C > A", "undo 1: Label B > A", "redo 1: Label A > B",
                          "redo 2: Label A > C", "undo 2: Label C > A"));
}

TEST_F(HistoryTest, WhatWasStoredAtOnceIsOneStep) {
  {
    Batch batch(Database(), changes_);
    Edit(1, "B");
    Edit(3, "D");
    ASSERT_TRUE(batch.Commit().ok());
  }
  ASSERT_NE(history_.Next(Direction::Back), nullptr);
  EXPECT_EQ(history_.Next(Direction::Back)->size(), 2);
  heard_.times = 0;
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(heard_.times, 1);
  EXPECT_EQ(Label(1) + Label(3), "AA");
  EXPECT_EQ(Undo(), "-");
}

TEST_F(HistoryTest, WhatIsRestoredComparedOrCopiedIsAStepAndWhatTheSwitcherReportsIsNone) {
  Store(Origin::Restore, 1, "Label", "R");
  Store(Origin::Switcher, 4, "Label", "S");
  Store(Origin::Comparison, 2, "Label", "C");
  Store(Origin::Backup, 3, "Label", "K");
  Store(Origin::File, 1, "Label", "F");
  EXPECT_EQ(history_.Next(Direction::Back)->front().origin, Origin::File);
  for (int times = 0; times < 4; ++times) EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(Undo(), "-");
  EXPECT_EQ(Label(1) + Label(2) + Label(3) + Label(4), "AAAS");
}

TEST_F(HistoryTest, ANewStepEndsWhatCouldBeDoneAgainAndAReportDoesNot) {
  Edit(1, "B");
  EXPECT_EQ(Undo(), "gone");
  Store(Origin::Switcher, 2, "Label", "S");
  ASSERT_NE(history_.Next(Direction::Again), nullptr);
  Edit(3, "D");
  EXPECT_EQ(Redo(), "-");
  EXPECT_EQ(Label(1), "A");
}

TEST_F(HistoryTest, WhatNavigationStoresJoinsTheStepThatLedThere) {
  Store(Origin::Operator, 1, "B1 Type", 0);
  Edit(2, "B");
  Store(Origin::Navigation, 1, "B1 Type", 254);
  heard_.Take();
  EXPECT_EQ(Undo(), "gone");
  EXPECT_THAT(heard_.Take(), ElementsAre("undo 2: Label B > A")) << "another station's edit";
  EXPECT_EQ(history_.Next(Direction::Back)->front().origin, Origin::Operator);
  EXPECT_EQ(Undo(), "gone");
  EXPECT_THAT(heard_.Take(), ElementsAre("undo 1: B1 Type 254 > null"));
  EXPECT_EQ(Undo(), "-");
}

TEST_F(HistoryTest, WhatTheSwitcherReportedInBetweenIsNotTakenBackWithTheStepBefore) {
  Store(Origin::Operator, 1, "B1 Type", 0);
  Store(Origin::Switcher, 1, "B1 Type", 1);
  Store(Origin::Navigation, 1, "B1 Type", 254);
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(database_.Field(1, "B1 Type"), "1");
  EXPECT_EQ(Undo(), "stale");
}

TEST_F(HistoryTest, AStepThatNavigationTakesBackIsNoneAnyMore) {
  Store(Origin::Switcher, 1, "B1 Type", 254);
  Edit(2, "B");
  Store(Origin::Operator, 1, "B1 Type", 255);
  Store(Origin::Navigation, 1, "B1 Type", 254);
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(Label(2), "A");
}

TEST_F(HistoryTest, WhatNavigationStoresWithoutAStepBeforeItIsAStep) {
  Store(Origin::Navigation, 1, "B1 Type", 254);
  EXPECT_EQ(history_.Next(Direction::Back)->front().origin, Origin::Navigation);
  Edit(2, "B");
  EXPECT_EQ(Undo(), "gone");
  Store(Origin::Navigation, 3, "B1 Type", 254);
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(database_.Field(3, "B1 Type"), "null");
  EXPECT_EQ(database_.Field(1, "B1 Type"), "254") << "it is a step of its own";
}

TEST_F(HistoryTest, WhatNavigationStoresDoesNotEndWhatCanBeDoneAgain) {
  Edit(1, "B");
  Store(Origin::Operator, 2, "B1 Type", 0);
  Edit(3, "D");
  EXPECT_EQ(Undo(), "gone");
  Store(Origin::Navigation, 2, "B1 Type", 254);
  Store(Origin::Navigation, 4, "B1 Type", 254);
  EXPECT_EQ(Redo(), "gone");
  EXPECT_EQ(Label(3), "D");
}

TEST_F(HistoryTest, AStepWhoseFieldWasChangedSinceIsDroppedAndBlocksNothing) {
  Edit(1, "B");
  Edit(2, "C");
  Store(Origin::Switcher, 2, "Label", "S");
  EXPECT_EQ(Undo(), "stale");
  EXPECT_EQ(Label(2), "S");
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(Label(1), "A");
  EXPECT_EQ(Redo(), "gone");
  EXPECT_EQ(Redo(), "-") << "what was dropped is not done again";
}

// All of it or none: half a paste taken back would be a state that never was.
TEST_F(HistoryTest, OneFieldThatWasChangedSinceDropsTheWholeStep) {
  {
    Batch batch(Database(), changes_);
    Edit(1, "B");
    Edit(2, "C");
    ASSERT_TRUE(batch.Commit().ok());
  }
  Store(Origin::Switcher, 2, "Label", "S");
  EXPECT_EQ(Undo(), "stale");
  EXPECT_EQ(Label(1) + Label(2), "BS");
}

TEST_F(HistoryTest, AStepThatSomebodyElseTookBackIsDropped) {
  Edit(1, "B");
  Store(Origin::Switcher, 1, "Label", "A");
  EXPECT_EQ(Undo(), "stale");
  EXPECT_EQ(Redo(), "-");
}

TEST_F(HistoryTest, AStepOfAStationWithoutARecordIsDropped) {
  Edit(1, "B");
  Edit(2, "C");
  database_.Delete(2);
  EXPECT_EQ(Undo(), "stale");
  EXPECT_EQ(Undo(), "gone");
}

TEST_F(HistoryTest, AStepThatWasTakenBackIsDroppedTooWhenItIsStale) {
  Edit(1, "B");
  EXPECT_EQ(Undo(), "gone");
  Store(Origin::Switcher, 1, "Label", "S");
  EXPECT_EQ(Redo(), "stale");
  EXPECT_EQ(Redo(), "-");
  EXPECT_EQ(Label(1), "S");
}

TEST_F(HistoryTest, ARefusedStepStaysWhereItIs) {
  Edit(1, "B");
  EXPECT_EQ(Go(Direction::Back, false), "refused");
  EXPECT_EQ(Label(1), "B");
  EXPECT_EQ(Undo(), "gone");
}

TEST_F(HistoryTest, OneThatCannotBeStoredStaysWhereItIsAndNothingIsStored) {
  Store(Origin::Operator, 1, "Label", "B");
  const std::vector<Change> tooLong = {
      {Origin::Operator, 2, {{"Label", std::string(300, 'x'), "A"}}},
      {Origin::Operator, 3, {{"Label", "X", "A"}}}};
  history_.Changed(tooLong);
  heard_.Take();
  EXPECT_EQ(Undo(), "failed");
  EXPECT_THAT(heard_.seen, IsEmpty());
  EXPECT_EQ(Label(3), "A");
  EXPECT_EQ(history_.Next(Direction::Back)->size(), 2);
  EXPECT_EQ(Redo(), "-");
}

TEST_F(HistoryTest, TheOldestStepsGo) {
  for (int edit = 1; edit <= 7; ++edit) Edit(1, std::to_string(edit));
  std::string undone;
  while (Undo() == "gone") undone += Label(1);
  EXPECT_EQ(undone, "65432");
}

TEST_F(HistoryTest, LargeStepsCountForMoreAndTheLatestIsKept) {
  History small(changes_, {.steps = 5, .bytes = 2'000});
  History tiny(changes_, {.steps = 5, .bytes = 10});
  const auto undoAll = [this](History* history) {
    int steps = 0;
    while (Go(history, Direction::Back) == "gone") ++steps;
    return steps;
  };
  for (int edit = 1; edit <= 3; ++edit) Edit(1, std::to_string(edit));
  EXPECT_EQ(undoAll(&small), 3);
  EXPECT_EQ(Go(&tiny, Direction::Back), "stale") << "the latest is kept";
  EXPECT_EQ(Go(&tiny, Direction::Back), "-");
  for (const char letter : {'x', 'y'}) {
    Batch batch(Database(), changes_);
    for (int station = 1; station <= 4; ++station) {
      Store(Origin::Operator, station, "Notes", std::string(120, letter));
    }
    ASSERT_TRUE(batch.Commit().ok());
  }
  EXPECT_EQ(undoAll(&small), 1) << "the first has made way";
}

TEST_F(HistoryTest, ItTellsWhenAnotherStepIsNext) {
  int times = 0;
  history_.SetListener([&] { ++times; });
  Edit(1, "B");
  EXPECT_EQ(times, 1);
  EXPECT_EQ(Undo(), "gone");
  EXPECT_EQ(times, 2);
  EXPECT_NE(history_.Next(Direction::Again), nullptr);
  EXPECT_EQ(Redo(), "gone");
  EXPECT_EQ(times, 3);
  Store(Origin::Switcher, 1, "Label", "S");
  EXPECT_EQ(times, 3);
  EXPECT_EQ(Undo(), "stale");
  EXPECT_EQ(times, 4);
}

}  // namespace
}  // namespace stations
