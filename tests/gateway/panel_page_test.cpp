// SPDX-License-Identifier: MIT
//
// Plays the conversations of docs/panel-format.md with the real gateway: what a panel and the
// switcher send in them is sent, and the console must send what stands in the page, and nothing
// else.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "gateway/panel_tables.h"
#include "switcher/decoder.h"
#include "switcher/wire/label_selector.h"
#include "tests/gateway/gateway_fixture.h"
#include "tests/support/hex.h"
#include "tests/support/page_examples.h"

namespace gateway {
namespace {

// One line of a conversation with those that continue it: who, and the bytes.
struct Turn {
  std::string who;
  std::string bytes;  // "F2 00 03"; cut short where it ends in "…"
};

std::vector<Turn> Conversation() {
  std::vector<Turn> turns;
  for (const std::string& line : test::PageLines("panel-format.md", "talk")) {
    const std::size_t gap = line.find(' ');
    const std::string bytes = line.substr(line.find_first_not_of(' ', gap));
    if (gap > 0) {
      turns.push_back({line.substr(0, gap), bytes});
    } else {
      turns.back().bytes += " " + bytes;
    }
  }
  return turns;
}

class PanelPageTest : public GatewayTest {
 protected:
  // The system of the page.
  PanelPageTest() {
    AddStations();
    model_.CrosspointMap.At(3, 1) = 1;
    model_.CrosspointMap.At(3, 8) = 1;
    model_.ChannelStatus[3] = 1;
    database_.Set(1, "B1 Type", 0);
    database_.Set(1, "B1 First", 2);
    database_.Set(1, "B1 Prog", "0101" + std::string(60, '0'));
    database_.Set(1, "B2 Type", 254);
    database_.Set(1, "B2 First", 1);
    database_.Set(1, "B2 Prog", std::string(64, '0'));
  }

  // What has come to the panel and on the switcher's line, is compared with the turns that say so.
  void Compare(const std::string& cause) {
    while (Tick()) timer_.ElapseAll();
    timer_.ElapseAll();
    for (const auto& [who, sent] :
         {std::pair{"console", panel_->TakeWritten()}, {"line", port_.TakeWritten()}}) {
      const std::string expected = expected_[who];
      if (expected.ends_with("…")) {
        const std::string shown = expected.substr(0, expected.find(" …"));
        EXPECT_EQ(sent.substr(0, shown.size()), shown) << "after " << cause;
      } else {
        EXPECT_EQ(sent, expected) << "after " << cause;
      }
    }
    expected_.clear();
  }

  std::shared_ptr<test::FakePeer> panel_ = Connect();
  std::map<std::string, std::string> expected_;
};

TEST_F(PanelPageTest, TheConversationsGoAsThePageSays) {
  switcher::Decoder decoder({.model = model_,
                             .database = [this] { return database_.Files().Database(); },
                             .reporter = reporter_,
                             .observers = {gateway_}});
  std::string cause = "connecting";
  for (const Turn& turn : Conversation()) {
    if (turn.who == "console" || turn.who == "line") {
      std::string& expected = expected_[turn.who];
      expected += (expected.empty() ? "" : " ") + turn.bytes;
      continue;
    }
    Compare(cause);
    cause = turn.bytes;
    if (turn.who == "panel") {
      panel_->Send(turn.bytes);
    } else {
      ASSERT_EQ(turn.who, "switcher");
      decoder.Decode(test::FromHex(turn.bytes));
    }
  }
  Compare(cause);
  EXPECT_THAT(reporter_.reports, testing::IsEmpty());
}

TEST_F(PanelPageTest, EveryFrameIsInAConversation) {
  std::map<std::string, std::vector<std::string>> types;
  for (const Turn& turn : Conversation()) types[turn.who].push_back(turn.bytes.substr(0, 2));
  EXPECT_THAT(types["panel"], testing::IsSupersetOf({"81", "F5", "F2", "FE"}));
  EXPECT_THAT(types["console"], testing::IsSupersetOf({"81", "F4", "F6", "FC", "FB", "FD"}));
}

// The frame that a row of the table of lengths is about, with no crosspoint made and no button that
// acts on anything.
class PanelPageLengths : public testing::Test {
 protected:
  PanelPageLengths() {
    for (int station = 1; station <= 256; ++station) database_.AddStation(station, {});
  }

  Bytes FrameOfRow(const std::string& name, int channels) {
    model_.ChannelCount = static_cast<std::int16_t>(channels);
    model_.AllocateMap();
    jet::Database& database = *database_.Files().Database();
    Bytes frame;
    bool built = true;
    if (name == "one row of the map") {
      built = BuildCrosspointMap(model_, 1, 1, &frame).ok();
    } else if (name == "the whole map") {
      built = BuildCrosspointMap(model_, 1, channels, &frame).ok();
    } else if (name == "labels") {
      built = BuildLabelTable(database, model_, switcher::kOutputLabels, &frame).ok();
    } else if (name == "list of stations") {
      frame = BuildStationList(model_);
    } else if (name == "button programming") {
      built = BuildButtonProgramming(database, model_, &frame).ok();
    } else {
      ADD_FAILURE() << name;
    }
    EXPECT_TRUE(built) << name;
    return frame;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
};

TEST_F(PanelPageLengths, AreThoseOfThePage) {
  int compared = 0;
  for (const auto& row : test::PageTable("panel-format.md", "## To the panel")) {
    ASSERT_EQ(row.size(), 6U) << row.front();
    if (row[0] == "0x81" || row[0] == "0xF4, 0xF1") continue;  // in the conversation
    std::size_t column = 3;
    for (const int channels : {16, 64, 256}) {
      const Bytes frame = FrameOfRow(row[1], channels);
      const std::string cell = row[column++];
      EXPECT_EQ(std::to_string(frame.size()), cell.substr(0, cell.find(' '))) << row[1];
      EXPECT_EQ("0x" + test::Hex(Bytes{frame.front()}), row[0]) << row[1];
      ++compared;
    }
  }
  EXPECT_EQ(compared, 15);
}

}  // namespace
}  // namespace gateway
