// SPDX-License-Identifier: MIT

#include "stations/journal/journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace stations {
namespace {

using End = JournalRun::End;
using Kind = JournalLine::Kind;

std::string Line(std::int64_t number, Kind kind, std::int64_t run, std::string_view content) {
  return WriteLine({.number = number, .kind = kind, .run = run, .content = content});
}

std::vector<std::string> ActsOf(const JournalRun& run) {
  std::vector<std::string> acts;
  for (const JournalLine* const line : run.acts) acts.emplace_back(line->content);
  return acts;
}

TEST(JournalContents, HasTheRunsAndWhatBecameOfThem) {
  const JournalContents contents(
      Line(1, Kind::Run, 1, "{\"run\":1}") + Line(2, Kind::Act, 1, "{\"a\":1}") +
      Line(3, Kind::Act, 1, "{\"a\":2}") + Line(4, Kind::Saved, 1, "{}") +
      Line(5, Kind::Run, 5, "{\"run\":2}") + Line(6, Kind::Act, 5, "{\"a\":3}"));
  ASSERT_EQ(contents.Runs().size(), 2u);
  const JournalRun& saved = contents.Runs()[0];
  EXPECT_EQ(saved.id, 1);
  EXPECT_EQ(saved.beginning, "{\"run\":1}");
  EXPECT_EQ(ActsOf(saved), (std::vector<std::string>{"{\"a\":1}", "{\"a\":2}"}));
  EXPECT_EQ(saved.end, End::Saved);
  EXPECT_FALSE(saved.IsUnsaved());
  const JournalRun& broken = contents.Runs()[1];
  EXPECT_EQ(broken.id, 5);
  EXPECT_EQ(ActsOf(broken), std::vector<std::string>{"{\"a\":3}"});
  EXPECT_TRUE(broken.IsUnsaved());
  EXPECT_EQ(contents.Run(5), &broken);
  EXPECT_EQ(contents.Run(2), nullptr);
  EXPECT_EQ(contents.NextNumber(), 7);
  EXPECT_EQ(contents.DamagedLines(), 0u);
}

TEST(JournalContents, TwoUnsavedRunsAreTwo) {
  const JournalContents contents(Line(1, Kind::Run, 1, "{}") + Line(2, Kind::Act, 1, "{\"a\":1}") +
                                 Line(3, Kind::Run, 3, "{}") + Line(4, Kind::Act, 3, "{\"a\":2}") +
                                 Line(5, Kind::Restored, 1, "{}"));
  ASSERT_EQ(contents.Runs().size(), 2u);
  EXPECT_EQ(contents.Runs()[0].end, End::Restored);
  EXPECT_TRUE(contents.Runs()[1].IsUnsaved());
}

TEST(JournalContents, ADamagedLineIsPassedOverAndCounted) {
  const JournalContents contents(Line(1, Kind::Run, 1, "{}") + "2 00000000 act 1 {\"a\":1}\n" +
                                 Line(3, Kind::Act, 1, "{\"a\":2}"));
  EXPECT_EQ(contents.DamagedLines(), 1u);
  ASSERT_EQ(contents.Runs().size(), 1u);
  EXPECT_EQ(ActsOf(contents.Runs()[0]), std::vector<std::string>{"{\"a\":2}"});
}

TEST(JournalContents, ARunWhoseFirstLineIsLostIsStillARunOfItsOwn) {
  const JournalContents contents(Line(1, Kind::Run, 1, "{}") + Line(2, Kind::Act, 1, "{\"a\":1}") +
                                 "torn\n" + Line(4, Kind::Act, 3, "{\"a\":2}"));
  ASSERT_EQ(contents.Runs().size(), 2u);
  EXPECT_EQ(contents.Runs()[1].id, 3);
  EXPECT_EQ(contents.Runs()[1].beginning, "");
  EXPECT_TRUE(contents.Runs()[1].IsUnsaved());
}

TEST(JournalContents, TheOrderIsThatOfTheNumbersAndWhatStandsTwiceCountsOnce) {
  const std::string second = Line(3, Kind::Act, 1, "{\"a\":2}");
  const JournalContents contents(second + Line(2, Kind::Act, 1, "{\"a\":1}") + second);
  ASSERT_EQ(contents.Runs().size(), 1u);
  EXPECT_EQ(ActsOf(contents.Runs()[0]), (std::vector<std::string>{"{\"a\":1}", "{\"a\":2}"}));
}

TEST(JournalContents, CutAtEveryByteItHasTheWholeLinesBefore) {
  const std::vector<std::string> lines = {Line(1, Kind::Run, 1, "{\"run\":1}"),
                                          Line(2, Kind::Act, 1, "{\"a\":1}"),
                                          Line(3, Kind::Act, 1, "{\"a\":2}")};
  const std::string whole = lines[0] + lines[1] + lines[2];
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const JournalContents contents(whole.substr(0, length));
    std::size_t expected = 0;
    // The last line end need not be there.
    for (std::size_t end = 0; const std::string& line : lines) {
      end += line.size();
      if (length + 1 >= end) ++expected;
    }
    EXPECT_EQ(contents.Lines().size(), expected) << length;
  }
}

class JournalTest : public testing::Test {
 protected:
  std::filesystem::path Path() const { return folder_ / "Tesk.journal"; }
  std::string Text() const { return test::ReadFile(Path()); }

  test::TemporaryFolder folder_;
};

TEST_F(JournalTest, ARunThatChangesNothingLeavesNothing) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{\"database\":\"9f\"}");
  EXPECT_EQ(Text(), "(none)");
}

TEST_F(JournalTest, TheFirstActBeginsTheRun) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{\"database\":\"9f\"}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  EXPECT_EQ(Text(),
            "1 c5cbf58b run 1 {\"database\":\"9f\"}\n"
            "2 1d47a34a act 1 {\"a\":1}\n");
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  ASSERT_TRUE(journal.EndRun(journal.ThisRun(), Kind::Saved, "{}").ok());
  EXPECT_EQ(Text(),
            "1 c5cbf58b run 1 {\"database\":\"9f\"}\n"
            "2 1d47a34a act 1 {\"a\":1}\n"
            "3 ab6511ff act 1 {\"a\":2}\n"
            "4 d6e2cf8b saved 1 {}\n");
}

TEST_F(JournalTest, TheNextRunGoesOnCounting) {
  for (const char* const object : {"{\"a\":1}", "{\"a\":2}"}) {
    Journal journal(Path());
    ASSERT_TRUE(journal.Read().ok());
    journal.SetBeginning("{}");
    ASSERT_TRUE(journal.AddAct(object).ok());
  }
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  ASSERT_EQ(journal.Contents().Runs().size(), 2u);
  EXPECT_EQ(journal.Contents().Runs()[0].id, 1);
  EXPECT_EQ(journal.Contents().Runs()[1].id, 3);
  EXPECT_EQ(journal.Contents().DamagedLines(), 0u);
}

TEST_F(JournalTest, ATornEndIsEndedBeforeAnythingIsAdded) {
  test::WriteFile(Path(), Line(1, Kind::Run, 1, "{}") + Line(2, Kind::Act, 1, "{\"a\":1}") +
                              "3 0123abcd act 1 {\"a\":");
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  EXPECT_EQ(journal.Contents().DamagedLines(), 1u);
  journal.SetBeginning("{}");
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  Journal again(Path());
  ASSERT_TRUE(again.Read().ok());
  ASSERT_EQ(again.Contents().Runs().size(), 2u);
  EXPECT_EQ(ActsOf(again.Contents().Runs()[0]), std::vector<std::string>{"{\"a\":1}"});
  EXPECT_EQ(ActsOf(again.Contents().Runs()[1]), std::vector<std::string>{"{\"a\":2}"});
  EXPECT_EQ(again.Contents().DamagedLines(), 1u);
}

TEST_F(JournalTest, ADiskThatWasFullInTheMiddleOfALineCostsThatLineOnly) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  const std::string before = Text();
  {
    const test::FullDisk full(before.size() + 10);
    const files::Outcome outcome = journal.AddAct("{\"a\":2}");
    EXPECT_FALSE(outcome.ok());
    EXPECT_NE(outcome.text.find("Tesk.journal"), std::string::npos) << outcome.text;
  }
  EXPECT_EQ(Text(), before);
  ASSERT_TRUE(journal.AddAct("{\"a\":3}").ok());
  EXPECT_EQ(Text(), before + Line(3, Kind::Act, 1, "{\"a\":3}"));
}

TEST_F(JournalTest, WithoutAFolderEveryActFailsAndIsTriedAgain) {
  const std::filesystem::path folder = folder_ / "gone";
  Journal journal(folder / "Tesk.journal");
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{}");
  EXPECT_FALSE(journal.AddAct("{\"a\":1}").ok());
  EXPECT_EQ(journal.ThisRun(), 0);
  std::filesystem::create_directory(folder);
  EXPECT_TRUE(journal.AddAct("{\"a\":2}").ok());
  EXPECT_EQ(test::ReadFile(folder / "Tesk.journal"),
            Line(1, Kind::Run, 1, "{}") + Line(2, Kind::Act, 1, "{\"a\":2}"));
}

TEST_F(JournalTest, OneThatWasNotReadIsNotAddedTo) {
  test::WriteFile(Path(), "");
  std::filesystem::resize_file(Path(), Journal::kMostBytes + 1);
  Journal journal(Path());
  EXPECT_FALSE(journal.Read().ok());
  EXPECT_FALSE(journal.AddAct("{\"a\":1}").ok());
  EXPECT_EQ(std::filesystem::file_size(Path()), Journal::kMostBytes + 1);
}

TEST_F(JournalTest, WhatIsChangedAfterTheEndOfTheRunIsAnotherRun) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  ASSERT_TRUE(journal.EndRun(journal.ThisRun(), Kind::Saved, "{}").ok());
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  Journal again(Path());
  ASSERT_TRUE(again.Read().ok());
  ASSERT_EQ(again.Contents().Runs().size(), 2u);
  EXPECT_FALSE(again.Contents().Runs()[0].IsUnsaved());
  EXPECT_TRUE(again.Contents().Runs()[1].IsUnsaved());
  EXPECT_EQ(ActsOf(again.Contents().Runs()[1]), std::vector<std::string>{"{\"a\":2}"});
}

TEST_F(JournalTest, AFileThatIsGoneMeanwhileIsMadeAnewAndBeginsWithItsRun) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  std::filesystem::remove(Path());
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  ASSERT_TRUE(journal.AddAct("{\"a\":3}").ok());
  EXPECT_EQ(Text(), Line(3, Kind::Run, 3, "{}") + Line(4, Kind::Act, 3, "{\"a\":2}") +
                        Line(5, Kind::Act, 3, "{\"a\":3}"));
  EXPECT_EQ(journal.ThisRun(), 3);
}

// The first line of the new file is another run's: that it was discarded.
TEST_F(JournalTest, AnEndInAFileMadeAnewDoesNotTakeTheRunItsBeginning) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{\"run\":1}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  std::filesystem::remove(Path());
  ASSERT_TRUE(journal.EndRun(77, Kind::Discarded, "{}").ok());
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  EXPECT_EQ(Text(), Line(3, Kind::Discarded, 77, "{}") + Line(4, Kind::Run, 4, "{\"run\":1}") +
                        Line(5, Kind::Act, 4, "{\"a\":2}"));
}

TEST_F(JournalTest, APipeIsNoJournal) {
  ASSERT_EQ(mkfifo(Path().c_str(), 0600), 0);
  Journal journal(Path());
  EXPECT_FALSE(journal.Read().ok());
  EXPECT_FALSE(journal.AddAct("{}").ok());
}

TEST_F(JournalTest, ReplacedItGoesOnCountingBehindWhatWasKept) {
  Journal journal(Path());
  ASSERT_TRUE(journal.Read().ok());
  journal.SetBeginning("{}");
  ASSERT_TRUE(journal.AddAct("{\"a\":1}").ok());
  ASSERT_TRUE(journal.Replace(Line(40, Kind::Run, 40, "{}") + Line(41, Kind::Act, 40, "{}")).ok());
  EXPECT_EQ(journal.Contents().Runs().size(), 1u);
  ASSERT_TRUE(journal.AddAct("{\"a\":2}").ok());
  EXPECT_EQ(journal.ThisRun(), 42);
  EXPECT_EQ(Text(), Line(40, Kind::Run, 40, "{}") + Line(41, Kind::Act, 40, "{}") +
                        Line(42, Kind::Run, 42, "{}") + Line(43, Kind::Act, 42, "{\"a\":2}"));
}

}  // namespace
}  // namespace stations
