// SPDX-License-Identifier: MIT

#include "tests/crash/last_acts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace crash {
namespace {

using stations::Act;
using stations::Change;
using stations::JournalLine;
using stations::Origin;
using test::StoredTables;

Act LabelOf(int station, const std::string& before, const std::string& after) {
  return {.title = "Label of station " + std::to_string(station),
          .changes = {{Origin::Operator, station, {{"Label", before, after}}}}};
}

// A button of station 1, copied to four others.
const Act kCopy{.title = "Copy",
                .changes = {{Origin::Operator, 2, {{"B1 Type", 0, 255}, {"B1 Prog", "00", "11"}}},
                            {Origin::Operator, 3, {{"B1 Type", 0, 255}, {"B1 Prog", "00", "11"}}},
                            {Origin::Operator, 4, {{"B1 Type", 0, 255}, {"B1 Prog", "00", "11"}}},
                            {Origin::Operator, 5, {{"B1 Type", 0, 255}, {"B1 Prog", "00", "11"}}}}};

// Stations 2 to 5, of which those up to the given one have the copy.
StoredTables CopiedUpTo(int last) {
  StoredTables tables;
  for (int station = 2; station <= 5; ++station) {
    tables[std::to_string(station) + " B1 Type"] = station <= last ? "255" : "0";
    tables[std::to_string(station) + " B1 Prog"] = station <= last ? "11" : "00";
    tables[std::to_string(station) + " Label"] = "CAM";
  }
  return tables;
}

constexpr int kNone = 1;

TEST(LastActsTest, AnActNobodyHasSeenIsThereWholeOrNotAtAll) {
  EXPECT_TRUE(IsSeenAndWholeActs(CopiedUpTo(kNone), CopiedUpTo(kNone), {kCopy}));
  EXPECT_TRUE(IsSeenAndWholeActs(CopiedUpTo(5), CopiedUpTo(kNone), {kCopy}));
  for (int last = 2; last < 5; ++last) {
    EXPECT_FALSE(IsSeenAndWholeActs(CopiedUpTo(last), CopiedUpTo(kNone), {kCopy})) << last;
  }
  StoredTables halfARecord = CopiedUpTo(5);
  halfARecord["5 B1 Prog"] = "00";
  EXPECT_FALSE(IsSeenAndWholeActs(halfARecord, CopiedUpTo(kNone), {kCopy}));
}

TEST(LastActsTest, WhatWasSeenIsThere) {
  EXPECT_TRUE(IsSeenAndWholeActs(CopiedUpTo(5), CopiedUpTo(5), {kCopy}));
  EXPECT_FALSE(IsSeenAndWholeActs(CopiedUpTo(3), CopiedUpTo(5), {kCopy}));
  EXPECT_FALSE(IsSeenAndWholeActs(CopiedUpTo(kNone), CopiedUpTo(5), {kCopy}));
  EXPECT_FALSE(IsSeenAndWholeActs(CopiedUpTo(kNone), CopiedUpTo(5), {}));
}

TEST(LastActsTest, AnEarlierActOfTheFieldDoesNotExcuseALaterOne) {
  StoredTables seen = CopiedUpTo(kNone);
  StoredTables lost = seen;
  seen["2 Label"] = "NEWS";
  lost["2 Label"] = "STUDIO";
  const std::vector<Act> acts{LabelOf(2, "CAM", "STUDIO"), LabelOf(2, "STUDIO", "NEWS")};
  EXPECT_TRUE(IsSeenAndWholeActs(seen, seen, acts));
  EXPECT_FALSE(IsSeenAndWholeActs(lost, seen, acts));
}

TEST(LastActsTest, WhatIsInNoActIsAsItWasSeen) {
  StoredTables other = CopiedUpTo(5);
  other["3 Label"] = "SOUND";
  EXPECT_FALSE(IsSeenAndWholeActs(other, CopiedUpTo(kNone), {kCopy}));
}

TEST(LastActsTest, OfTablesThatArriveAnyPartMayBeThere) {
  const StoredTables arriving{{"3 Label", "SOUND"}, {"4 Label", "NEWS"}};
  StoredTables tables = CopiedUpTo(kNone);
  tables["3 Label"] = "SOUND";
  EXPECT_TRUE(IsSeenAndWholeActs(tables, CopiedUpTo(kNone), {}, arriving));
  tables["4 Label"] = "LIGHT";
  EXPECT_FALSE(IsSeenAndWholeActs(tables, CopiedUpTo(kNone), {}, arriving));
  EXPECT_FALSE(IsSeenAndWholeActs(StoredTables(), CopiedUpTo(kNone), {}, arriving));
}

// Lines of a journal, with their numbers.
class JournalText {
 public:
  void Add(JournalLine::Kind kind, std::int64_t run, const std::string& content) {
    text_ +=
        stations::WriteLine({.number = ++number_, .kind = kind, .run = run, .content = content});
  }
  void AddLabel(std::int64_t run, const std::string& label) {
    Add(JournalLine::Kind::Act, run, stations::WriteAct(LabelOf(7, "", label)));
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  std::int64_t number_ = 0;
};

TEST(LastActsTest, OnlyTheRunThatWasKilledLastMayHaveDoneWhatNobodySaw) {
  JournalText journal;
  journal.Add(JournalLine::Kind::Run, 1, "{}");
  journal.AddLabel(1, "OLD");
  journal.Add(JournalLine::Kind::Run, 3, "{}");
  for (const char* const label : {"ONE", "TWO", "THREE", "FOUR"}) journal.AddLabel(3, label);
  journal.Add(JournalLine::Kind::Run, 8, "{}");
  journal.AddLabel(8, "SAVED");
  journal.Add(JournalLine::Kind::Saved, 8, "{}");
  std::vector<std::string> labels;
  for (const Act& act : LastActs(stations::JournalContents(journal.Text()))) {
    labels.push_back(act.changes.front().fields.front().after.Text());
  }
  EXPECT_THAT(labels, testing::ElementsAre("TWO", "THREE", "FOUR"));
}

}  // namespace
}  // namespace crash
