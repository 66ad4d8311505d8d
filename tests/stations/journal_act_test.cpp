// SPDX-License-Identifier: MIT

#include "stations/journal/act.h"

#include <gtest/gtest.h>

#include <string>

#include "stations/fold.h"
#include "stations/journal/compaction.h"
#include "stations/journal/unsaved_run.h"

namespace stations {
namespace {

Change ChangeOf(Origin origin, int station, std::vector<FieldChange> fields) {
  return {origin, station, std::move(fields)};
}

Act OneChange(Origin origin, int station, const char* field, const jet::Value& before,
              const jet::Value& after) {
  Act act;
  act.title = "A title";
  act.origin = origin;
  act.changes = {ChangeOf(origin, station, {{field, before, after}})};
  return act;
}

TEST(JournalAct, IsAnObjectThatAPersonCanRead) {
  Act act;
  act.title = "Label of station 17";
  act.time = "2026-11-21T18:05:12+01:00";
  act.changes = {ChangeOf(Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}, {"Hidden", 0, 1}}),
                 ChangeOf(Origin::Operator, 18, {{"Notes", jet::Value(), "say \"hello\"\n"}})};
  EXPECT_EQ(WriteAct(act),
            R"({"title":"Label of station 17","time":"2026-11-21T18:05:12+01:00",)"
            R"("origin":"operator","changes":[)"
            R"({"station":17,"fields":{"Label":["Sta. 017","CAM 4"],"Hidden":[0,1]}},)"
            R"({"station":18,"fields":{"Notes":[null,"say \"hello\"\n"]}}]})");
  act.group = 3;
  act.origin = Origin::Switcher;
  act.changes.clear();
  EXPECT_EQ(WriteAct(act), R"({"title":"Label of station 17","time":"2026-11-21T18:05:12+01:00",)"
                           R"("origin":"switcher","group":3,"changes":[]})");
}

TEST(JournalAct, IsReadAsItWasWritten) {
  Act written;
  written.title = "Ünïcode €";
  written.time = "now";
  written.origin = Origin::Switcher;
  written.group = 12;
  written.changes = {ChangeOf(
      Origin::Switcher, 256,
      {{"Label", "ÿë€", ""}, {"OptoType", -32768, 255}, {"Notes", "a\r\nb", jet::Value()}})};
  Act read;
  ASSERT_TRUE(ReadAct(WriteAct(written), &read));
  EXPECT_EQ(read.title, written.title);
  EXPECT_EQ(read.time, "now");
  EXPECT_EQ(read.origin, Origin::Switcher);
  EXPECT_EQ(read.group, 12);
  ASSERT_EQ(read.changes.size(), 1u);
  EXPECT_EQ(read.changes[0].station, 256);
  EXPECT_EQ(read.changes[0].origin, Origin::Switcher);
  ASSERT_EQ(read.changes[0].fields.size(), 3u);
  EXPECT_EQ(read.changes[0].fields[0].field, "Label");
  EXPECT_EQ(read.changes[0].fields[0].before, jet::Value("ÿë€"));
  EXPECT_EQ(read.changes[0].fields[0].after, jet::Value(""));
  EXPECT_EQ(read.changes[0].fields[1].before, jet::Value(-32768));
  EXPECT_EQ(read.changes[0].fields[2].before, jet::Value("a\r\nb"));
  EXPECT_TRUE(read.changes[0].fields[2].after.IsNull());
}

TEST(JournalAct, EveryOriginHasAWord) {
  const std::pair<Origin, std::string> words[] = {{Origin::Operator, "operator"},
                                                  {Origin::Navigation, "navigation"},
                                                  {Origin::Switcher, "switcher"},
                                                  {Origin::Undo, "undo"},
                                                  {Origin::Redo, "redo"},
                                                  {Origin::Restore, "restore"},
                                                  {Origin::Comparison, "comparison"},
                                                  {Origin::Backup, "backup"},
                                                  {Origin::File, "file"}};
  for (const auto& [origin, word] : words) {
    Act act;
    act.origin = origin;
    const std::string line = WriteAct(act);
    EXPECT_NE(line.find(R"("origin":")" + word + '"'), std::string::npos) << line;
    Act read;
    ASSERT_TRUE(ReadAct(line, &read)) << line;
    EXPECT_EQ(read.origin, origin) << line;
  }
}

TEST(JournalAct, WhatCouldNotBeCarriedOutIsLeftOut) {
  Act act;
  act.changes = {ChangeOf(Origin::Operator, 0, {{"Label", "A", "B"}}),
                 ChangeOf(Origin::Operator, 5, {{"Label", "A", "B"}, {"Hidden", true, 0}}),
                 ChangeOf(Origin::Operator, 6, {{"Hidden", 0.5, 1}})};
  Act read;
  ASSERT_TRUE(ReadAct(WriteAct(act), &read));
  ASSERT_EQ(read.changes.size(), 1u);
  EXPECT_EQ(read.changes[0].station, 5);
  ASSERT_EQ(read.changes[0].fields.size(), 1u);
  EXPECT_EQ(read.changes[0].fields[0].field, "Label");
}

TEST(JournalAct, EveryCharacterOfTheCodePageIsKept) {
  for (int byte = 1; byte < 256; ++byte) {
    std::string text;
    const char32_t unit = byte;
    if (unit < 0x80) {
      text += static_cast<char>(unit);
    } else {
      text += static_cast<char>(0xC0 | (unit >> 6));
      text += static_cast<char>(0x80 | (unit & 0x3F));
    }
    const std::string line = WriteAct(OneChange(Origin::Operator, 1, "Label", text, text + "x"));
    EXPECT_EQ(line.find('\n'), std::string::npos);
    Act read;
    ASSERT_TRUE(ReadAct(line, &read)) << line;
    EXPECT_EQ(read.changes[0].fields[0].before, jet::Value(text));
  }
}

TEST(JournalAct, WhatCannotBeCarriedOutIsNotRead) {
  const std::string good =
      R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,2]}}]})";
  Act act;
  ASSERT_TRUE(ReadAct(good, &act));
  for (const char* const bad :
       {"",
        "{",
        "[]",
        "17",
        "{}",
        R"({"origin":"operator"})",
        R"({"changes":[]})",
        R"({"origin":"nobody","changes":[]})",
        R"({"origin":"operator","changes":{}})",
        R"({"origin":"operator","changes":[17]})",
        R"({"origin":"operator","changes":[{"station":0,"fields":{"A":[1,2]}}]})",
        R"({"origin":"operator","changes":[{"station":"1","fields":{"A":[1,2]}}]})",
        R"({"origin":"operator","changes":[{"station":1}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1]}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,2,3]}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,2.5]}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,true]}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,2147483648]}}]})",
        R"({"origin":"operator","changes":[{"station":1,"fields":{"A":[1,-2147483649]}}]})",
        R"({"origin":"operator","group":-1,"changes":[]})"}) {
    EXPECT_FALSE(ReadAct(bad, &act)) << bad;
  }
}

TEST(JournalChanges, OfSeveralChangesOfAFieldTheFirstBeforeAndTheLastAfterCount) {
  const std::vector<Act> acts = {OneChange(Origin::Operator, 2, "Label", "A", "B"),
                                 OneChange(Origin::Operator, 1, "Label", "X", "Y"),
                                 OneChange(Origin::Operator, 2, "Hidden", 0, 1),
                                 OneChange(Origin::Switcher, 2, "Label", "B", "C")};
  const std::vector<Change> folded = ChangesOf(acts);
  ASSERT_EQ(folded.size(), 2u);
  EXPECT_EQ(folded[0].station, 1);
  EXPECT_EQ(folded[1].station, 2);
  EXPECT_EQ(folded[1].origin, Origin::Switcher);
  ASSERT_EQ(folded[1].fields.size(), 2u);
  EXPECT_EQ(folded[1].fields[0].field, "Label");
  EXPECT_EQ(folded[1].fields[0].before, jet::Value("A"));
  EXPECT_EQ(folded[1].fields[0].after, jet::Value("C"));
  EXPECT_EQ(folded[1].fields[1].field, "Hidden");
}

TEST(JournalChanges, WhatCameBackToWhatItWasIsNoChange) {
  const std::vector<Act> acts = {OneChange(Origin::Operator, 2, "Label", "A", "B"),
                                 OneChange(Origin::Operator, 2, "Label", "B", "A")};
  EXPECT_TRUE(ChangesOf(acts).empty());
}

std::string ActLine(std::int64_t number, std::int64_t run, const Act& act) {
  const std::string content = WriteAct(act);
  return WriteLine(
      {.number = number, .kind = JournalLine::Kind::Act, .run = run, .content = content});
}

std::string Line(std::int64_t number, JournalLine::Kind kind, std::int64_t run) {
  return WriteLine({.number = number, .kind = kind, .run = run, .content = "{}"});
}

TEST(JournalCompaction, OfARunThatEndedTheNewestLinesStay) {
  const Act act = OneChange(Origin::Operator, 2, "Label", "A", "B");
  const std::string end = Line(4, JournalLine::Kind::Saved, 1);
  const std::string last = ActLine(3, 1, act);
  const JournalContents contents(Line(1, JournalLine::Kind::Run, 1) + ActLine(2, 1, act) + last +
                                 end);
  EXPECT_EQ(Compact(contents, 1 << 20),
            Line(1, JournalLine::Kind::Run, 1) + ActLine(2, 1, act) + last + end);
  EXPECT_EQ(Compact(contents, end.size() + last.size()), last + end);
  EXPECT_EQ(Compact(contents, end.size() + last.size() - 1), end);
  EXPECT_EQ(Compact(contents, 0), "");
}

TEST(JournalCompaction, OfARunThatBrokeOffNothingIsLost) {
  const JournalContents contents(Line(1, JournalLine::Kind::Run, 1) +
                                 ActLine(2, 1, OneChange(Origin::Operator, 2, "Label", "A", "B")) +
                                 ActLine(3, 1, OneChange(Origin::Operator, 2, "Label", "B", "C")) +
                                 ActLine(4, 1, OneChange(Origin::Switcher, 2, "Label", "C", "D")) +
                                 ActLine(5, 1, OneChange(Origin::Operator, 2, "Label", "D", "E")) +
                                 Line(6, JournalLine::Kind::Run, 6) +
                                 ActLine(7, 6, OneChange(Origin::Operator, 1, "Label", "X", "Y")) +
                                 Line(8, JournalLine::Kind::Saved, 6));
  const std::string compacted = Compact(contents, 0);
  EXPECT_EQ(compacted, Line(1, JournalLine::Kind::Run, 1) +
                           ActLine(5, 1, OneChange(Origin::Operator, 2, "Label", "A", "E")))
      << "what was received was edited again";
  const JournalContents again(compacted);
  ASSERT_EQ(again.Runs().size(), 1u);
  EXPECT_TRUE(again.Runs()[0].IsUnsaved());
  EXPECT_EQ(Compact(again, 0), compacted);
}

// Edits and reports by turns, as in a day's work: two acts, and each field ends where it did.
// A disk that reports a failure may have taken the line all the same: the next one has its number.
TEST(JournalCompaction, LinesOfOneNumberAllStay) {
  const auto line = [](std::int64_t number, JournalLine::Kind kind, std::int64_t run,
                       std::string_view content) {
    return WriteLine({.number = number, .kind = kind, .run = run, .content = content});
  };
  using Kind = JournalLine::Kind;
  const std::string text = line(1, Kind::Run, 1, "{}") + line(2, Kind::Act, 1, "unreadable") +
                           line(2, Kind::Act, 1, "unreadable, too") +
                           line(2, Kind::Saved, 7, "{}") + line(3, Kind::Saved, 8, "{}") +
                           line(3, Kind::Saved, 9, "{}");
  EXPECT_EQ(Compact(JournalContents(text), 10000), text);
}

TEST(JournalCompaction, WhatWasReceivedAndEditedByTurnsIsTwoActs) {
  std::string text = Line(1, JournalLine::Kind::Run, 1);
  for (int turn = 0; turn < 1000; ++turn) {
    const auto change = [&](int number, Origin origin, const char* field, int before, int after) {
      text += ActLine(2 + 3 * turn + number, 1, OneChange(origin, 2, field, before, after));
    };
    change(0, Origin::Operator, "Hidden", 2 * turn, 2 * turn + 1);
    change(1, Origin::Switcher, "Hidden", 2 * turn + 1, 2 * turn + 2);
    if (turn % 2 == 0) {
      change(2, Origin::Switcher, "Relays", turn, turn + 1);
    } else {
      change(2, Origin::Operator, "Relays", turn, turn + 1);
    }
  }
  const JournalContents contents(text);
  const JournalContents compacted(Compact(contents, 0));
  const UnsavedRun before = ReadUnsavedRun(contents.Runs().at(0));
  const UnsavedRun after = ReadUnsavedRun(compacted.Runs().at(0));
  ASSERT_EQ(after.acts.size(), 2u);
  for (const UnsavedRun* const run : {&before, &after}) {
    const std::vector<Change> all = ChangesOf(*run, Share::All);
    ASSERT_EQ(all.size(), 1u);
    ASSERT_EQ(all[0].fields.size(), 2u);
    EXPECT_EQ(all[0].fields[0].before, jet::Value(0));
    EXPECT_EQ(all[0].fields[0].after, jet::Value(2000)) << "received last";
    EXPECT_EQ(all[0].fields[1].before, jet::Value(0));
    EXPECT_EQ(all[0].fields[1].after, jet::Value(1000)) << "edited last";
    const std::vector<Change> edits = ChangesOf(*run, Share::Edits);
    ASSERT_EQ(edits.size(), 1u);
    ASSERT_EQ(edits[0].fields.size(), 2u);
    EXPECT_EQ(edits[0].fields[0].before, jet::Value(0));
    EXPECT_EQ(edits[0].fields[0].after, jet::Value(1999));
    EXPECT_EQ(edits[0].fields[1].after, jet::Value(1000));
  }
  EXPECT_LT(Compact(contents, 0).size(), 1000u);
}

TEST(JournalCompaction, AnActThatCannotBeReadStaysAsItIs) {
  const std::string unknown = WriteLine({.number = 3,
                                         .kind = JournalLine::Kind::Act,
                                         .run = 1,
                                         .content = "{\"from\":\"a later version\"}"});
  const std::string text = Line(1, JournalLine::Kind::Run, 1) +
                           ActLine(2, 1, OneChange(Origin::Operator, 2, "Label", "A", "B")) +
                           unknown +
                           ActLine(4, 1, OneChange(Origin::Operator, 2, "Label", "B", "C"));
  EXPECT_EQ(Compact(JournalContents(text), 0),
            Line(1, JournalLine::Kind::Run, 1) + unknown +
                ActLine(4, 1, OneChange(Origin::Operator, 2, "Label", "A", "C")));
  std::size_t unreadable = 0;
  const JournalContents contents(text);
  EXPECT_EQ(ActsOf(contents.Runs()[0], &unreadable).size(), 2u);
  EXPECT_EQ(unreadable, 1u);
}

}  // namespace
}  // namespace stations
