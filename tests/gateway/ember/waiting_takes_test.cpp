// SPDX-License-Identifier: MIT
//
// Takes that wait: for the report of their row, for room on the line, for each other.

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

#include "gateway/ember/takes.h"
#include "tests/gateway/ember/provider_fixture.h"

namespace ember {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

class WaitingTakesTest : public ProviderTest {};

TEST_F(WaitingTakesTest, WithoutAReportTheRowIsAnsweredInTime) {
  const auto peer = Connect();
  peer->Send(test::kConnect);
  Pass(milliseconds(2499));
  EXPECT_EQ(peer->TakeWritten(), "");
  Pass(milliseconds(1));
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 7}));
  Report(6, {2, 4, 8});
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(WaitingTakesTest, AReportEndsTheWait) {
  const auto peer = Connect();
  peer->Send(test::kConnect);
  Report(6, {2, 8});  // the switcher did not carry it out
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 7}));
  Pass(milliseconds(2500));
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(WaitingTakesTest, WhileTheLineIsBusyTakesWaitAndConsumersTakeTurns) {
  const auto first = Connect();
  const auto second = Connect();
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  first->Send(Taking(kConnectOperation, 0, {0}));
  first->Send(Taking(kConnectOperation, 1, {0}));
  second->Send(Taking(kConnectOperation, 2, {0}));
  EXPECT_EQ(port_.TakeWritten(), "");
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(),
            "FD 02 00 00 00 00 00 02 FF FD 02 00 00 00 02 00 04 FF FD 02 00 00 00 01 00 03 FF");
}

TEST_F(WaitingTakesTest, WhatWaitedTooLongIsNotSent) {
  const auto peer = Connect();
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  peer->Send(test::kConnect);
  Pass(milliseconds(2500));
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LineBusy));
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "");
}

// What has become of the row meanwhile counts.
TEST_F(WaitingTakesTest, WhatWaitedIsJudgedAnew) {
  const auto peer = Connect();
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  peer->Send(test::kConnect);
  peer->Send(Taking(kConnectOperation, 0, {0}));
  locks_.LockOutput(6, model::Locks::Against::Console);
  model_.CrosspointMap.At(1, 1) = 1;
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}) + " " +
                                     RowFrame(Disposition::Modified, 0, {0, 2}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::OutputLocked));
}

TEST_F(WaitingTakesTest, OneWhoLeavesTakesNothingMore) {
  const auto peer = Connect();
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  peer->Send(test::kConnect);
  peer->Close();
  port_.unsent = 0;
  takeTimer_.ElapseAll();
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(WaitingTakesTest, SoManyMayWait) {
  const auto peer = Connect();
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  for (int i = 0; i < 1000; ++i) peer->Send(test::kConnect);
  EXPECT_EQ(events_.refusals, std::vector(744, Refusal::TooMany));
  EXPECT_EQ(port_.TakeWritten(), "");
}

// Thousands that are overdue at once do not hold the event loop, and are answered before consumers
// give up.
TEST_F(WaitingTakesTest, WhatIsOverdueEndsInTurns) {
  std::vector<std::shared_ptr<test::FakePeer>> peers;
  port_.sendsAtOnce = false;
  port_.unsent = 250;
  for (int i = 0; i < 8; ++i) {
    peers.push_back(Connect());
    for (int k = 0; k < 200; ++k) peers.back()->Send(test::kConnect);
  }
  workTakes_ = milliseconds(1);
  Pass(milliseconds(2500));
  EXPECT_THAT(events_.refusals.size(), testing::AllOf(testing::Gt(0U), testing::Lt(5U)));
  workTakes_ = std::chrono::microseconds(30);
  takeTimer_.now = 0;
  takeTimer_.ElapseAll();
  EXPECT_EQ(events_.refusals, std::vector(1600, Refusal::LineBusy));
  EXPECT_LE(takeTimer_.now, 100);
}

// However often the switcher reports, which is a reason to look whether the line has room.
TEST_F(WaitingTakesTest, ReportsDoNotPutOffTheAnswer) {
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(test::kConnect);
  for (milliseconds time{0}; time < milliseconds(2600); time += milliseconds(5)) {
    now_ += milliseconds(5);
    takeTimer_.Pass(milliseconds(5));
    Report(1, {3});
  }
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LineBusy));
}

// Takes that wait for the line until the row has what they want do not hold the event loop, however
// many there are.
TEST_F(WaitingTakesTest, WhatStandsByThenIsAnsweredInTurns) {
  std::vector<std::shared_ptr<test::FakePeer>> peers;
  MakeRoom(0);
  for (int i = 0; i < 8; ++i) {
    peers.push_back(Connect());
    for (int k = 0; k < 20; ++k) peers.back()->Send(test::kConnect);
  }
  const auto answers = [&] {
    std::size_t bytes = 0;
    for (const auto& peer : peers) bytes += peer->written.size();
    return bytes / test::FromHex(test::kConnectReported).size();
  };
  port_.unsent = 0;
  workTakes_ = milliseconds(1);
  Report(6, {4, 8});
  EXPECT_GT(answers(), 0U);
  EXPECT_LT(answers(), 10U);
  takeTimer_.ElapseAll();
  EXPECT_EQ(answers(), 160U);
  EXPECT_TRUE(peers[7]->TakeWritten().starts_with(test::kConnectReported));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(events_.refusals, IsEmpty());
}

}  // namespace
}  // namespace ember
