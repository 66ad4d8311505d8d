// SPDX-License-Identifier: MIT
//
// What consumers take, on its way to the switcher and back.

#include "gateway/ember/takes.h"

#include "tests/gateway/ember/provider_fixture.h"

namespace ember {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TakesTest : public ProviderTest {};

TEST_F(TakesTest, AbsoluteIsATake) {
  const auto peer = Connect();
  peer->Send(test::kAbsolute);
  EXPECT_EQ(port_.TakeWritten(), "FD 03 00 07 00 05 00 0F FF");
  EXPECT_EQ(peer->TakeWritten(), "");
  Report(6, {8});
  EXPECT_EQ(peer->TakeWritten(), test::kAbsoluteReported);
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 took 6 8 3");
}

TEST_F(TakesTest, WithAllThatTheConsumerRemembersToo) {
  const auto peer = Connect();
  peer->Send(test::kAbsoluteWithContents);
  EXPECT_EQ(port_.TakeWritten(), "FD 03 00 07 00 05 00 0F FF");
}

TEST_F(TakesTest, ConnectAndDisconnectAreSums) {
  const auto peer = Connect();
  Report(6, {8});
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
  Report(6, {4, 8});
  EXPECT_EQ(peer->TakeWritten(), test::kConnectReported);
  peer->Send(test::kDisconnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 07 00 05 00 0C FF");
  Report(6, {4});
  EXPECT_EQ(peer->TakeWritten(), test::kDisconnectReported);
}

// From inputs 2 and 8 to 1 and 2: 1 is made before 8 is broken.
TEST_F(TakesTest, AbsoluteOfSeveralMakesFirstAndThenBreaks) {
  const auto peer = Connect();
  peer->Send(Taking(kAbsoluteOperation, 5, {1, 0, 1}));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 00 00 05 00 07 FF FD 00 00 07 00 05 00 0C FF");
  Report(6, {1, 2, 8});
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {0, 1, 7}));
}

// The switcher reports the row after each command.
TEST_F(TakesTest, WhoTookSeveralIsToldOfEachRow) {
  const auto peer = Connect();
  peer->Send(Taking(kAbsoluteOperation, 5, {1, 0}));
  Report(6, {1, 2, 8});
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {0, 1, 7}));
  Report(6, {1, 2});
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {0, 1}));
  Report(6, {1});  // somebody else's
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(TakesTest, WhoTookSeveralIsToldAsOftenAsWasSentAtMost) {
  const auto peer = Connect();
  peer->Send(Taking(kAbsoluteOperation, 5, {1, 0}));
  Report(6, {2, 8});
  Report(6, {2, 8});
  peer->TakeWritten();
  Report(6, {1, 2});
  EXPECT_EQ(peer->TakeWritten(), "");
}

// Nothing of this is reported yet when the second of two commands comes: it is judged by what the
// first brings about, and never lost.
struct Pair {
  const char* name;
  int firstOperation;
  std::vector<int> first;
  int secondOperation;
  std::vector<int> second;
  const char* sent;
};

class QuickPairTest : public TakesTest, public testing::WithParamInterface<Pair> {};

TEST_P(QuickPairTest, BothAreSent) {
  const Pair& pair = GetParam();
  const auto peer = Connect();
  peer->Send(Taking(pair.firstOperation, 5, pair.first));
  peer->Send(Taking(pair.secondOperation, 5, pair.second));
  EXPECT_EQ(port_.TakeWritten(), pair.sent);
}

TEST_P(QuickPairTest, BothAreSentInTheirOrderWhenTheLineHasRoomAgain) {
  const Pair& pair = GetParam();
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(Taking(pair.firstOperation, 5, pair.first));
  peer->Send(Taking(pair.secondOperation, 5, pair.second));
  EXPECT_EQ(port_.TakeWritten(), "");
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), pair.sent);
}

// The row before is {2, 8}, on the wire 1 and 7.
INSTANTIATE_TEST_SUITE_P(
    Commands, QuickPairTest,
    testing::Values(Pair{"ConnectDisconnect",
                         kConnectOperation,
                         {3},
                         kDisconnectOperation,
                         {3},
                         "FD 02 00 03 00 05 00 0A FF FD 00 00 03 00 05 00 08 FF"},
                    Pair{"DisconnectConnect",
                         kDisconnectOperation,
                         {7},
                         kConnectOperation,
                         {7},
                         "FD 00 00 07 00 05 00 0C FF FD 02 00 07 00 05 00 0E FF"},
                    Pair{"AbsoluteAbsolute",
                         kAbsoluteOperation,
                         {4},
                         kAbsoluteOperation,
                         {1, 7},
                         "FD 03 00 04 00 05 00 0C FF FD 02 00 01 00 05 00 08 FF "
                         "FD 02 00 07 00 05 00 0E FF FD 00 00 04 00 05 00 09 FF"},
                    Pair{"AbsoluteConnect",
                         kAbsoluteOperation,
                         {4},
                         kConnectOperation,
                         {7},
                         "FD 03 00 04 00 05 00 0C FF FD 02 00 07 00 05 00 0E FF"}),
    [](const auto& pair) { return pair.param.name; });

TEST_F(TakesTest, TwoConnectionsOfATargetInOneMessageAreBothSent) {
  const auto peer = Connect();
  const auto connection = [](int operation) {
    return BerValue(Context(0),
                    BerValue(Application(16), {BerValue(Context(0), BerInteger(5)),
                                               BerValue(Context(1), BerOid(std::vector<int>{3})),
                                               BerValue(Context(2), BerInteger(operation))}));
  };
  Bytes connections = connection(kConnectOperation);
  const Bytes second = connection(kDisconnectOperation);
  connections.insert(connections.end(), second.begin(), second.end());
  const std::vector<Bytes> elements{
      BerValue(Application(17), {BerValue(Context(0), BerOid(Path{1, 2})),
                                 BerValue(Context(5), BerValue(kSequence, connections))})};
  peer->Send(Packets(GlowMessage(elements)));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF FD 00 00 03 00 05 00 08 FF");
}

TEST_F(TakesTest, ACallThatEndsBeforeItIsReportedEnds) {
  const auto peer = Connect();
  peer->Send(test::kCallInvoked);
  peer->Send(Calling({1, 7, 1}, 2, {BerInteger(5), BerInteger(7), BerBoolean(false)}));
  EXPECT_EQ(port_.TakeWritten(), "FD 06 01 07 00 05 00 12 FF FD 04 01 07 00 05 00 10 FF");
}

TEST_F(TakesTest, AnotherConsumersCommandCountsToo) {
  const auto first = Connect();
  const auto second = Connect();
  first->Send(test::kConnect);
  second->Send(Taking(kDisconnectOperation, 5, {3}));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF FD 00 00 03 00 05 00 08 FF");
}

// A report from before the command says nothing of it.
TEST_F(TakesTest, AReportFromBeforeACommandDoesNotUndoIt) {
  const auto peer = Connect();
  peer->Send(test::kConnect);
  port_.TakeWritten();
  Report(6, {2, 8});
  peer->Send(Taking(kDisconnectOperation, 5, {3}));
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 03 00 05 00 08 FF");
}

// It is on its way: it is answered with the row that brings it.
TEST_F(TakesTest, TheSameAgainWaitsForTheReport) {
  const auto first = Connect();
  const auto second = Connect();
  first->Send(test::kConnect);
  second->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
  EXPECT_EQ(second->TakeWritten(), "");
  Report(6, {2, 4, 8});
  EXPECT_EQ(second->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 3, 7}));
}

TEST_F(TakesTest, WhatWasSentInVainIsSentAgain) {
  const auto peer = Connect();
  peer->Send(test::kConnect);
  port_.TakeWritten();
  Report(6, {2, 8});
  Pass(milliseconds(2500));
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
}

// A report while the line has no room was not brought about by what waits.
TEST_F(TakesTest, AReportDoesNotAnswerWhatWasNotSent) {
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(test::kConnect);
  Report(6, {2});
  EXPECT_EQ(peer->TakeWritten(), "");
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
  Report(6, {2, 4});
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 3}));
}

// An absolute of which one command is out: what forbids the rest counts, and is said.
class HalfTakenTest : public TakesTest {
 protected:
  void TakeHalf() {
    MakeRoom(1);
    peer_->Send(Taking(kAbsoluteOperation, 5, {1, 0}));
    EXPECT_EQ(port_.TakeWritten(), "FD 02 00 00 00 05 00 07 FF");
  }

  // The line has room again.
  std::string Rest() {
    port_.unsent = 0;
    Pass(milliseconds(10));
    return port_.TakeWritten();
  }

  const std::shared_ptr<test::FakePeer> peer_ = Connect();
};

TEST_F(HalfTakenTest, GoesOn) {
  TakeHalf();
  EXPECT_EQ(Rest(), "FD 00 00 07 00 05 00 0C FF");
  EXPECT_THAT(events_.refusals, IsEmpty());
}

TEST_F(HalfTakenTest, ALockStopsTheRest) {
  TakeHalf();
  locks_.LockOutput(6, model::Locks::Against::Console);
  EXPECT_EQ(Rest(), "");
  EXPECT_EQ(peer_->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::OutputLocked));
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 stopped 6");
}

TEST_F(HalfTakenTest, ACallOnTheRowStopsTheRest) {
  TakeHalf();
  Report(6, {1, 2, 8}, 1);
  EXPECT_EQ(Rest(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::PriorityRow));
}

TEST_F(HalfTakenTest, ALostLinkStopsTheRest) {
  TakeHalf();
  model_.LinkStatus[0] = 0;
  EXPECT_EQ(Rest(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LinkDown));
}

TEST_F(HalfTakenTest, AnInhibitStopsWhatIsToBeMade) {
  MakeRoom(1);
  peer_->Send(Taking(kAbsoluteOperation, 5, {0, 3}));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 00 00 05 00 07 FF");
  Edit(6, "Inhibits", "00010000");
  EXPECT_EQ(Rest(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::Inhibited));
}

// What somebody else has brought about meanwhile is not commanded again.
TEST_F(HalfTakenTest, WhatIsDoneMeanwhileIsNotSent) {
  TakeHalf();
  Report(6, {1, 2});
  EXPECT_EQ(Rest(), "");
  EXPECT_EQ(peer_->TakeWritten(), RowFrame(Disposition::Modified, 5, {0, 1}));
}

// Half of it may be two sources where there was one.
TEST_F(HalfTakenTest, IsFinishedAfterTheConsumerWasAnswered) {
  TakeHalf();
  Report(6, {1, 2, 8});
  EXPECT_EQ(peer_->TakeWritten(), RowFrame(Disposition::Modified, 5, {0, 1, 7}));
  Pass(milliseconds(2500));
  EXPECT_EQ(peer_->TakeWritten(), "");
  EXPECT_THAT(events_.refusals, IsEmpty());
  EXPECT_EQ(Rest(), "FD 00 00 07 00 05 00 0C FF");
}

// Nor has the switcher reported the half: it is commanded anew.
TEST_F(HalfTakenTest, WithoutAReportTheRowIsAnsweredInTimeAndTheTakeGoesOn) {
  TakeHalf();
  Pass(milliseconds(2500));
  EXPECT_EQ(peer_->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 7}));
  EXPECT_THAT(events_.refusals, IsEmpty());
  EXPECT_EQ(Rest(), "FD 02 00 00 00 05 00 07 FF FD 00 00 07 00 05 00 0C FF");
}

TEST_F(HalfTakenTest, IsFinishedAfterTheConsumerHasGone) {
  TakeHalf();
  peer_->Close();
  const auto other = Connect();  // in its place
  EXPECT_EQ(Rest(), "FD 00 00 07 00 05 00 0C FF");
  Report(6, {1, 2});
  EXPECT_EQ(other->TakeWritten(), "");
  EXPECT_THAT(events_.lines, testing::Contains("1 10.0.0.7 took 6 8 0"));
}

TEST_F(HalfTakenTest, TheEndOfTheConsoleIsSaid) {
  TakeHalf();
  provider_.CloseAll();
  EXPECT_EQ(Rest(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::Closing));
}

TEST_F(TakesTest, AbsoluteOfNoneBreaksAll) {
  const auto peer = Connect();
  peer->Send(Taking(kAbsoluteOperation, 5, {}));
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 01 00 05 00 06 FF FD 00 00 07 00 05 00 0C FF");
}

TEST_F(TakesTest, WhatStandsIsAnsweredAtOnce) {
  const auto peer = Connect();
  const std::string row = RowFrame(Disposition::Tally, 5, {1, 7});
  peer->Send(Taking(kAbsoluteOperation, 5, {7, 1}));
  EXPECT_EQ(peer->TakeWritten(), row);
  peer->Send(Taking(kConnectOperation, 5, {7}));
  EXPECT_EQ(peer->TakeWritten(), row);
  peer->Send(Taking(kDisconnectOperation, 5, {3}));
  EXPECT_EQ(peer->TakeWritten(), row);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(events_.refusals, IsEmpty());
}

TEST_F(TakesTest, MakingWhatIsInhibitedIsRefused) {
  const auto peer = Connect();
  peer->Send(test::kConnectInhibited);
  EXPECT_EQ(peer->TakeWritten(), test::kConnectRefused);
  peer->Send(Taking(kAbsoluteOperation, 4, {4}));
  EXPECT_EQ(peer->TakeWritten(), test::kConnectRefused);
  peer->Send(Taking(kAbsoluteOperation, 4, {3, 4}));
  EXPECT_EQ(peer->TakeWritten(), test::kConnectRefused);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(events_.refusals, std::vector(3, Refusal::Inhibited));
}

// One that stands is broken; and nothing is made of it where the others go.
TEST_F(TakesTest, BreakingWhatIsInhibitedIsCarriedOut) {
  const auto peer = Connect();
  Report(5, {5});
  peer->Send(Taking(kDisconnectOperation, 4, {4}));
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 04 00 04 00 08 FF");
  Report(5, {});
  Report(5, {2, 5});
  peer->Send(Taking(kAbsoluteOperation, 4, {4}));
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 01 00 04 00 05 FF");
}

// What cannot be seen to be allowed is not, for as long as it cannot be seen.
TEST_F(TakesTest, InhibitsThatCannotBeReadForbid) {
  const auto peer = Connect();
  hasDatabase_ = false;
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::InhibitsUnknown));
  hasDatabase_ = true;
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
}

// An inhibit that was edited a moment ago counts.
TEST_F(TakesTest, InhibitsAreThoseOfNow) {
  const auto peer = Connect();
  peer->Send(test::kConnectInhibited);
  Edit(5, "Inhibits", "00010000");
  peer->Send(Taking(kConnectOperation, 4, {3}));
  EXPECT_EQ(port_.TakeWritten(), "");
  peer->Send(test::kConnectInhibited);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 04 00 04 00 0A FF");
}

TEST_F(TakesTest, WhatTheStateForbidsIsRefused) {
  const auto peer = Connect();
  const std::string row = RowFrame(Disposition::Locked, 5, {1, 7});
  locks_.LockOutput(6, model::Locks::Against::Console);
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), row);
  locks_.UnlockOutput(6);
  model_.XmapComplete = false;
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), row);
  model_.XmapComplete = true;
  model_.LinkStatus[0] = 0;
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), row);
  EXPECT_THAT(events_.refusals,
              ElementsAre(Refusal::OutputLocked, Refusal::MapNotComplete, Refusal::LinkDown));
  EXPECT_EQ(port_.TakeWritten(), "");
}

// The switcher fell silent while the port was open, and answers again: who took what meanwhile is
// in no report.
TEST_F(TakesTest, AMapFromBeforeTheLinkWasLostIsNotTakenOver) {
  const auto peer = Connect();
  const std::string row = RowFrame(Disposition::Locked, 5, {1, 7});
  model_.LinkStatus[0] = 0;
  knownMap_.LinkChanged();
  model_.LinkStatus[0] = 1;
  knownMap_.LinkChanged();
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), row);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::MapNotKnown));
  for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
}

// The console's own lock is against slips of the operator.
TEST_F(TakesTest, ALockedConsoleDoesNotHoldUpControllers) {
  const auto peer = Connect();
  locks_.LockConsole(true);
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
}

TEST_F(TakesTest, ARowOfPriorityLosesNothing) {
  const auto peer = Connect();
  Report(6, {2, 8}, 1);
  const std::string row = RowFrame(Disposition::Locked, 5, {1, 7});
  peer->Send(test::kAbsolute);
  EXPECT_EQ(peer->TakeWritten(), row);
  peer->Send(test::kDisconnect);
  EXPECT_EQ(peer->TakeWritten(), row);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(events_.refusals, std::vector(2, Refusal::PriorityRow));
  peer->Send(test::kConnect);
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 05 00 0A FF");
}

TEST_F(TakesTest, WhatIsNotThereHasNoAnswer) {
  const auto peer = Connect();
  for (const int target : {-1, 8, 2147483647}) peer->Send(Taking(kConnectOperation, target, {1}));
  peer->Send(Taking(kConnectOperation, 5, {8}));
  peer->Send(Taking(kConnectOperation, 5, {2147483647}));
  peer->Send(Taking(kAbsoluteOperation, 5, {3, 8}));
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(events_.refusals, std::vector(6, Refusal::NoSuchChannel));
}

// Row 6 without priority.
TEST_F(TakesTest, ACallIsDoneWhenTheRowSaysSo) {
  const auto peer = Connect();
  peer->Send(test::kCallInvoked);
  EXPECT_EQ(port_.TakeWritten(), "FD 06 01 07 00 05 00 12 FF");
  Report(6, {2, 8});  // not yet
  EXPECT_EQ(peer->TakeWritten(), "");
  Report(6, {2, 8}, 1);
  EXPECT_EQ(peer->TakeWritten(), test::kCallAnswered);
  // It stands: nothing is sent.
  peer->Send(test::kCallInvoked);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(peer->TakeWritten(), test::kCallAnswered);
  peer->Send(Calling({1, 7, 1}, 2, {BerInteger(5), BerInteger(7), BerBoolean(false)}));
  EXPECT_EQ(port_.TakeWritten(), "FD 04 01 07 00 05 00 10 FF");
}

// There is none: what stands in a row without priority is an ordinary crosspoint.
TEST_F(TakesTest, EndingACallInAnOrdinaryRowSendsNothing) {
  const auto peer = Connect();
  for (const int function : {1, 2}) {
    peer->Send(Calling({1, 7, function}, 1, {BerInteger(5), BerInteger(7), BerBoolean(false)}));
    EXPECT_EQ(peer->TakeWritten(), test::kCallAnswered);
  }
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(TakesTest, PriorityListenHasActionsOfItsOwn) {
  const auto peer = Connect();
  peer->Send(Calling({1, 7, 2}, 1, {BerInteger(5), BerInteger(7), BerBoolean(true)}));
  EXPECT_EQ(port_.TakeWritten(), "FD 0A 01 07 00 05 00 16 FF");
  Report(6, {8}, 1);
  EXPECT_EQ(peer->TakeWritten(), test::kCallAnswered);
  peer->Send(Calling({1, 7, 2}, {}, {BerInteger(5), BerInteger(7), BerBoolean(false)}));
  EXPECT_EQ(port_.TakeWritten(), "FD 08 01 07 00 05 00 14 FF");
  Report(6, {}, 0);
  EXPECT_EQ(peer->TakeWritten(), "");  // it had no number
}

TEST_F(TakesTest, ACallThatIsNotDoneSaysSo) {
  const auto peer = Connect();
  const std::string notDone =
      test::Hex(Packets(InvocationResult(1, false, std::vector<GlowValue>{false})));
  peer->Send(test::kCallInvoked);
  port_.TakeWritten();
  Pass(milliseconds(2500));
  EXPECT_EQ(peer->TakeWritten(), notDone);
  locks_.LockOutput(6, model::Locks::Against::Console);
  peer->Send(test::kCallInvoked);
  EXPECT_EQ(peer->TakeWritten(), notDone);
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(TakesTest, WrongArgumentsDoNothing) {
  const auto peer = Connect();
  const std::string notDone =
      test::Hex(Packets(InvocationResult(1, false, std::vector<GlowValue>{false})));
  const Bytes five = BerInteger(5);
  const Bytes on = BerBoolean(true);
  for (const Bytes& frame :
       {Calling({1, 7, 1}, 1, {}), Calling({1, 7, 1}, 1, {five, five}),
        Calling({1, 7, 1}, 1, {five, five, on, on}), Calling({1, 7, 1}, 1, {five, five, five}),
        Calling({1, 7, 1}, 1, {BerInteger(8), five, on}),
        Calling({1, 7, 1}, 1, {five, BerInteger(-1), on}), Calling({1, 7, 1}, 1, {on, five, on})}) {
    peer->Send(frame);
    EXPECT_EQ(peer->TakeWritten(), notDone);
  }
  peer->Send(Calling({1, 7, 3}, 1, {five, five, on}));  // no such function
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(events_.refusals, SizeIs(7));
}

// Whoever is told of the failure closes the connection whose take is being sent.
TEST_F(TakesTest, AConsumerMayGoWhileItsTakeFails) {
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(Taking(kAbsoluteOperation, 5, {1, 0}));
  peer->Send(Taking(kConnectOperation, 0, {0}));
  reporter_.atReport = [&] { peer->Close(); };
  port_.writesUntilFailure = 0;
  port_.unsent = 0;
  Pass(milliseconds(10));
  EXPECT_THAT(reporter_.reports, SizeIs(1));
  EXPECT_FALSE(takeTimer_.IsRunning());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(TakesTest, ATakeThatCannotBeWrittenIsRefusedAtOnce) {
  const auto peer = Connect();
  port_.writesUntilFailure = 0;
  peer->Send(test::kConnect);
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LineFailed));
  EXPECT_THAT(reporter_.reports, SizeIs(1));
  Pass(milliseconds(2500));
  EXPECT_EQ(peer->TakeWritten(), "");
}

}  // namespace
}  // namespace ember
