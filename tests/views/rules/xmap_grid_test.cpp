// SPDX-License-Identifier: MIT

#include "views/rules/xmap_grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace rules {
namespace {

using switcher::TakeAction;
using testing::IsEmpty;

using Texts = std::vector<std::optional<std::string>>;

// A matrix of the given size with nothing made, and its empty grid.
struct Fixture {
  explicit Fixture(int channels) {
    model.ChannelCount = static_cast<std::int16_t>(channels);
    model.AllocateMap();
    grid.Clear();
  }

  // A row of the grid, one character a cell: ".", then "1" to "4".
  std::string Row(int output) const {
    std::string row;
    for (const Mark mark : grid.Marks(output)) row += ".1234"[static_cast<int>(mark)];
    return row;
  }

  model::SystemModel model;
  XmapGrid grid{model};
};

std::vector<int> Numbers(const ChannelSet& set) {
  std::vector<int> numbers;
  for (int n = 0; n <= model::kMaxChannelCount; ++n) {
    if (set.test(static_cast<std::size_t>(n))) numbers.push_back(n);
  }
  return numbers;
}

TEST(XmapGrid, EmptyMatrixHasOnlyItsCorner) {
  Fixture f(0);
  EXPECT_EQ(f.grid.ChannelCount(), 0);
  EXPECT_EQ(f.grid.MarkAt(0, 0), Mark::Crosspoint);
  EXPECT_EQ(f.grid.MarkAt(2, 2), Mark::None);
  EXPECT_EQ(f.grid.CellText(2, 0), "");
  EXPECT_TRUE(f.grid.UpdateXmap(model::kAll, 0).changed.none());
  EXPECT_EQ(f.grid.DecideAction(4, 2, 2).kind, ActionDecision::Kind::NoCell);
}

TEST(XmapGrid, CornerShowsTheCrosspointMark) {
  Fixture f(8);
  EXPECT_EQ(f.grid.MarkAt(0, 0), Mark::Crosspoint);
  EXPECT_EQ(f.grid.MarkAt(0, 1), Mark::None);
  EXPECT_EQ(f.grid.MarkAt(1, 0), Mark::None);
  EXPECT_EQ(f.grid.MarkAt(1, 1), Mark::None);
  EXPECT_EQ(f.grid.MarkAt(-1, 2), Mark::None);
  EXPECT_EQ(f.grid.MarkAt(10, 2), Mark::None);
}

TEST(XmapGrid, BandsOfTwoRowsTakeTurns) {
  std::string bands;
  for (int row = 2; row <= 13; ++row) bands += XmapGrid::HasTipColour(row) ? 't' : 'w';
  EXPECT_EQ(bands, "ttwwttwwttww");
}

TEST(XmapGrid, NumbersHaveTwoDigitsUpTo99Channels) {
  Fixture f(99);
  f.grid.UpdateOutputLabels(Texts(99, "x"));
  f.grid.UpdateInputLabels(Texts(99, "y"));
  EXPECT_EQ(f.grid.CellText(2, 1), "01");
  EXPECT_EQ(f.grid.CellText(100, 1), "99");
  EXPECT_EQ(f.grid.CellText(1, 2), "01");
  EXPECT_EQ(f.grid.CellText(1, 100), "99");
  EXPECT_EQ(f.grid.CellText(101, 1), "");
}

TEST(XmapGrid, NumbersHaveThreeDigitsFrom100Channels) {
  Fixture f(100);
  f.grid.UpdateOutputLabels(Texts(100, "x"));
  f.grid.UpdateInputLabels(Texts(100, "y"));
  EXPECT_EQ(f.grid.CellText(2, 1), "001");
  EXPECT_EQ(f.grid.CellText(101, 1), "100");
  EXPECT_EQ(f.grid.CellText(1, 101), "100");
}

TEST(XmapGrid, OutputLabelsStandAtTheirRows) {
  Fixture f(8);
  Texts labels(8, "Sta. 001");
  labels[1] = "";
  labels[6] = std::nullopt;
  f.grid.UpdateOutputLabels(labels);
  EXPECT_EQ(f.grid.CellText(2, 0), "Sta. 001");
  EXPECT_EQ(f.grid.CellText(3, 0), "");
  EXPECT_EQ(f.grid.CellText(8, 0), "Sta. 07");
  EXPECT_EQ(f.grid.OutputLabel(7), "Sta. 07");
  EXPECT_EQ(f.grid.CellText(0, 0), "");
  EXPECT_EQ(f.grid.CellText(0, 2), "") << "the inputs have not been written";
}

TEST(XmapGrid, NullLabelsAbove99ChannelsHaveThreeDigits) {
  Fixture f(104);
  Texts labels(104, "x");
  labels[6] = std::nullopt;
  f.grid.UpdateOutputLabels(labels);
  f.grid.UpdateInputLabels(labels);
  EXPECT_EQ(f.grid.CellText(8, 0), "Sta. 007");
  EXPECT_EQ(f.grid.CellText(0, 8), " S\r t\r a\r .\r  \r 0\r 0\r 7");
}

TEST(XmapGrid, ColumnLabelsAreWrittenDownwards) {
  Fixture f(8);
  Texts labels(8, "Inpt 001");
  labels[1] = "";
  labels[2] = std::nullopt;
  labels[3] = "ABCDEFGHIJKL";
  labels[4] = "K\xC3\xBC\xE2\x82\xAC";
  f.grid.UpdateInputLabels(labels);
  EXPECT_EQ(f.grid.CellText(0, 2), "I\rn\rp\rt\r \r0\r0\r1\r");
  EXPECT_EQ(f.grid.CellText(0, 3), "");
  EXPECT_EQ(f.grid.CellText(0, 4), "S\rt\ra\r.\r \r0\r3\r");
  EXPECT_EQ(f.grid.CellText(0, 5), "A\rB\rC\rD\rE\rF\rG\rH\rI\rJ\rK\rL") << "23 characters";
  EXPECT_EQ(f.grid.CellText(0, 6), "K\r\xC3\xBC\r\xE2\x82\xAC\r");
  EXPECT_EQ(f.grid.InputLabel(4), "ABCDEFGHIJKL");
}

TEST(XmapGrid, ColumnLabelsAbove99ChannelsAreIndented) {
  Fixture f(100);
  Texts labels(100, "Inpt 001");
  labels[1] = "AB";
  f.grid.UpdateInputLabels(labels);
  EXPECT_EQ(f.grid.CellText(0, 2), " I\r n\r p\r t\r  \r 0\r 0\r 1") << "23 of 24 characters";
  EXPECT_EQ(f.grid.CellText(0, 3), " A\r B\r");
}

TEST(XmapGrid, LabelsThatWereNotReadStayAsTheyAre) {
  Fixture f(8);
  f.grid.UpdateOutputLabels(Texts(3, "first"));
  EXPECT_EQ(f.grid.CellText(4, 0), "first");
  EXPECT_EQ(f.grid.CellText(4, 1), "03");
  EXPECT_EQ(f.grid.CellText(5, 0), "");
  EXPECT_EQ(f.grid.CellText(5, 1), "");
  f.grid.UpdateOutputLabels(Texts(8, "second"));
  f.grid.UpdateOutputLabels(Texts(1, "third"));
  EXPECT_EQ(f.grid.CellText(2, 0), "third");
  EXPECT_EQ(f.grid.CellText(9, 0), "second");
  EXPECT_EQ(f.grid.CellText(9, 1), "08");
}

struct RowCase {
  const char* name;
  int mode;
  std::uint8_t map;
  Mark before;
  Mark after;
  int conflicts;
};

constexpr RowCase kRows[] = {
    {"ordinary", 0, 1, Mark::None, Mark::Crosspoint, 0},
    {"ordinary over priority", 0, 1, Mark::Priority, Mark::Crosspoint, 0},
    {"ordinary over reserved", 0, 1, Mark::Reserved, Mark::Crosspoint, 0},
    {"priority", 1, 1, Mark::None, Mark::Priority, 0},
    {"priority over ordinary", 1, 1, Mark::Crosspoint, Mark::Priority, 0},
    {"other mode leaves an empty cell", 2, 1, Mark::None, Mark::None, 0},
    {"other mode leaves a mark", 5, 1, Mark::Priority, Mark::Priority, 0},
    {"conflict", 0, 1, Mark::Inhibit, Mark::Crosspoint, 1},
    {"conflict in priority mode is ordinary", 1, 1, Mark::Inhibit, Mark::Crosspoint, 1},
    {"conflict in another mode", 7, 1, Mark::Inhibit, Mark::Crosspoint, 1},
    {"broken", 0, 0, Mark::Crosspoint, Mark::None, 0},
    {"priority broken", 1, 0, Mark::Priority, Mark::None, 0},
    {"reserved broken", 0, 0, Mark::Reserved, Mark::None, 0},
    {"broken in another mode", 3, 0, Mark::Crosspoint, Mark::None, 0},
    {"inhibit survives", 0, 0, Mark::Inhibit, Mark::Inhibit, 0},
    {"a value that is not 1 is not made", 0, 2, Mark::Crosspoint, Mark::None, 0},
};

TEST(XmapGrid, RowIsDrawnInTheModeGiven) {
  for (const RowCase& c : kRows) {
    SCOPED_TRACE(c.name);
    Fixture f(8);
    f.grid.SetMark(3, 5, c.before);
    f.model.CrosspointMap.At(3, 5) = c.map;
    f.model.ChannelStatus[3] = 1 - c.mode % 2;  // must not matter
    const MapUpdate update = f.grid.UpdateXmap(3, c.mode);
    EXPECT_EQ(f.grid.MarkAt(4, 6), c.after);
    EXPECT_EQ(update.conflicts, c.conflicts);
    EXPECT_EQ(update.changed.test(3), c.before != c.after);
    EXPECT_LE(update.changed.count(), 1U);
  }
}

TEST(XmapGrid, WholeMapIsDrawnInTheModeOfEachOutput) {
  for (const RowCase& c : kRows) {
    SCOPED_TRACE(c.name);
    Fixture f(8);
    f.grid.SetMark(3, 5, c.before);
    f.model.CrosspointMap.At(3, 5) = c.map;
    f.model.ChannelStatus[3] = static_cast<std::uint8_t>(c.mode);
    const MapUpdate update = f.grid.UpdateXmap(model::kAll, 1 - c.mode % 2);
    EXPECT_EQ(f.grid.MarkAt(4, 6), c.after);
    EXPECT_EQ(update.conflicts, c.conflicts);
    EXPECT_EQ(update.changed.test(3), c.before != c.after);
  }
}

TEST(XmapGrid, RowUpdateTouchesNoOtherRow) {
  Fixture f(8);
  for (int o = 1; o <= 8; ++o) f.model.CrosspointMap.At(o, o) = 1;
  const MapUpdate update = f.grid.UpdateXmap(8, 0);
  EXPECT_EQ(f.Row(7), "........");
  EXPECT_EQ(f.Row(8), ".......1");
  EXPECT_THAT(Numbers(update.changed), testing::ElementsAre(8));
  EXPECT_TRUE(f.grid.UpdateXmap(8, 0).changed.none()) << "nothing new";
}

TEST(XmapGrid, EveryConflictCounts) {
  Fixture f(8);
  for (int i = 1; i <= 8; ++i) {
    f.grid.SetMark(2, i, Mark::Inhibit);
    f.model.CrosspointMap.At(2, i) = i % 2 == 0 ? 1 : 0;
  }
  const MapUpdate update = f.grid.UpdateXmap(model::kAll, 0);
  EXPECT_EQ(update.conflicts, 4);
  EXPECT_EQ(f.Row(2), "21212121");
  EXPECT_EQ(f.grid.UpdateXmap(model::kAll, 0).conflicts, 0) << "the inhibit has gone";
}

TEST(XmapGrid, OutputsThatDoNotExistChangeNothing) {
  Fixture f(8);
  for (int o = 1; o <= 8; ++o) f.model.CrosspointMap.At(o, 1) = 1;
  for (const int output : {0, -1, 9, 9998, 10000}) {
    EXPECT_TRUE(f.grid.UpdateXmap(output, 0).changed.none()) << output;
  }
  EXPECT_EQ(f.Row(1), "........");
}

TEST(XmapGrid, MapOfAnotherSizeIsLeftAlone) {
  Fixture f(8);
  f.model.ChannelCount = 4;
  f.model.AllocateMap();
  EXPECT_TRUE(f.grid.UpdateXmap(model::kAll, 0).changed.none());
  EXPECT_TRUE(f.grid.UpdateXmap(8, 0).changed.none());
  EXPECT_EQ(f.grid.DecideAction(4, 9, 9).kind, ActionDecision::Kind::NoCell);
}

TEST(XmapGrid, LargestMatrixIsDrawnToItsLastCell) {
  Fixture f(256);
  f.model.CrosspointMap.At(256, 256) = 1;
  f.model.ChannelStatus[256] = 1;
  EXPECT_THAT(Numbers(f.grid.UpdateXmap(model::kAll, 0).changed), testing::ElementsAre(256));
  EXPECT_EQ(f.grid.MarkAt(257, 257), Mark::Priority);
}

TEST(XmapGrid, InhibitsAreDrawnInRecordOrder) {
  Fixture f(8);
  const Texts inhibits{"10000000", "01000001", std::nullopt, "0000000011111"};
  EXPECT_THAT(Numbers(f.grid.UpdateXmapInhibits(inhibits)), testing::ElementsAre(1, 2));
  EXPECT_EQ(f.Row(1), "2.......");
  EXPECT_EQ(f.Row(2), ".2.....2");
  EXPECT_EQ(f.Row(3), "........");
  EXPECT_EQ(f.Row(4), "........");
}

TEST(XmapGrid, ALongCharacterIsOneInhibitThatIsClear) {
  Fixture f(8);
  f.grid.UpdateXmapInhibits(Texts{"10é10001", "€1",
                                  "\xF0\x9D\x84\x9E"
                                  "1"});
  EXPECT_EQ(f.Row(1), "2..2...2");
  EXPECT_EQ(f.Row(2), ".2......");
  EXPECT_EQ(f.Row(3), "..2.....") << "it counts as the two characters that the database keeps";
}

TEST(XmapGrid, InhibitsReplaceEveryMarkButKeepOnlyOrdinaryOnes) {
  Fixture f(8);
  for (int o = 1; o <= 2; ++o) {
    for (int mark = 0; mark <= 4; ++mark) f.grid.SetMark(o, mark + 1, static_cast<Mark>(mark));
  }
  f.grid.UpdateXmapInhibits(Texts{"11111000", "00000000"});
  EXPECT_EQ(f.Row(1), "22222...");
  EXPECT_EQ(f.Row(2), ".1......") << "priority and reserved marks go, ordinary ones stay";
}

TEST(XmapGrid, CrosspointsAreRedrawnWhereNoInhibitShows) {
  Fixture f(8);
  f.grid.UpdateXmapInhibits(Texts{"01000000", "00000000", "00000000", "00000000"});
  for (int input = 1; input <= 4; ++input) {
    for (int output = 1; output <= 4; ++output) f.model.CrosspointMap.At(output, input) = 1;
  }
  f.model.ChannelStatus[2] = 1;  // a call
  f.model.ChannelStatus[3] = 7;
  f.grid.SetMark(3, 2, Mark::Crosspoint);
  f.grid.SetMark(4, 8, Mark::Priority);  // of a crosspoint that is not made any more
  EXPECT_THAT(Numbers(f.grid.RedrawCrosspoints()), testing::ElementsAre(1, 2, 4));
  EXPECT_EQ(f.Row(1), "1211....") << "an inhibit stays, made or not";
  EXPECT_EQ(f.Row(2), "3333....");
  EXPECT_EQ(f.Row(3), ".1......") << "another status value leaves what is shown";
  EXPECT_EQ(f.Row(4), "1111....");
  EXPECT_TRUE(f.grid.RedrawCrosspoints().none());
}

TEST(XmapGrid, AMapOfAnotherSizeRedrawsNothing) {
  Fixture f(8);
  f.grid.SetMark(1, 1, Mark::Priority);
  f.model.ChannelCount = 16;
  f.model.AllocateMap();
  EXPECT_TRUE(f.grid.RedrawCrosspoints().none());
  EXPECT_EQ(f.Row(1), "3.......");
}

TEST(XmapGrid, InhibitsBeyondTheRecordsReadStay) {
  Fixture f(8);
  f.grid.SetMark(2, 1, Mark::Inhibit);
  f.grid.UpdateXmapInhibits(Texts{"00000000"});
  EXPECT_EQ(f.Row(2), "2.......");
}

TEST(XmapGrid, MoreInhibitRecordsThanOutputs) {
  Fixture f(8);
  f.grid.UpdateXmapInhibits(Texts(128, std::string(64, '1')));
  EXPECT_EQ(f.Row(8), "22222222");
}

struct ActionCase {
  const char* name;
  int action;
  int code;  // when there is no crosspoint
  int undo;  // when there is one; -1 for nothing
  Mark mark;
};

constexpr ActionCase kActions[] = {
    {"call", 0, 0x86, 0x84, Mark::Priority},
    {"listen", 1, 0x02, 0x00, Mark::Crosspoint},
    {"priority listen", 2, 0x8A, 0x88, Mark::Priority},
    {"take", 4, 0x03, -1, Mark::Crosspoint},
    {"sum", 5, 0x02, 0x00, Mark::Crosspoint},
};

TEST(XmapGrid, ActionsMakeACrosspoint) {
  for (const ActionCase& c : kActions) {
    SCOPED_TRACE(c.name);
    Fixture f(8);
    const ActionDecision decision = f.grid.DecideAction(c.action, 4, 7);
    ASSERT_EQ(decision.kind, ActionDecision::Kind::Send);
    EXPECT_EQ(decision.output, 3);
    EXPECT_EQ(decision.input, 6);
    EXPECT_EQ(static_cast<int>(decision.code), c.code);
    EXPECT_EQ(f.Row(3), "........") << "deciding draws nothing";
    f.grid.DrawAction(decision);
    EXPECT_EQ(f.grid.MarkAt(4, 7), c.mark);
    EXPECT_EQ(f.model.CrosspointMap.At(3, 6), 1);
  }
}

TEST(XmapGrid, ActionsBreakACrosspoint) {
  for (const ActionCase& c : kActions) {
    SCOPED_TRACE(c.name);
    Fixture f(8);
    f.model.CrosspointMap.At(3, 6) = 1;
    f.grid.SetMark(3, 6, Mark::Crosspoint);
    const ActionDecision decision = f.grid.DecideAction(c.action, 4, 7);
    if (c.undo < 0) {
      EXPECT_EQ(decision.kind, ActionDecision::Kind::AlreadyMade);
      f.grid.DrawAction(decision);
      EXPECT_EQ(f.grid.MarkAt(4, 7), Mark::Crosspoint) << "a take is never undone";
      EXPECT_EQ(f.model.CrosspointMap.At(3, 6), 1);
      continue;
    }
    ASSERT_EQ(decision.kind, ActionDecision::Kind::Send);
    EXPECT_EQ(static_cast<int>(decision.code), c.undo);
    f.grid.DrawAction(decision);
    EXPECT_EQ(f.grid.MarkAt(4, 7), Mark::None);
    EXPECT_EQ(f.model.CrosspointMap.At(3, 6), 0);
  }
}

TEST(XmapGrid, ActionsGoByTheMapNotByTheMark) {
  Fixture f(8);
  f.grid.SetMark(1, 1, Mark::Crosspoint);
  EXPECT_EQ(f.grid.DecideAction(0, 2, 2).code, TakeAction::MakeCall);
  f.model.CrosspointMap.At(1, 2) = 1;
  EXPECT_EQ(f.grid.DecideAction(0, 2, 3).code, TakeAction::BreakCall);
}

TEST(XmapGrid, OtherMapValuesAndOtherActionsDoNothing) {
  Fixture f(8);
  f.model.CrosspointMap.At(1, 1) = 2;
  for (const ActionCase& c : kActions) {
    EXPECT_EQ(f.grid.DecideAction(c.action, 2, 2).kind, ActionDecision::Kind::Nothing) << c.name;
  }
  for (const int action : {3, 6, -1, 134}) {
    EXPECT_EQ(f.grid.DecideAction(action, 2, 3).kind, ActionDecision::Kind::Nothing) << action;
  }
}

TEST(XmapGrid, InhibitedCellsRefuseEveryAction) {
  Fixture f(8);
  f.grid.SetMark(1, 1, Mark::Inhibit);
  for (const int action : {0, 1, 2, 3, 4, 5}) {
    EXPECT_EQ(f.grid.DecideAction(action, 2, 2).kind, ActionDecision::Kind::Inhibited) << action;
  }
  f.model.CrosspointMap.At(1, 1) = 1;
  EXPECT_EQ(f.grid.DecideAction(4, 2, 2).kind, ActionDecision::Kind::Inhibited);
}

TEST(XmapGrid, HeaderCellsCannotBeActedOn) {
  Fixture f(8);
  constexpr int kCells[][2] = {{0, 0}, {1, 1},   {1, 2},  {2, 1}, {0, 5},
                               {5, 0}, {-1, -1}, {10, 2}, {2, 10}};
  for (const auto& [row, column] : kCells) {
    SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(column));
    EXPECT_FALSE(f.grid.IsCrosspoint(row, column));
    EXPECT_EQ(f.grid.DecideAction(4, row, column).kind, ActionDecision::Kind::NoCell);
  }
  EXPECT_TRUE(f.grid.IsCrosspoint(2, 2));
  EXPECT_TRUE(f.grid.IsCrosspoint(9, 9));
}

TEST(XmapGrid, InhibitIsSet) {
  Fixture f(8);
  const InhibitDecision decision = f.grid.DecideInhibit("10000000", 2, 4);
  EXPECT_EQ(decision.kind, InhibitDecision::Kind::Store);
  EXPECT_EQ(decision.flags, "10100000");
  EXPECT_EQ(decision.mark, Mark::Inhibit);
}

TEST(XmapGrid, InhibitIsSetInATextThatIsTooShort) {
  Fixture f(8);
  EXPECT_EQ(f.grid.DecideInhibit("1", 2, 4).flags, "101");
  EXPECT_EQ(f.grid.DecideInhibit("", 2, 2).flags, "1");
}

TEST(XmapGrid, InhibitsBesideALongCharacterAreKept) {
  Fixture f(8);
  EXPECT_EQ(f.grid.DecideInhibit("10é10001", 2, 4).flags, "10110001") << "in its place";
  EXPECT_EQ(f.grid.DecideInhibit("10é10001", 2, 3).flags, "11é10001") << "before it";
  EXPECT_EQ(f.grid.DecideInhibit("10é10001", 2, 6).flags, "10011001") << "behind it";
  f.grid.SetMark(1, 4, Mark::Inhibit);
  const InhibitDecision cleared = f.grid.DecideInhibit("10é10001", 2, 5);
  EXPECT_EQ(cleared.flags, "10000001");
  EXPECT_EQ(cleared.mark, Mark::None);
}

TEST(XmapGrid, InhibitIsClearedTogetherWithItsMark) {
  Fixture f(8);
  f.grid.SetMark(1, 3, Mark::Inhibit);
  const InhibitDecision decision = f.grid.DecideInhibit("11111111", 2, 4);
  EXPECT_EQ(decision.kind, InhibitDecision::Kind::Store);
  EXPECT_EQ(decision.flags, "11011111");
  EXPECT_EQ(decision.mark, Mark::None);
}

TEST(XmapGrid, InhibitIsClearedUnderACrosspointThatStays) {
  Fixture f(8);
  for (const Mark mark : {Mark::Crosspoint, Mark::Priority, Mark::Reserved}) {
    f.grid.SetMark(1, 3, mark);
    const InhibitDecision decision = f.grid.DecideInhibit("00100000", 2, 4);
    EXPECT_EQ(decision.kind, InhibitDecision::Kind::Store);
    EXPECT_EQ(decision.flags, "00000000");
    EXPECT_EQ(decision.mark, mark);
  }
}

TEST(XmapGrid, InhibitIsRefusedOnEveryKindOfCrosspoint) {
  Fixture f(8);
  for (const Mark mark : {Mark::Crosspoint, Mark::Priority, Mark::Reserved}) {
    f.grid.SetMark(1, 3, mark);
    EXPECT_EQ(f.grid.DecideInhibit("00000000", 2, 4).kind,
              InhibitDecision::Kind::CrosspointPresent);
  }
}

TEST(XmapGrid, InhibitMarkWithoutItsFlagStoresTheFlag) {
  Fixture f(8);
  f.grid.SetMark(1, 3, Mark::Inhibit);
  const InhibitDecision decision = f.grid.DecideInhibit("00000000", 2, 4);
  EXPECT_EQ(decision.kind, InhibitDecision::Kind::Store);
  EXPECT_EQ(decision.flags, "00100000");
  EXPECT_EQ(decision.mark, Mark::Inhibit);
}

TEST(XmapGrid, ClearForgetsEverything) {
  Fixture f(8);
  f.grid.SetMark(1, 1, Mark::Priority);
  f.grid.UpdateOutputLabels(Texts(8, "x"));
  f.grid.Clear();
  EXPECT_EQ(f.Row(1), "........");
  EXPECT_THAT(f.grid.CellText(2, 0), IsEmpty());
}

}  // namespace
}  // namespace rules
