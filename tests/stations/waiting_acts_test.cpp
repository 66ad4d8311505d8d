// SPDX-License-Identifier: MIT

#include "stations/journal/waiting_acts.h"

#include <gmock/gmock.h>

#include <numeric>

#include "stations/journal/act.h"

namespace stations {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

std::string NotesOf(int station, const std::string& before, const std::string& after,
                    Origin origin = Origin::Operator) {
  return WriteAct({.title = "Notes of station " + std::to_string(station),
                   .time = "2026-11-22T18:05:12+01:00",
                   .origin = origin,
                   .changes = {{origin, station, {{"Notes", before, after}}}}});
}

std::size_t BytesOf(const WaitingActs& waiting) {
  return std::accumulate(
      waiting.Acts().begin(), waiting.Acts().end(), std::size_t{0},
      [](std::size_t bytes, const std::string& act) { return bytes + act.size(); });
}

TEST(WaitingActs, AreGivenBackInTheirOrder) {
  WaitingActs waiting;
  EXPECT_TRUE(waiting.IsEmpty());
  waiting.Add("first");
  waiting.Add("second");
  EXPECT_EQ(waiting.First(), "first");
  waiting.RemoveFirst();
  EXPECT_THAT(waiting.Acts(), ElementsAre("second"));
  waiting.Clear();
  EXPECT_TRUE(waiting.IsEmpty());
}

// A disk that is full for days, while two notes are edited and one comes from the switcher.
TEST(WaitingActs, AreFoldedBeforeTheyAreTooMany) {
  WaitingActs waiting;
  const std::string filling(5'000, 'x');
  const auto text = [&](int i) { return std::to_string(i) + filling; };
  std::size_t most = 0;
  for (int i = 0; i < 1'000; ++i) {
    waiting.Add(NotesOf(7, text(i), text(i + 1)));
    waiting.Add(NotesOf(5, text(i), text(i + 1)));
    waiting.Add(NotesOf(9, text(i), text(i + 1), Origin::Switcher));
    most = std::max(most, BytesOf(waiting));
  }
  EXPECT_LE(most, WaitingActs::kMostBytes);
  std::vector<Change> changes;
  for (const std::string& written : waiting.Acts()) {
    Act act;
    ASSERT_TRUE(ReadAct(written, &act));
    changes.insert(changes.end(), act.changes.begin(), act.changes.end());
  }
  // Of each station they lead on from one to the next, from the first value to the last.
  for (const int station : {5, 7, 9}) {
    std::string at = text(0);
    for (const Change& change : changes) {
      if (change.station != station) continue;
      ASSERT_THAT(change.fields, SizeIs(1));
      EXPECT_EQ(change.fields[0].before.Text(), at);
      EXPECT_EQ(change.origin, station == 9 ? Origin::Switcher : Origin::Operator);
      at = change.fields[0].after.Text();
    }
    EXPECT_EQ(at, text(1'000)) << station;
  }
}

// What folding cannot make less is not folded again with every act.
TEST(WaitingActs, AFullDatabaseIsHeldWhole) {
  WaitingActs waiting;
  const std::string long_(20'000, 'x');
  for (int station = 1; station <= 256; ++station) waiting.Add(NotesOf(station, "", long_));
  EXPECT_GT(BytesOf(waiting), WaitingActs::kMostBytes);
  const std::size_t acts = waiting.Acts().size();
  waiting.Add(NotesOf(1, long_, "a"));
  EXPECT_EQ(waiting.Acts().size(), acts + 1);
}

}  // namespace
}  // namespace stations
