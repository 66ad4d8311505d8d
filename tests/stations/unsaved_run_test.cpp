// SPDX-License-Identifier: MIT

#include "stations/journal/unsaved_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "stations/journal/line.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Act LabelOf(Origin origin, int station, const char* before, const char* after) {
  return {.title = "Label",
          .time = "2026-11-21T18:05:12+01:00",
          .origin = origin,
          .changes = {{origin, station, {{"Label", before, after}}}}};
}

std::vector<std::string> Words(const std::vector<Change>& changes) {
  std::vector<std::string> words;
  for (const Change& change : changes) {
    for (const FieldChange& field : change.fields) {
      words.push_back(std::to_string(change.station) + " " + field.field + ": " +
                      field.before.Text() + " > " + field.after.Text());
    }
  }
  return words;
}

TEST(UnsavedRun, IsReadFromTheJournal) {
  const std::string act =
      R"({"title":"Label of station 17","time":"2026-11-21T18:05:12+01:00","origin":"operator",)"
      R"("changes":[{"station":17,"fields":{"Label":["Sta. 017","CAM 4"]}}]})";
  const JournalContents contents(
      WriteLine({.number = 4,
                 .kind = JournalLine::Kind::Run,
                 .run = 4,
                 .content = R"({"database":"9f"})"}) +
      WriteLine({.number = 5, .kind = JournalLine::Kind::Act, .run = 4, .content = act}) +
      WriteLine({.number = 6, .kind = JournalLine::Kind::Act, .run = 4, .content = "{}"}));
  ASSERT_EQ(contents.Runs().size(), 1u);
  const UnsavedRun run = ReadUnsavedRun(contents.Runs()[0]);
  EXPECT_EQ(run.id, 4);
  EXPECT_EQ(run.database, "9f");
  EXPECT_EQ(run.Time(), "2026-11-21T18:05:12+01:00");
  EXPECT_EQ(run.unreadable, 1u);
  EXPECT_THAT(Words(ChangesOf(run, Share::All)), ElementsAre("17 Label: Sta. 017 > CAM 4"));
  EXPECT_TRUE(run.HasEdits());
  EXPECT_FALSE(run.HasReceived());
}

TEST(UnsavedRun, WhichDatabaseItBeganWithMayBeLost) {
  EXPECT_EQ(WriteBeginning("9f"), R"({"database":"9f"})");
  for (const char* const beginning : {"", "{", "[]", "{}", R"({"database":5})"}) {
    JournalRun run;
    run.beginning = beginning;
    EXPECT_EQ(ReadUnsavedRun(run).database, "") << beginning;
  }
}

TEST(UnsavedRun, WhatCameFromTheSwitcherMayBeLeftOut) {
  UnsavedRun run;
  run.acts = {LabelOf(Origin::Operator, 5, "MIC", "LINE"), LabelOf(Origin::Switcher, 7, "A", "B")};
  EXPECT_TRUE(run.HasReceived());
  EXPECT_TRUE(run.HasEdits());
  EXPECT_THAT(Words(ChangesOf(run, Share::All)),
              ElementsAre("5 Label: MIC > LINE", "7 Label: A > B"));
  EXPECT_THAT(Words(ChangesOf(run, Share::Edits)), ElementsAre("5 Label: MIC > LINE"));
  run.acts.erase(run.acts.begin());
  EXPECT_FALSE(run.HasEdits());
}

// The database of the next run holds what the run found, not what came in its middle.
TEST(UnsavedRun, AnEditOfWhatWasReceivedLeadsOnFromWhatTheRunFound) {
  UnsavedRun run;
  run.acts = {LabelOf(Origin::Switcher, 5, "MIC", "OTHER"),
              LabelOf(Origin::Operator, 5, "OTHER", "LINE")};
  EXPECT_THAT(Words(ChangesOf(run, Share::Edits)), ElementsAre("5 Label: MIC > LINE"));
}

TEST(UnsavedRun, WhatWasTakenBackIsNoChange) {
  UnsavedRun run;
  run.acts = {LabelOf(Origin::Operator, 5, "MIC", "LINE"),
              LabelOf(Origin::Operator, 5, "LINE", "MIC")};
  EXPECT_THAT(ChangesOf(run, Share::All), IsEmpty());
}

TEST(UnsavedRun, IsInPlaceWhenEveryFieldHasWhatItLeft) {
  test::SmallDatabase database;
  database.AddStation(5, {{"Label", "LINE"}, {"InLabel", "IN"}});
  const auto inPlace = [&](const std::vector<Change>& changes) {
    bool result = false;
    EXPECT_TRUE(AreInPlace(*database.Files().Database(), changes, &result).ok());
    return result;
  };
  EXPECT_TRUE(inPlace({}));
  EXPECT_TRUE(inPlace({{Origin::Operator, 5, {{"Label", "MIC", "LINE"}}}}));
  EXPECT_FALSE(inPlace({{Origin::Operator, 5, {{"Label", "LINE", "MIC"}}}}));
  EXPECT_FALSE(
      inPlace({{Origin::Operator, 5, {{"Label", "MIC", "LINE"}, {"InLabel", "IN", "IN 5"}}}}));
  EXPECT_FALSE(inPlace({{Origin::Operator, 6, {{"Label", "MIC", "LINE"}}}})) << "no such station";
}

}  // namespace
}  // namespace stations
