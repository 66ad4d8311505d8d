// SPDX-License-Identifier: MIT

#include "app/journal/journal_keeper.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QTest>
#include <cerrno>

#include "stations/journal/unsaved_run.h"
#include "tests/app/journal/journal_fixture.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/full_disk.h"

namespace app {
namespace {

using stations::Origin;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class JournalKeeperTest : public JournalFixture {
 protected:
  void SetUp() override { TeskWatch(plan_.Shared()); }
  void TearDown() override { TeskWatch(nullptr); }

  // Up to when it is known which database this is.
  void Begin() {
    keeper_.Begin();
    keeper_.Finish();
  }

  // The acts of the last run.
  std::vector<stations::Act> Acts() const {
    const stations::JournalContents contents(Text());
    return stations::ReadUnsavedRun(contents.Runs().back()).acts;
  }

  stations::Changes changes_;
  JournalKeeper keeper_{changes_, Path(), DatabasePath()};
  QSignalSpy failed_{&keeper_, &JournalKeeper::Failed};
  QSignalSpy recovered_{&keeper_, &JournalKeeper::Recovered};
  faults::FaultPlan plan_{folder_.Path()};
};

TEST_F(JournalKeeperTest, ARunThatChangesNothingLeavesNothing) {
  Begin();
  keeper_.RunSaved();
  EXPECT_EQ(Text(), "(none)");
}

TEST_F(JournalKeeperTest, WhatIsStoredAtOnceIsOneAct) {
  Begin();
  changes_.Hold();
  changes_.Announce(LabelOf(5, "MIC", "LINE"));
  changes_.Announce(LabelOf(7, "CAM", "VT"));
  changes_.Release();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  EXPECT_THAT(Runs(), ElementsAre("1 Label of 2 stations Label of station 17"));
  const std::vector<stations::Act> acts = Acts();
  ASSERT_EQ(acts.size(), 2u);
  ASSERT_EQ(acts[0].changes.size(), 2u);
  EXPECT_EQ(acts[0].changes[1].station, 7);
  EXPECT_EQ(acts[0].changes[1].fields[0].before.Text(), "CAM");
  EXPECT_EQ(acts[0].changes[1].fields[0].after.Text(), "VT");
  // "2026-11-21T18:05:12+01:00"
  EXPECT_THAT(acts[0].time, testing::MatchesRegex("....-..-..T..:..:..([+-]..:..|Z)"));
}

TEST_F(JournalKeeperTest, TheRunSaysWhichDatabaseItBeganWith) {
  Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  EXPECT_THAT(Text(), HasSubstr(" run 1 {\"database\":\"" + std::string(kDigest) + "\"}\n"));
}

// A kill in the first moment of a run loses nothing that was edited in it.
TEST_F(JournalKeeperTest, TheFirstEditWaitsUntilTheDatabaseIsKnown) {
  std::filesystem::resize_file(DatabasePath(), 1 << 16);
  keeper_.Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 17"));
}

// A database that is long in being read, and that the first edit does not wait for.
class UnknownDatabaseTest : public JournalFixture {
 protected:
  UnknownDatabaseTest() { std::filesystem::resize_file(DatabasePath(), 1 << 26); }

  stations::Changes changes_;
  JournalKeeper keeper_{changes_, Path(), DatabasePath(), 0};
};

// The event loop is not held for a message of the switcher.
TEST_F(JournalKeeperTest, TheSwitchersTablesWaitForNothing) {
  std::filesystem::resize_file(DatabasePath(), 1 << 24);
  keeper_.Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4", Origin::Switcher));
  EXPECT_EQ(Text(), "(none)");
  keeper_.WriteBeforeSaving(QDeadlineTimer::Forever);
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 17"));
}

TEST_F(UnknownDatabaseTest, WhatIsEditedIsWrittenWhenItIsKnown) {
  QSignalSpy known(&keeper_, &JournalKeeper::DigestKnown);
  keeper_.Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  changes_.Announce(LabelOf(5, "MIC", "LINE"));
  EXPECT_EQ(Text(), "(none)");
  EXPECT_FALSE(keeper_.IsComplete());
  ASSERT_TRUE(QTest::qWaitFor([&] { return !known.isEmpty(); }, 60'000));
  EXPECT_TRUE(keeper_.IsComplete());
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 17 Label of station 5"));
}

// Whoever edits at once and closes the console: the saving may be what does not survive.
TEST_F(UnknownDatabaseTest, WhatIsEditedIsWrittenBeforeItIsReplaced) {
  keeper_.Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  keeper_.WriteBeforeSaving(QDeadlineTimer::Forever);
  EXPECT_TRUE(keeper_.IsComplete());
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 17"));
}

// A share that has gone does not keep the console from closing.
TEST_F(UnknownDatabaseTest, ItIsNotWaitedForWithoutEndBeforeItIsReplaced) {
  keeper_.Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  keeper_.WriteBeforeSaving(QDeadlineTimer(0));
  EXPECT_FALSE(keeper_.IsComplete());
  EXPECT_EQ(Text(), "(none)");
}

TEST_F(JournalKeeperTest, TheDiskHasItBeforeTheDatabaseIsReplaced) {
  Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  EXPECT_THAT(plan_.Calls(), testing::Not(testing::Contains("sync Tesk.journal")));
  keeper_.WriteBeforeSaving(QDeadlineTimer::Forever);
  EXPECT_THAT(plan_.Calls(), testing::Contains("sync Tesk.journal").Times(1));
}

TEST_F(JournalKeeperTest, WhatIsSavedIsSaidToBe) {
  Begin();
  changes_.Announce(LabelOf(17, "Sta. 017", "CAM 4"));
  keeper_.RunSaved();
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 17; saved"));
}

TEST_F(JournalKeeperTest, TheActsOfARetrievalBelongTogether) {
  Begin();
  changes_.Announce(LabelOf(5, "A", "B", Origin::Switcher));
  keeper_.BeginGroup();
  changes_.Announce(LabelOf(5, "B", "C", Origin::Switcher));
  changes_.Announce(LabelOf(6, "A", "B", Origin::Switcher));
  changes_.Announce(LabelOf(7, "A", "B"));
  keeper_.EndGroup();
  changes_.Announce(LabelOf(8, "A", "B", Origin::Switcher));
  keeper_.BeginGroup();
  changes_.Announce(LabelOf(9, "A", "B", Origin::Switcher));
  std::vector<std::int64_t> groups;
  for (const stations::Act& act : Acts()) groups.push_back(act.group);
  EXPECT_THAT(groups, ElementsAre(0, 1, 1, 0, 0, 2));
}

TEST_F(JournalKeeperTest, EveryCharacterOfALabelComesBack) {
  Begin();
  std::string label;
  for (int code = 0x20; code < 0x100; ++code) {
    label += QByteArray(QString(QChar(code)).toUtf8()).toStdString();
  }
  label += "€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";
  changes_.Announce(LabelOf(17, "", label.c_str()));
  EXPECT_EQ(Acts()[0].changes[0].fields[0].after.Text(), label);
}

// The handler of an edit only writes; the disk has it without anybody waiting, once for many edits.
TEST_F(JournalKeeperTest, TheDiskHasItALittleLater) {
  Begin();
  plan_.Restart();
  for (int i = 0; i < 20; ++i) changes_.Announce(LabelOf(17, "a", "b"));
  EXPECT_THAT(plan_.Calls(), testing::Not(testing::Contains(HasSubstr("sync"))));
  EXPECT_EQ(plan_.Calls().front(), "open Tesk.journal");
  const auto syncs = [&] {
    const auto calls = plan_.Calls();
    return std::ranges::count(calls, "sync Tesk.journal");
  };
  EXPECT_TRUE(QTest::qWaitFor([&] { return syncs() > 0; }, 60'000));
  EXPECT_EQ(syncs(), 1);
}

TEST_F(JournalKeeperTest, AFullDiskInTheMiddleOfALineCostsAHintAndNoAct) {
  Begin();
  changes_.Announce(LabelOf(5, "a", "b"));
  const std::string before = Text();
  {
    const test::FullDisk full(before.size() + 10);
    changes_.Announce(LabelOf(6, "a", "b"));
    changes_.Announce(LabelOf(7, "a", "b"));
  }
  EXPECT_EQ(Text(), before);
  ASSERT_EQ(failed_.size(), 1) << "it is said once";
  EXPECT_THAT(failed_[0][0].toString().toStdString(), HasSubstr("Tesk.journal"));
  EXPECT_FALSE(keeper_.IsComplete());
  EXPECT_EQ(recovered_.size(), 0);
  changes_.Announce(LabelOf(8, "a", "b"));
  EXPECT_TRUE(keeper_.IsComplete());
  EXPECT_EQ(recovered_.size(), 1);
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5 Label of station 6 Label of station 7 "
                                  "Label of station 8"));
}

TEST_F(JournalKeeperTest, AFolderThatCannotBeWrittenCostsAHintAndNoAct) {
  Begin();
  plan_.Restart();
  plan_.Fail(1, 1 << 30, EROFS);
  changes_.Announce(LabelOf(5, "a", "b"));
  changes_.Announce(LabelOf(6, "a", "b"));
  EXPECT_EQ(failed_.size(), 1);
  EXPECT_EQ(Text(), "(none)");
  plan_.Lift();
  changes_.Announce(LabelOf(7, "a", "b"));
  EXPECT_EQ(recovered_.size(), 1);
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5 Label of station 6 Label of station 7"));
}

TEST_F(JournalKeeperTest, ADiskThatDoesNotTakeItIsSaid) {
  Begin();
  changes_.Announce(LabelOf(5, "a", "b"));
  plan_.Restart();
  plan_.Fail(1, 1, EIO);
  EXPECT_TRUE(QTest::qWaitFor([&] { return failed_.size() == 1; }, 60'000));
  plan_.Lift();
  EXPECT_TRUE(QTest::qWaitFor([&] { return recovered_.size() == 1; }, 60'000)) << "by itself";
  EXPECT_EQ(failed_.size(), 1);
}

// Nobody edits any more, and the disk has room again: a kill then loses nothing.
TEST_F(JournalKeeperTest, WhatCouldNotBeWrittenIsTriedAgainByItself) {
  Begin();
  QCoreApplication::processEvents();  // the database is known: that tries it, too
  plan_.Restart();
  plan_.Fail(1, 1 << 30, ENOSPC);
  changes_.Announce(LabelOf(5, "a", "b"));
  EXPECT_EQ(failed_.size(), 1);
  plan_.Lift();
  EXPECT_TRUE(QTest::qWaitFor([&] { return recovered_.size() == 1; }, 60'000));
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5"));
}

TEST_F(JournalKeeperTest, WhatIsNoFileIsLeftAlone) {
  std::filesystem::create_directory(Path());
  Begin();
  EXPECT_EQ(failed_.size(), 1);
  changes_.Announce(LabelOf(5, "a", "b"));
  EXPECT_THAT(keeper_.Waiting(), ElementsAre(HasSubstr("Label of station 5")))
      << "it is shown from here";
  EXPECT_FALSE(keeper_.IsComplete());
  keeper_.RunSaved();
  EXPECT_EQ(failed_.size(), 1);
  EXPECT_TRUE(std::filesystem::is_directory(Path()));
}

class LargeJournalTest : public JournalKeeperTest {
 protected:
  // More than a journal may have, of a run that was saved, and behind it one that was killed.
  void MakeLarge() {
    const auto add = [this](const stations::Act& act, int times) {
      stations::Journal journal(Path());
      EXPECT_TRUE(journal.Read().ok());
      journal.SetBeginning(stations::WriteBeginning(kDigest));
      for (; times > 0; --times) EXPECT_TRUE(journal.AddAct(stations::WriteAct(act)).ok());
      return journal.ThisRun();
    };
    const std::string long_(200, 'b');
    const std::int64_t saved =
        add({.title = "Label of station 5", .changes = {LabelOf(5, "a", long_.c_str())}}, 7000);
    stations::Journal journal(Path());
    ASSERT_TRUE(journal.Read().ok());
    ASSERT_TRUE(journal.EndRun(saved, stations::JournalLine::Kind::Saved, "{}").ok());
    add({.title = "Label of station 17", .changes = {LabelOf(17, "Sta. 017", "CAM 4")}}, 1);
    ASSERT_GT(Text().size(), JournalKeeper::kLargeBytes);
  }
};

TEST_F(LargeJournalTest, AStartMakesItSmallerAndKeepsWhatIsNotSaved) {
  MakeLarge();
  Begin();
  EXPECT_LE(Text().size(), JournalKeeper::kLargeBytes);
  EXPECT_GT(Text().size(), JournalKeeper::kKeptBytes / 2);
  const stations::JournalRun& last = keeper_.Found().Runs().back();
  ASSERT_TRUE(last.IsUnsaved());
  const stations::UnsavedRun run = stations::ReadUnsavedRun(last);
  EXPECT_EQ(run.database, kDigest);
  EXPECT_EQ(run.acts[0].title, "Label of station 17");
  changes_.Announce(LabelOf(18, "a", "b"));
  EXPECT_THAT(Runs().back(),
              StartsWith(std::to_string(keeper_.ThisRun()) + " Label of station 18"));
}

TEST_F(LargeJournalTest, ASavedEndMakesItSmaller) {
  Begin();
  const std::string long_(200, 'b');
  for (int i = 0; i < 7000; ++i) changes_.Announce(LabelOf(5, "a", long_.c_str()));
  ASSERT_GT(Text().size(), JournalKeeper::kLargeBytes);
  keeper_.RunSaved();
  EXPECT_LE(Text().size(), JournalKeeper::kKeptBytes);
  EXPECT_THAT(Runs(), ElementsAre(testing::EndsWith("; saved")));
}

// A disk that is full, or fails, at any call of it.
TEST_F(LargeJournalTest, ADiskThatFailsLeavesTheLargeOneWhole) {
  MakeLarge();
  const std::string before = Text();
  for (int call = 1;; ++call) {
    test::WriteFile(Path(), before);
    plan_.Restart();
    plan_.Fail(call, 1 << 30, call % 2 == 0 ? EIO : ENOSPC);
    stations::Changes stream;
    JournalKeeper keeper(stream, Path(), DatabasePath());
    keeper.Begin();
    keeper.Finish();
    const bool isThrough = plan_.Count() < call;
    plan_.Lift();
    if (isThrough) break;
    ASSERT_LT(call, 100);
    EXPECT_EQ(Text(), before) << call;
    stream.Announce(LabelOf(18, "a", "b"));
    EXPECT_THAT(Runs().back(), HasSubstr("Label of station 18"));
  }
  EXPECT_LE(Text().size(), JournalKeeper::kLargeBytes);
}

// A run of days that ends in a crash.
TEST_F(JournalKeeperTest, AHundredThousandActsAreOneAtTheNextStart) {
  {
    stations::Journal journal(Path());
    ASSERT_TRUE(journal.Read().ok());
    journal.SetBeginning(stations::WriteBeginning(kDigest));
    for (int i = 0; i < 100'000; ++i) {
      const stations::Act act{
          .title = "Label",
          .time = "2026-11-21T18:05:12+01:00",
          .changes = {{Origin::Operator,
                       1 + i % 200,
                       {{"Label", std::to_string(i), std::to_string(i + 200)}}}}};
      ASSERT_TRUE(journal.AddAct(stations::WriteAct(act)).ok());
    }
  }
  Begin();
  ASSERT_EQ(keeper_.Found().Runs().size(), 1u);
  const stations::UnsavedRun run = stations::ReadUnsavedRun(keeper_.Found().Runs()[0]);
  ASSERT_THAT(run.acts, SizeIs(1));
  ASSERT_THAT(run.acts[0].changes, SizeIs(200));
  EXPECT_EQ(run.acts[0].changes[199].fields[0].before.Text(), "199");
  EXPECT_EQ(run.acts[0].changes[199].fields[0].after.Text(), "100199");
  EXPECT_LT(Text().size(), 100'000u);
}

}  // namespace
}  // namespace app
