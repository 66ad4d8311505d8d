// SPDX-License-Identifier: MIT

#include "stations/record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "stations/batch.h"
#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordTest : public testing::Test {
 public:
  RecordTest() {
    database_.AddStation(1, {{"Label", "MIC"}, {"OptoType", 3}, {"Relays", "1x 1"}});
    EXPECT_TRUE(Stations().MoveFirst().ok());
  }

  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  std::string Label() { return Record(Stations()).Text("Label"); }
  int OptoType() { return Record(Stations()).Number("OptoType"); }

  test::SmallDatabase database_;
  Changes changes_;
  const Author author_{changes_, Origin::Operator};
};

TEST_F(RecordTest, ReadsFieldsAsWhatTheyAre) {
  Record record(Stations());
  EXPECT_EQ(record.Text("Label"), "MIC");
  EXPECT_EQ(record.Number("OptoType"), 3);
  EXPECT_EQ(record.Flags("Relays"), "1001");
  EXPECT_TRUE(record.Get("Notes").IsNull());
  EXPECT_EQ(record.Text("Notes"), "");
  EXPECT_TRUE(record.Outcome().ok());
}

TEST_F(RecordTest, AFieldThatIsNotThereReadsAsNullAndTheOthersAreReadAllTheSame) {
  Record record(Stations());
  EXPECT_EQ(record.Number("Nothing", 17), 17);
  EXPECT_EQ(record.Number("Nothing"), 0);
  EXPECT_EQ(record.Text("Label"), "MIC");
  EXPECT_EQ(record.Outcome().Number(), 3265);
}

TEST_F(RecordTest, TheFirstFailureIsKept) {
  ASSERT_TRUE(Stations().MoveLast().ok());
  ASSERT_TRUE(Stations().MoveNext().ok());
  Record record(Stations());
  EXPECT_EQ(record.Text("Label"), "");
  EXPECT_EQ(record.Text("Nothing"), "");
  EXPECT_EQ(record.Outcome().Number(), 3021) << "no current record";
}

TEST_F(RecordTest, AllChangesAreStored) {
  bool stored = false;
  Record record(Stations());
  record.Set("Label", "LINE");
  record.Set("OptoType", 4);
  EXPECT_EQ(Label(), "MIC") << "before the commit";
  ASSERT_TRUE(record.Commit(author_, &stored).ok());
  EXPECT_TRUE(stored);
  EXPECT_EQ(Label(), "LINE");
  EXPECT_EQ(OptoType(), 4);
}

TEST_F(RecordTest, WhatIsThereAlreadyIsNotWritten) {
  bool stored = true;
  Record record(Stations());
  record.Set("Label", "MIC");
  record.Set("OptoType", 3);
  ASSERT_TRUE(record.Commit(author_, &stored).ok());
  EXPECT_FALSE(stored);
}

TEST_F(RecordTest, OneThatDoesNotFitKeepsAllFromBeingStored) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", 4);
  record.Set("Label", std::string(300, 'x'));
  EXPECT_FALSE(record.Commit(author_, &stored).ok());
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
  EXPECT_EQ(Label(), "MIC");
  EXPECT_FALSE(Stations().Update().ok()) << "no change is left begun";
}

TEST_F(RecordTest, AChangeOfAFieldThatIsNotThereIsAFailure) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", 4);
  record.Set("Nothing", 1);
  EXPECT_EQ(record.Commit(author_, &stored).Number(), 3265);
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
}

TEST_F(RecordTest, NothingIsStoredThatMayBeMadeOfWhatCouldNotBeRead) {
  bool stored = true;
  Record record(Stations());
  record.Set("OptoType", record.Number("Nothing"));
  EXPECT_EQ(record.Commit(author_, &stored).Number(), 3265);
  EXPECT_FALSE(stored);
  EXPECT_EQ(OptoType(), 3);
}

class ChangesTest : public RecordTest {
 protected:
  test::RecordingChanges heard_{changes_};
};

TEST_F(ChangesTest, OfTwoNewValuesOfAFieldTheLastOneCounts) {
  Record record(Stations());
  record.Set("Label", "LINE");
  record.Set("Label", "MIC");
  record.Set("Notes", "one");
  record.Set("Notes", "two");
  ASSERT_TRUE(record.Commit(author_).ok());
  EXPECT_EQ(Label(), "MIC");
  EXPECT_THAT(heard_.seen, ElementsAre("operator 1: Notes null > two"));
}

TEST_F(ChangesTest, TellWhatGotAnotherValue) {
  Record record(Stations());
  record.Set("Label", "LINE");
  record.Set("OptoType", 3);
  record.Set("Notes", "new");
  ASSERT_TRUE(record.Commit({changes_, Origin::Switcher}).ok());
  EXPECT_THAT(heard_.seen, ElementsAre("switcher 1: Label MIC > LINE, Notes null > new"));
}

TEST_F(ChangesTest, ComeWhenTheyAreStored) {
  struct Reader : ChangeObserver {
    Reader(Changes& changes, RecordTest& test) : ChangeObserver(changes), test_(test) {}
    void Changed(std::span<const Change> /*changes*/) override { label = test_.Label(); }
    std::string label;
    RecordTest& test_;
  } reader(changes_, *this);
  Record record(Stations());
  record.Set("Label", "LINE");
  ASSERT_TRUE(record.Commit(author_).ok());
  EXPECT_EQ(reader.label, "LINE");
}

TEST_F(ChangesTest, NothingIsToldOfWhatChangesNothingOrFails) {
  Record same(Stations());
  same.Set("Label", "MIC");
  ASSERT_TRUE(same.Commit(author_).ok());
  Record tooLong(Stations());
  tooLong.Set("OptoType", 4);
  tooLong.Set("Label", std::string(300, 'x'));
  EXPECT_FALSE(tooLong.Commit(author_).ok());
  Record unread(Stations());
  unread.Set("OptoType", unread.Number("Nothing") + 9);
  EXPECT_FALSE(unread.Commit(author_).ok());
  EXPECT_THAT(heard_.seen, IsEmpty());
}

TEST_F(ChangesTest, OfABatchAreToldWhenAllOfItIsStored) {
  {
    Batch batch(Stations(), changes_);
    for (const char* const label : {"one", "two"}) {
      Record record(Stations());
      record.Set("Label", label);
      ASSERT_TRUE(record.Commit(author_).ok());
    }
    EXPECT_THAT(heard_.seen, IsEmpty());
    ASSERT_TRUE(batch.Commit().ok());
    EXPECT_THAT(heard_.Take(),
                ElementsAre("operator 1: Label MIC > one", "operator 1: Label one > two"));
  }
  {
    Batch dropped(Stations(), changes_);
    Record record(Stations());
    record.Set("Label", "three");
    ASSERT_TRUE(record.Commit(author_).ok());
  }
  EXPECT_THAT(heard_.seen, IsEmpty()) << "it was not committed";
  EXPECT_EQ(Label(), "two");
}

TEST_F(ChangesTest, AreToldToEveryObserverThatIsThere) {
  Record first(Stations());
  first.Set("OptoType", 4);
  {
    const test::RecordingChanges second(changes_);
    ASSERT_TRUE(first.Commit(author_).ok());
    EXPECT_THAT(second.seen, ElementsAre("operator 1: OptoType 3 > 4"));
  }
  Record next(Stations());
  next.Set("OptoType", 5);
  ASSERT_TRUE(next.Commit(author_).ok());
  EXPECT_THAT(heard_.seen, ElementsAre("operator 1: OptoType 3 > 4", "operator 1: OptoType 4 > 5"));
}

TEST_F(RecordTest, OnlyTheSwitcherChangesItWhileTheConsoleIsLocked) {
  model::Locks locks;
  Changes changes(locks);
  locks.LockConsole(true);
  for (const Origin origin : {Origin::Operator, Origin::Undo, Origin::Redo, Origin::Restore,
                              Origin::Comparison, Origin::Backup}) {
    Record record(Stations());
    record.Set("Label", "CAM");
    bool stored = true;
    const model::Status status = record.Commit({changes, origin}, &stored);
    EXPECT_EQ(status.Number(), 70);
    EXPECT_EQ(status.Description(), "The console is locked");
    EXPECT_FALSE(stored);
  }
  Record navigated(Stations());
  navigated.Set("Label", "CAM");
  bool stored = true;
  EXPECT_TRUE(navigated.Commit({changes, Origin::Navigation}, &stored).ok());
  EXPECT_FALSE(stored) << "navigation writes nothing, quietly";
  EXPECT_EQ(Label(), "MIC");
  Record same(Stations());
  same.Set("Label", "MIC");
  EXPECT_TRUE(same.Commit({changes, Origin::Operator}).ok()) << "nothing is to be written";
  Record received(Stations());
  received.Set("Label", "CAM");
  EXPECT_TRUE(received.Commit({changes, Origin::Switcher}, &stored).ok());
  EXPECT_TRUE(stored);
  locks.LockConsole(false);
  Record record(Stations());
  record.Set("Label", "VTR");
  EXPECT_TRUE(record.Commit({changes, Origin::Operator}).ok());
  EXPECT_EQ(Label(), "VTR");
}

}  // namespace
}  // namespace stations
