// SPDX-License-Identifier: MIT

#include "switcher/unsent/held_messages.h"

#include <gtest/gtest.h>

#include <string>

namespace switcher {
namespace {

using State = HeldMessage::State;
using std::chrono::November;

Day NovemberDay(unsigned day) { return {std::chrono::year(2026), November, std::chrono::day(day)}; }

const HeldMessages kHeldMessages{
    {{.table = Table::Optos}, {State::Held, 0x8F3A21C49B2D7E10, {}}},
    {{.table = Table::OutputLabels}, {State::Found, 1, NovemberDay(20)}},
    {{.table = Table::InputLabels}, {State::Open, 2, NovemberDay(9)}},
    {{Table::Inhibits, 3}, {State::Held, 0xFFFFFFFFFFFFFFFF, NovemberDay(21)}},
    {{Table::Relays, 256}, {State::Held, 0, {}}},
    {{Table::Buttons, 12}, {State::Open, 0x10, NovemberDay(21)}},
};

constexpr char kText[] =
    "optos - held 8f3a21c49b2d7e10 -\n"
    "station-labels - found 0000000000000001 2026-11-20\n"
    "input-labels - open 0000000000000002 2026-11-09\n"
    "inhibits 3 held ffffffffffffffff 2026-11-21\n"
    "relays 256 held 0000000000000000 -\n"
    "buttons 12 open 0000000000000010 2026-11-21\n";

TEST(HeldMessages, HaveALineEach) { EXPECT_EQ(WriteHeld(kHeldMessages), kText); }

TEST(HeldMessages, AreReadAsTheyWereWritten) { EXPECT_EQ(ReadHeld(kText), kHeldMessages); }

TEST(HeldMessages, EveryTableHasAWord) {
  for (const db::TableKind& kind : db::kTables) {
    const Table table = kind.table;
    const TablePart part = MessageOf({.table = table, .station = 1});
    const HeldMessages messages{{part, {State::Held, 1, {}}}};
    EXPECT_EQ(ReadHeld(WriteHeld(messages)), messages) << static_cast<int>(table);
  }
}

TEST(HeldMessages, OfWhatIsAsItWasFoundHaveNone) {
  EXPECT_EQ(WriteHeld({{{Table::Relays, 1}, {State::Found, 5, {}}}}), "");
}

TEST(HeldMessages, LinesThatCannotBeUnderstoodArePassedOver) {
  for (const char* const line : {"",
                                 " ",
                                 "inhibits",
                                 "inhibits 3 held ffffffffffffffff",
                                 "inhibits 3 held fff 2026-11-21",
                                 "inhibits 3 held ffffffffffffffff 2026-13-21",
                                 "inhibits 3 held ffffffffffffffff 20216-1-21",
                                 "inhibits 3 held ffffffffffffffff 2026-11-2",
                                 "inhibits 3 held ffffffffffffffff 2026-11-21 ",
                                 "inhibits 0 held ffffffffffffffff -",
                                 "inhibits -3 held ffffffffffffffff -",
                                 "inhibits 99999 held ffffffffffffffff -",
                                 "inhibits 9999999999999 held ffffffffffffffff -",
                                 "inhibits - held ffffffffffffffff -",
                                 "optos 1 held ffffffffffffffff -",
                                 "map 1 held ffffffffffffffff -",
                                 "inhibits 3 kept ffffffffffffffff -",
                                 "inhibits 3 held gfffffffffffffff -",
                                 "inhibits 3 held +fffffffffffffff -",
                                 "INHIBITS 3 held ffffffffffffffff -"}) {
    EXPECT_EQ(ReadHeld(line), HeldMessages()) << line;
    EXPECT_EQ(ReadHeld(line + std::string("\n") + kText), kHeldMessages) << line;
  }
}

TEST(HeldMessages, OfAFileCutAnywhereTheLastLineAloneIsLost) {
  const std::string text = kText;
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const HeldMessages read = ReadHeld(text.substr(0, length));
    const auto lines = std::count(text.begin(), text.begin() + static_cast<long>(length), '\n');
    EXPECT_GE(read.size(), static_cast<std::size_t>(lines)) << length;
    for (const auto& [part, message] : read) {
      if (part < std::prev(read.end())->first) {
        EXPECT_EQ(message, kHeldMessages.at(part)) << length;
      }
    }
  }
}

TEST(HeldMessages, TheLastOfTwoLinesCounts) {
  const HeldMessages read =
      ReadHeld("relays 4 held 0000000000000001 -\nrelays 4 open 0000000000000002 -\n");
  EXPECT_EQ(read, (HeldMessages{{{Table::Relays, 4}, {State::Open, 2, {}}}}));
}

}  // namespace
}  // namespace switcher
