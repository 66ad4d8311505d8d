// SPDX-License-Identifier: MIT

#include "gateway/panel_requests.h"

#include <map>

#include "db/schema.h"
#include "gateway/panel_tables.h"
#include "switcher/wire/label_selector.h"
#include "tests/gateway/gateway_fixture.h"
#include "tests/support/damaged_file.h"
#include "tests/support/hex.h"

namespace gateway {
namespace {

using test::FromHex;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PanelRequestsTest : public GatewayTest {
 protected:
  // The types of the frames that a panel is sent until no pause runs any more, one at a time: "F6
  // FC ".
  std::string FrameTypes(test::FakePeer& panel) {
    std::string types;
    for (;;) {
      types += panel.TakeWritten().substr(0, 3);
      if (!timer_.IsRunning()) return types;
      timer_.Elapse();
    }
  }

  // What a service request is answered with.  Everything asked for has gone out.
  std::string Request(test::FakePeer& panel, std::string_view frame) {
    panel.Send(frame);
    Tick();
    timer_.ElapseAll();
    return panel.TakeWritten();
  }
};

TEST_F(PanelRequestsTest, RequestForTheMap) {
  const auto panel = ConnectPanel();
  model_.CrosspointMap.At(8, 1) = 1;
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 01 FF"),
            "F6 00 08 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
            "01 00 00 00 00 09 FF");
}

TEST_F(PanelRequestsTest, RequestForLabels) {
  AddStations();
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 02 00 00 00 00 00 00 02 FF"),
            "FC 0A 08 08 00 00 00 "
            "49 6E 20 31 20 20 20 20 00 00 49 6E 20 32 20 20 20 20 01 00 "
            "49 6E 20 33 20 20 20 20 02 00 49 6E 20 34 20 20 20 20 03 00 "
            "49 6E 20 35 20 20 20 20 04 00 49 6E 20 36 20 20 20 20 05 00 "
            "49 6E 20 37 20 20 20 20 06 00 49 6E 20 38 20 20 20 20 07 00 "
            "12 FF");
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").substr(0, 3 * 17),
            "FC 14 08 08 00 00 00 53 74 61 20 31 20 20 20 00 00 ");
}

TEST_F(PanelRequestsTest, RequestForProgrammingIsTwoFrames) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 40 00 00 00 00 00 00 40 FF");
  Tick();
  EXPECT_EQ(panel->TakeWritten(),
            "FB 00 08 00 00 00 01 00 02 00 03 00 04 00 05 00 06 00 07 00 08 00 2C FF");
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.Elapse();
  const std::string buttons = panel->TakeWritten();
  EXPECT_EQ(buttons.substr(0, 3 * 14), "FD 00 08 00 00 00 20 00 02 00 7F 7F 00 00 ");
  EXPECT_EQ(buttons.size(), 3U * (8 + 8 * 32 * 6 + 2) - 1);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelRequestsTest, SeveralBitsAreAnsweredInOrder) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 7F 00 00 00 00 00 00 7F FF");
  Tick();
  std::string types;
  for (;;) {
    const std::string frame = panel->TakeWritten();
    if (!frame.empty()) types += frame.substr(0, 5) + "; ";
    if (!timer_.IsRunning()) break;
    timer_.Elapse();
  }
  EXPECT_EQ(types, "F6 00; FC 0A; FC 14; FB 00; FD 00; ");
}

TEST_F(PanelRequestsTest, TheWholeAnswerToARequestComesBeforeTheNextOne) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 07 00 00 00 00 00 00 07 FF F2 00 43 00 00 00 00 00 00 43 FF");
  Ticks(2);
  EXPECT_EQ(FrameTypes(*panel), "F6 FC FC F6 FC FB FD ");
}

TEST_F(PanelRequestsTest, WhatIsForAllDoesNotChangeTheOrderOfAnAnswer) {
  AddStations();
  const auto panel = ConnectPanel();
  gateway_.Senders().SendAlphaTableToClients(10, 9999);
  gateway_.ButtonsChanged(1);
  panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Tick();
  gateway_.ButtonsChanged(1);
  gateway_.LabelsChanged(20);
  EXPECT_EQ(FrameTypes(*panel), "FC FB FD F6 FC FC FB FD ");
}

TEST_F(PanelRequestsTest, ARequestWhoseTableCannotBeReadDoesNotHoldUpTheNext) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 06 00 00 00 00 00 00 06 FF F2 00 41 00 00 00 00 00 00 41 FF");
  panel->Send("F2 00 02 00 00 00 00 00 00 02 FF");
  Ticks(3);
  EXPECT_EQ(FrameTypes(*panel), "F6 FB ");
  EXPECT_THAT(reporter_.reports, SizeIs(4));
  AddStations();
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").substr(0, 5), "FC 14");
  EXPECT_EQ(FrameTypes(*panel), "") << "once";
}

// To find out that a table cannot be read may take a look at the whole database.
TEST_F(PanelRequestsTest, NoMoreThanOneTableThatCannotBeReadIsTriedBetweenTwoPauses) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF");
  panel->Send(FromHex(test::Times(200, "F2 00 02 00 00 00 00 00 00 02 FF")));
  Ticks(201);
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "F6 00");
  for (std::size_t tried = 0; tried < 200; ++tried) {
    ASSERT_THAT(reporter_.reports, SizeIs(tried));
    timer_.Elapse();
  }
  EXPECT_THAT(reporter_.reports, SizeIs(200));
  timer_.Elapse();
  EXPECT_FALSE(timer_.IsRunning());
}

TEST_F(PanelRequestsTest, ATableForAllThatCannotBeReadIsTriedAndPausedForOnce) {
  for (int i = 0; i < 5; ++i) ConnectPanel();
  timer_.now = 0;
  gateway_.LabelsChanged(20);
  timer_.ElapseAll();
  EXPECT_THAT(reporter_.reports, SizeIs(1));
  EXPECT_EQ(timer_.now, 75);
}

TEST_F(PanelRequestsTest, ARequestWhoseTurnComesWithoutTheLinkIsForgotten) {
  const auto panel = ConnectPanel();
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF F2 00 01 00 00 00 00 00 00 01 FF");
  panel->Send("F2 00 01 00 00 00 00 00 00 01 FF");
  Ticks(3);
  model_.LinkStatus[0] = 0;
  // The answer to the second is on its way since the first has gone out.
  EXPECT_EQ(FrameTypes(*panel), "F6 F6 ");
  model_.LinkStatus[0] = 1;
  EXPECT_EQ(FrameTypes(*panel), "");
}

TEST_F(PanelRequestsTest, RequestsWithoutEndWaitInTheSocket) {
  AddStations();
  const auto panel = ConnectPanel();
  const auto other = ConnectPanel();
  panel->Send(FromHex(test::Times(8000, "F2 00 47 00 00 00 00 00 00 47 FF")));
  for (int tick = 0; tick < 20000; ++tick) {
    Tick();
    ASSERT_LE(Connection(1).Undecoded(), 65536U);
    ASSERT_LE(Queue().Size(), 6U);
    if (tick % 15 == 0) timer_.Elapse();
  }
  EXPECT_FALSE(panel->incoming.empty());
  panel->TakeWritten();
  other->Send("F5");
  Tick();
  timer_.Elapse();
  EXPECT_EQ(other->TakeWritten(), "F4");
}

TEST_F(PanelRequestsTest, TenPollsInOneWriteGetTenAnswers) {
  const auto panel = ConnectPanel();
  panel->Send("F5 F5 F5 F5 F5 F5 F5 F5 F5 F5");
  Ticks(10);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F4 F4 F4 F4 F4 F4 F4 F4 F4 F4");
}

TEST_F(PanelRequestsTest, AnAnswerThatHadToWaitSaysHowTheLinkIsThen) {
  const auto panel = ConnectPanel();
  panel->Send("F5 F5 F5");
  Ticks(3);
  timer_.Elapse();
  model_.LinkStatus[0] = 0;
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten(), "F4 F4 F1");
}

TEST_F(PanelRequestsTest, EveryRequestIsAnsweredAlsoWhileAnAnswerStillWaits) {
  AddStations();
  const auto panel = ConnectPanel();
  for (int i = 0; i < 20; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(20);
  EXPECT_LE(Queue().Size(), 5U);
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  std::map<std::string, int> frames;
  std::string lastType;
  for (;;) {
    const std::string frame = panel->TakeWritten();
    if (!frame.empty()) {
      const std::string type = frame.substr(0, 5);
      ++frames[type];
      // The list of stations and the programming stay next to each other.
      EXPECT_EQ(type == "FD 00", lastType == "FB 00");
      lastType = type;
    }
    if (!timer_.IsRunning()) break;
    timer_.Elapse();
  }
  EXPECT_THAT(frames, ElementsAre(testing::Pair("F6 00", 20), testing::Pair("FB 00", 20),
                                  testing::Pair("FC 0A", 20), testing::Pair("FC 14", 20),
                                  testing::Pair("FD 00", 20)));
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelRequestsTest, ATableSaysWhatHoldsWhenItsTurnComes) {
  AddStations();
  const auto first = ConnectPanel();
  const auto second = ConnectPanel();
  first->Send("F2 00 04 00 00 00 00 00 00 04 FF");
  second->Send("F2 00 44 00 00 00 00 00 00 44 FF");
  Tick();
  database_.Set(1, "Label", "New");
  database_.Set(1, "B1 Type", 255);
  timer_.ElapseAll();
  EXPECT_EQ(first->TakeWritten().substr(0, 3 * 17),
            "FC 14 08 08 00 00 00 53 74 61 20 31 20 20 20 00 00 ");
  const std::string tables = second->TakeWritten();
  EXPECT_EQ(tables.substr(0, 3 * 17), "FC 14 08 08 00 00 00 4E 65 77 20 20 20 20 20 00 00 ");
  EXPECT_EQ(tables.substr(3 * (89 + 24), 3 * 14), "FD 00 08 00 00 00 20 00 03 00 7F 7F 00 00 ");
}

TEST_F(PanelRequestsTest, WhatAPanelAskedForGoesWithIt) {
  AddStations();
  auto panel = ConnectPanel();
  for (int i = 0; i < 20; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(20);
  panel->Close();
  timer_.ElapseAll();
  panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF").size(),
            3U * (7 + 8 * 10 + 2) - 1);  // one table
}

TEST_F(PanelRequestsTest, ADroppedPanelsTablesHoldUpNoneOfTheNextOne) {
  AddStations();
  const auto slow = ConnectPanel();
  slow->reads = false;
  slow->unsent = 1048576;
  slow->Send("F2 00 46 00 00 00 00 00 00 46 FF");  // dropped with the first of the answers
  Tick();
  ASSERT_FALSE(Connection(1).Connected);
  auto panel = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(panel));
  panel->Send("81 35 35 FF F2 00 04 00 00 00 00 00 00 04 FF");
  Ticks(2);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 3 * 11), "81 00 00 FF FC 14 08 08 00 00 00 ");
}

TEST_F(PanelRequestsTest, ADroppedPanelsAnswerIsNoneForTheNextOne) {
  AddStations();
  const auto slow = ConnectPanel();
  slow->reads = false;
  slow->unsent = 1048576;
  slow->Send("F2 00 42 00 00 00 00 00 00 42 FF");  // dropped with the labels, before the buttons
  Tick();
  ASSERT_FALSE(Connection(1).Connected);
  EXPECT_EQ(Queue().Size(), 0U);
  auto panel = std::make_shared<test::FakePeer>();
  gateway_.Accept(std::make_unique<test::FakeClientSocket>(panel));
  panel->Send("81 35 35 FF F2 00 04 00 00 00 00 00 00 04 FF");
  Ticks(2);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 3 * 11), "81 00 00 FF FC 14 08 08 00 00 00 ");
  EXPECT_FALSE(Connection(1).AlphasPending);
}

TEST_F(PanelRequestsTest, PendingFlagsAreClearedWhenTheTableHasGone) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F2 00 66 00 00 00 00 00 00 66 FF");
  Tick();
  EXPECT_TRUE(Connection(1).AlphasPending);  // one of the two is out
  EXPECT_TRUE(Connection(1).Option20Pending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.Elapse();
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
  timer_.ElapseAll();
  EXPECT_FALSE(Connection(1).ButtonsPending);
  EXPECT_TRUE(Connection(1).Option20Pending);
}

TEST_F(PanelRequestsTest, BroadcastsLeaveThePendingFlagsAlone) {
  AddStations();
  const auto panel = ConnectPanel();
  Connection(1).AlphasPending = Connection(1).ButtonsPending = true;
  gateway_.LabelsChanged(20);
  gateway_.ButtonsChanged(1);
  timer_.ElapseAll();
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
}

TEST_F(PanelRequestsTest, OptionTwentyOnlySetsItsFlag) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 20 00 00 00 00 00 00 20 FF"), "");
  EXPECT_TRUE(Connection(1).Option20Pending);
}

TEST_F(PanelRequestsTest, UnusedBitsDoNothing) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 18 00 00 00 00 00 00 18 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 7F 00 7F 7F 7F 7F 7F 7F 79 FF"), "");
}

TEST_F(PanelRequestsTest, NothingIsRequestedWhileTheLinkIsDown) {
  const auto panel = ConnectPanel();
  model_.LinkStatus[0] = 0;
  EXPECT_EQ(Request(*panel, "F2 00 07 00 00 00 00 00 00 07 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 60 00 00 00 00 00 00 60 FF"), "");
  EXPECT_FALSE(Connection(1).AlphasPending);
  EXPECT_FALSE(Connection(1).Option20Pending);
  EXPECT_FALSE(Connection(1).ButtonsPending);
}

TEST_F(PanelRequestsTest, BadRequestsAreIgnored) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 02 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 01 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 00 01 00 00 00 00 00 00 00 01 FF"), "");
  EXPECT_EQ(Request(*panel, "F2 FF"), "");
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PanelRequestsTest, ATableThatCannotBeReadIsReported) {
  const auto panel = ConnectPanel();
  EXPECT_EQ(Request(*panel, "F2 00 02 00 00 00 00 00 00 02 FF"), "");  // no stations at all
  EXPECT_TRUE(Connection(1).AlphasPending);
  // The list of stations needs none.
  EXPECT_EQ(Request(*panel, "F2 00 40 00 00 00 00 00 00 40 FF"),
            "FB 00 08 00 00 00 01 00 02 00 03 00 04 00 05 00 06 00 07 00 08 00 2C FF");
  ASSERT_THAT(reporter_.reports, SizeIs(2));
  EXPECT_THAT(reporter_.reports,
              Each(testing::StartsWith("critical|Error Processing|Error in Error Sending Alpha "
                                       "Table\rError # 3021 - ")));
}

TEST_F(PanelRequestsTest, ATableThatCannotBeReadAnyMoreHoldsUpNothing) {
  AddStations();
  const auto panel = ConnectPanel();
  panel->Send("F5 F2 00 47 00 00 00 00 00 00 47 FF");
  Ticks(2);
  EXPECT_EQ(panel->TakeWritten(), "F4");
  database_.Delete(8);
  timer_.now = 0;
  timer_.Elapse();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "F6 00");
  EXPECT_THAT(reporter_.reports, IsEmpty());
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FB 00");
  EXPECT_EQ(timer_.now, 6 * 75);
  // Both label tables and the programming, once each.
  EXPECT_THAT(reporter_.reports, SizeIs(3));
  EXPECT_TRUE(Connection(1).AlphasPending);
  EXPECT_TRUE(Connection(1).ButtonsPending);
}

TEST_F(PanelRequestsTest, WithoutADatabaseTablesAreReported) {
  const auto panel = ConnectPanel();
  ASSERT_TRUE(database_.Files().SaveAndClose().ok());
  EXPECT_EQ(Request(*panel, "F2 00 04 00 00 00 00 00 00 04 FF"), "");
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Sending Alpha Table"
                          "\rError # 3021 - The configuration database is not open"));
}

TEST_F(PanelRequestsTest, NoTableThatLacksStationsIsSent) {
  // The records of stations 11 to 15 stood on a page that is zeros now.
  test::TemporaryFolder folder;
  ASSERT_TRUE(db::CreateDatabase(folder / "Tesk.mdb").ok());
  test::ZeroPageOf(folder / "Tesk.mdb", "Sta. 012");
  db::DatabaseFiles damaged(folder / "Tesk.mdb", folder / "WorkingDb.md$");
  ASSERT_TRUE(damaged.Open().ok());
  const auto panel = ConnectPanel();
  PanelSenders senders(
      {.model = model_, .files = damaged, .queue = Queue(), .reporter = reporter_});
  model_.ChannelCount = 16;
  senders.SendAlphaTableToClients(switcher::kOutputLabels, 1);
  senders.SendStationProgrammingToClients(1);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FB 00") << "the list of stations alone";
  const std::string lacking =
      "critical|Error Processing|Error in Error Sending Alpha Table"
      "\rError # 3049 - The database is damaged, stations cannot be read: 11 to 15";
  EXPECT_THAT(reporter_.reports, ElementsAre(lacking, lacking));

  // What is whole is sent.
  model_.ChannelCount = 8;
  senders.SendAlphaTableToClients(switcher::kOutputLabels, 1);
  timer_.ElapseAll();
  EXPECT_EQ(panel->TakeWritten().substr(0, 5), "FC 14");
}

TEST_F(PanelRequestsTest, ChannelsThatAreNotThereAreReported) {
  gateway_.Senders().SendCrosspointMapToClients(9, 1, 9999);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Error Processing|Error in Error Sending Crosspoint Map"
                          "\rError # 9 - There is no such channel"));
}

TEST_F(PanelRequestsTest, TheOperatorsRecordStaysTheCurrentOne) {
  AddStations();
  database_.GoTo(5);
  const auto panel = ConnectPanel();
  Request(*panel, "F2 00 46 00 00 00 00 00 00 46 FF");
  EXPECT_EQ(database_.CurrentStation(), 5);
}

}  // namespace
}  // namespace gateway
