// SPDX-License-Identifier: MIT
//
// What consumers are answered and told.

#include "gateway/ember/provider.h"

#include "tests/gateway/ember/provider_fixture.h"

namespace ember {
namespace {

using std::chrono::seconds;
using test::Hex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST_F(ProviderTest, SaysNothingUntilItIsAsked) {
  const auto peer = Connect();
  Report(1, {4});
  Edit(1, "Label", "CAM A");
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(ProviderTest, TheRecordedConversation) {
  const auto peer = Connect();
  peer->Send(test::kRootAsked);
  EXPECT_EQ(peer->TakeWritten(), test::kRootAnswered);
  peer->Send(test::kRootAskedWithMask);
  EXPECT_EQ(peer->TakeWritten(), test::kRootAnswered);
  peer->Send(test::kMatrixAsked);
  EXPECT_EQ(peer->TakeWritten(), test::kMatrixAnswered);
  peer->Send(Hex(Asked({1, 4, 2, 3})));
  EXPECT_EQ(peer->TakeWritten(), test::kGainDescribed);
  peer->Send(test::kGainSet);
  EXPECT_EQ(peer->TakeWritten(), test::kGainTold);
  EXPECT_EQ(port_.TakeWritten(), "E3 03 58 5B FF");
  peer->Send(Hex(Asked({1, 7})));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr(test::kCallDescribed));
}

TEST_F(ProviderTest, TheTopNodeListsWhatHasChildren) {
  const auto peer = Connect();
  peer->Send(test::kNodeAsked);
  const std::string answer = peer->TakeWritten();
  for (const char* const path :
       {"6A 22 A0 04 0D 02 01 01", "71 5B A0 04 0D 02 01 02", "A0 04 0D 02 01 03",
        "A0 04 0D 02 01 04", "A0 04 0D 02 01 05", "A0 04 0D 02 01 06", "A0 04 0D 02 01 07"}) {
    EXPECT_THAT(answer, HasSubstr(path));
  }
  EXPECT_THAT(answer, Not(HasSubstr("A0 04 0D 02 01 08")));
}

// One of its own answers with itself, one without children bare, and what is not there not at all.
TEST_F(ProviderTest, DirectoriesOfAllKinds) {
  const auto peer = Connect();
  peer->Send(Asked({1, 6}));
  EXPECT_EQ(
      peer->TakeWritten(),
      "FE 00 0E 00 01 C0 01 02 1F 02 60 55 6B 53 A0 24 69 22 A0 05 0D 03 01 06 01 A1 19 31 17 "
      "A0 06 0C 04 6C 69 6E 6B A2 03 01 01 FD DF A5 03 02 01 01 AD 03 02 01 04 A0 2B 69 29 A0 "
      "05 0D 03 01 06 02 A1 20 31 1E A0 0D 0C 0B 6D 61 70 43 6F 6D 70 6C 65 74 65 A2 03 01 01 "
      "FD DF A5 03 02 01 01 AD 03 02 01 04 9A 23 FF");
  peer->Send(Asked({1, 3, 1, 4}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A2 07 0C 05 43 41 4D 20 35"));  // "CAM 5"
  peer->Send(Asked({1, 3, 2, 7}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A2 07 0C 05 4D 49 43 20 38"));  // "MIC 8"
  peer->Send(Asked({1, 4, 3}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("6A 07 A0 05 0D 03 01 04 03"));
  peer->Send(Asked({1, 4, 3, 4}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("6A 08 A0 06 0D 04 01 04 03 04"));
  peer->Send(Asked({1, 4, 3, 4, 4}));  // output 5 is inhibited from input 5
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A0 08 0D 06 01 04 03 04 04 01"));
  peer->Send(Asked({1, 4, 3, 4, 4, 1}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A2 03 01 01 FD DF"));
  peer->Send(Asked({1, 4, 3, 4, 3, 1}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A2 03 01 01 00"));
  for (const Path& path : {Path{2}, Path{1, 8}, Path{1, 2, 1}, Path{1, 3, 1, 8}, Path{1, 3, 3},
                           Path{1, 4, 1, 0, 2}, Path{1, 4, 3, 8}, Path{1, 4, 3, 0, 8},
                           Path{1, 5, 64}, Path{1, 6, 0}, Path{1, 7, 3}, Path{2147483647}}) {
    peer->Send(Asked(path));
    EXPECT_EQ(peer->TakeWritten(), "");
  }
}

TEST_F(ProviderTest, KeepAlivesAreAnswered) {
  const auto peer = Connect();
  peer->Send("FE 00 0E 01 01 94 E4 FF");
  EXPECT_EQ(peer->TakeWritten(), "FE 00 0E 02 01 FD DC CE FF");
  peer->Send("F8 01 04 00 0E 01 01");  // in the other framing: read over
  EXPECT_EQ(peer->TakeWritten(), "");
}

TEST_F(ProviderTest, ARowIsToldToThoseWhoAskedForTheMatrix) {
  const auto subscriber = Subscribe();
  const auto other = Connect();
  Report(6, {8});
  EXPECT_EQ(subscriber->TakeWritten(), test::kAbsoluteReported);
  EXPECT_EQ(other->TakeWritten(), "");
  Report(6, {8});  // nothing new
  EXPECT_EQ(subscriber->TakeWritten(), "");
}

TEST_F(ProviderTest, SubscriptionsBeginAndEnd) {
  const auto peer = Connect();
  peer->Send(test::kSubscribed);
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
  Report(6, {8});
  EXPECT_EQ(peer->TakeWritten(), test::kAbsoluteReported);
  // The same with 31, Unsubscribe.
  peer->Send(Packets(test::FromHex(
      "60 19 6B 17 A0 15 71 13 A0 04 0D 02 01 02 A2 0B 64 09 A0 07 62 05 A0 03 02 01 1F")));
  Report(6, {2});
  EXPECT_EQ(peer->TakeWritten(), "");
}

// The switcher's row failed its checksum and was stored all the same; who read it then is told when
// the right one comes, though it is the one from before.
TEST_F(ProviderTest, ARowThatWasReadWhileItWasWrongIsToldAgain) {
  Report(6, {2, 8});
  model_.CrosspointMap.At(6, 5) = 1;
  const auto peer = Subscribe();
  Report(6, {2, 8});
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Modified, 5, {1, 7}));
}

TEST_F(ProviderTest, ValuesAreToldToThoseWhoAskedForThemOrTheirNode) {
  const auto byNode = Connect();
  byNode->Send(Asked({1, 3, 1}));
  const auto byParameter = Connect();
  byParameter->Send(Asked({1, 3, 1, 2}));
  const auto byGrandparent = Connect();
  byGrandparent->Send(Asked({1, 3}));
  for (const auto& peer : {byNode, byParameter, byGrandparent}) peer->written.clear();
  Edit(3, "Label", "CAM C");
  newsTimer_.ElapseAll();
  const std::string news = ValueFrame({1, 3, 1, 2}, std::string("CAM C"));
  EXPECT_EQ(byNode->TakeWritten(), news);
  EXPECT_EQ(byParameter->TakeWritten(), news);
  EXPECT_EQ(byGrandparent->TakeWritten(), "");
  Edit(4, "Label", "CAM D");
  newsTimer_.ElapseAll();
  EXPECT_EQ(byParameter->TakeWritten(), "");
}

TEST_F(ProviderTest, AllKindsOfValuesAreTold) {
  const auto peer = Connect();
  for (const Path& path : {Path{1, 3, 2}, Path{1, 4, 1, 5}, Path{1, 4, 2, 3}, Path{1, 5},
                           Path{1, 6}, Path{1, 4, 3, 0, 1, 1}}) {
    peer->Send(Asked(path));
  }
  peer->written.clear();
  Edit(8, "InLabel", "LINE");
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 3, 2, 7}, std::string("LINE")));
  Report(6, {2, 8}, 1);
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 1, 5, 1}, true));
  model_.InputGains[3] = 100;
  model_.InputGains[4] = 100;  // nobody asked for this one
  provider_.GainsChanged();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 2, 3, 1}, std::int64_t{0}));
  model_.QdvTally[63] = 1;
  provider_.TallyChanged();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 5, 63}, true));
  model_.LinkStatus[0] = 0;
  provider_.LinkChanged();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 6, 1}, false));
  model_.XmapComplete = false;
  secondTimer_.Elapse();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 6, 2}, false));
  model_.XmapComplete = true;  // but a row was not reported right
  knownMap_.CrosspointRowSpoiled(3);
  secondTimer_.Elapse();
  EXPECT_EQ(peer->TakeWritten(), "");
  knownMap_.CrosspointRowChanged(3, 0);
  secondTimer_.Elapse();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 6, 2}, true));
  Edit(1, "Inhibits", "01100000");
  newsTimer_.ElapseAll();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 3, 0, 1, 1}, true));
}

TEST_F(ProviderTest, AGainIsSetSentAndTold) {
  const auto peer = Connect();
  const auto other = Connect();
  other->Send(Asked({1, 4, 2, 3}));
  other->written.clear();
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{-12}));
  EXPECT_EQ(port_.TakeWritten(), "E3 03 58 5B FF");
  EXPECT_EQ(model_.InputGains[3], 88);
  EXPECT_EQ(gainsShown_, 1);
  EXPECT_EQ(peer->TakeWritten(), test::kGainTold);
  EXPECT_EQ(other->TakeWritten(), test::kGainTold);
  // -12 as a real number.
  peer->Send(
      Packets(test::FromHex("60 1A 6B 18 A0 16 69 14 A0 07 0D 05 01 04 02 03 01 A1 09 31 07 "
                            "A2 05 09 03 C0 03 0C")));
  EXPECT_EQ(port_.TakeWritten(), "E3 03 58 5B FF");
  EXPECT_THAT(events_.lines, testing::Contains("1 10.0.0.7 gain 4 -12"));
}

// A gain that waits for the line is neither shown nor told nor in the log.
TEST_F(ProviderTest, AGainCountsWhenItIsSent) {
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{-12}));
  EXPECT_EQ(model_.InputGains[3], 64);
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_THAT(events_.lines, testing::Not(testing::Contains("1 10.0.0.7 gain 4 -12")));
  port_.unsent = 0;
  Pass(std::chrono::milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "E3 03 58 5B FF");
  EXPECT_EQ(model_.InputGains[3], 88);
  EXPECT_EQ(peer->TakeWritten(), test::kGainTold);
}

TEST_F(ProviderTest, AGainThatWaitsTooLongIsNotSent) {
  const auto peer = Connect();
  MakeRoom(0);
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{-12}));
  Pass(std::chrono::milliseconds(2500));
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 2, 3, 1}, std::int64_t{-36}));
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LineBusy));
  port_.unsent = 0;
  Pass(std::chrono::milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(ProviderTest, AGainDoesNotOutliveLinkOrConsumer) {
  const auto peer = Connect();
  const auto other = Connect();
  MakeRoom(0);
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{-12}));
  model_.LinkStatus[0] = 0;
  provider_.LinkChanged();
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LinkDown));
  model_.LinkStatus[0] = 1;
  other->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{-12}));
  other->Close();
  port_.unsent = 0;
  Pass(std::chrono::milliseconds(10));
  EXPECT_EQ(port_.TakeWritten(), "");
}

// Labels that change on and on are told all the same.
TEST_F(ProviderTest, NewsAreNotPutOff) {
  const auto peer = Connect();
  peer->Send(Asked({1, 3, 2, 7}));
  peer->written.clear();
  Edit(8, "InLabel", "ONE");
  newsTimer_.Start(std::chrono::milliseconds(1), [] { FAIL() << "started anew"; });
  newsTimer_.Stop();
  Edit(8, "InLabel", "TWO");
  EXPECT_FALSE(newsTimer_.IsRunning());
}

TEST_F(ProviderTest, SubscribeIsForTheMatrixAndParameters) {
  const auto subscribing = [](const Path& path) {
    const Bytes command = BerValue(Application(2), BerValue(Context(0), BerInteger(30)));
    const Bytes children =
        BerValue(Context(2), BerValue(Application(4), BerValue(Context(0), command)));
    const std::vector<Bytes> elements{
        BerValue(Application(10), {BerValue(Context(0), BerOid(path)), children})};
    return Packets(GlowMessage(elements));
  };
  const auto peer = Connect();
  peer->Send(subscribing({1, 6}));
  model_.LinkStatus[0] = 0;
  provider_.LinkChanged();
  EXPECT_EQ(peer->TakeWritten(), "");
  peer->Send(subscribing({1, 6, 1}));
  model_.LinkStatus[0] = 1;
  provider_.LinkChanged();
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 6, 1}, true));
}

// Hundreds of questions at once are answered in turns, and others between them.
TEST_F(ProviderTest, ManyQuestionsAreServedInTurns) {
  const auto greedy = Connect();
  const auto other = Connect();
  Bytes questions;
  const Bytes question = test::FromHex(test::kRootAsked);
  for (int i = 0; i < 300; ++i) questions.insert(questions.end(), question.begin(), question.end());
  const std::size_t answer = test::FromHex(test::kRootAnswered).size();
  workTakes_ = std::chrono::milliseconds(1);
  greedy->Send(questions);
  EXPECT_LT(greedy->written.size(), 10 * answer);
  EXPECT_TRUE(workTimer_.IsRunning());
  other->Send(test::kRootAsked);
  EXPECT_EQ(other->TakeWritten(), "") << "who comes meanwhile makes no turn longer";
  for (int turn = 0; turn < 3; ++turn) workTimer_.Elapse();
  EXPECT_EQ(other->TakeWritten(), test::kRootAnswered);
  EXPECT_LT(greedy->written.size(), 30 * answer);
  workTimer_.ElapseAll();
  EXPECT_EQ(greedy->written.size(), 300 * answer);
}

// What each of them asks takes little time, and all of them together have no more than one.
TEST_F(ProviderTest, ACrowdSharesATurn) {
  std::vector<std::shared_ptr<test::FakePeer>> crowd;
  for (int i = 0; i < 16; ++i) crowd.push_back(Connect());
  workTakes_ = std::chrono::microseconds(30);
  for (const auto& peer : crowd) peer->Send(test::kRootAsked);
  const auto answers = [&] {
    return std::count_if(crowd.begin(), crowd.end(),
                         [](const auto& peer) { return !peer->written.empty(); });
  };
  EXPECT_GT(answers(), 1);
  EXPECT_LT(answers(), 8);
  workTimer_.ElapseAll();
  EXPECT_EQ(answers(), 16);
}

// Who asks while the others have their time is answered at once.
TEST_F(ProviderTest, NowAndThenIsAtOnce) {
  const auto peer = Connect();
  workTakes_ = std::chrono::microseconds(100);
  for (int i = 0; i < 100; ++i) {
    now_ += std::chrono::milliseconds(3);
    peer->Send(test::kRootAsked);
    EXPECT_EQ(peer->TakeWritten(), test::kRootAnswered);
  }
}

TEST_F(ProviderTest, WhatIsLeftOfOneWhoHasGoneIsNotServed) {
  const auto peer = Connect();
  Bytes takes;
  for (int i = 0; i < 8; ++i) {
    const Bytes take = Taking(1, i, {0});
    takes.insert(takes.end(), take.begin(), take.end());
  }
  workTakes_ = std::chrono::milliseconds(2);
  peer->Send(takes);
  peer->Close();
  port_.TakeWritten();
  workTimer_.ElapseAll();
  EXPECT_EQ(port_.TakeWritten(), "");
}

// Thirty-two that say nothing keep nobody out.
TEST_F(ProviderTest, OneThatNeverSpokeMakesRoom) {
  const auto speaking = Connect();
  speaking->Send(test::kRootAsked);
  std::vector<std::shared_ptr<test::FakePeer>> mute;
  for (int i = 1; i < Peers::kMost; ++i) {
    now_ += std::chrono::milliseconds(1);
    mute.push_back(Connect("10.0.1." + std::to_string(i)));
  }
  const auto late = Connect();
  EXPECT_TRUE(late->connected);
  EXPECT_TRUE(speaking->connected);
  EXPECT_FALSE(mute.front()->connected);
  EXPECT_TRUE(mute.back()->connected);
  EXPECT_THAT(events_.drops, ElementsAre(PeerDrop::MadeRoom));
}

// What one computer does is at the cost of its own connections.
TEST_F(ProviderTest, AnAddressHasSoManyConnections) {
  const auto other = Connect("10.0.0.8");
  std::vector<std::shared_ptr<test::FakePeer>> many;
  for (int i = 0; i < Peers::kMostOfAddress; ++i) {
    now_ += std::chrono::milliseconds(1);
    many.push_back(Connect());
    if (i > 0) many.back()->Send(test::kRootAsked);
  }
  const auto inItsPlace = Connect();
  EXPECT_TRUE(inItsPlace->connected);
  EXPECT_FALSE(many.front()->connected) << "it had said nothing";
  inItsPlace->Send(test::kRootAsked);
  const auto tooMany = Connect();
  EXPECT_TRUE(tooMany->closedByConsole);
  EXPECT_EQ(events_.lines.back(), "10.0.0.7 turned away, has many");
  EXPECT_TRUE(other->connected) << "though it has said nothing";
  EXPECT_TRUE(Connect("10.0.0.9")->connected);
}

// An address of IPv6 is as good as its first half.
TEST_F(ProviderTest, ANetworkOfIpv6HasSoManyConnections) {
  for (int i = 0; i < Peers::kMostOfAddress; ++i) {
    Connect("2001:db8::" + std::to_string(i + 1))->Send(test::kRootAsked);
  }
  EXPECT_TRUE(Connect("2001:db8:0:0:1:2:3:4")->closedByConsole);
  EXPECT_TRUE(Connect("2001:db8::9%eth0")->closedByConsole);
  EXPECT_TRUE(Connect("2001:db8:0:1::1")->connected);
}

TEST_F(ProviderTest, TheConsolesOwnComputerMayHaveAllConnections) {
  for (int i = 0; i < Peers::kMost; ++i) {
    const auto peer = Connect(i % 2 == 0 ? "127.0.0.1" : "::1");
    peer->Send(test::kRootAsked);
    EXPECT_TRUE(peer->connected) << i;
  }
}

// Who has just come from an address of its own is not the one that makes room for a crowd.
TEST_F(ProviderTest, ACrowdMakesRoomForItself) {
  const auto other = Connect("10.0.0.8");
  std::vector<std::shared_ptr<test::FakePeer>> crowd;
  for (int i = 0; i < 60; ++i) {
    now_ += std::chrono::milliseconds(1);
    crowd.push_back(Connect("10.0.1." + std::to_string(i % 3)));
  }
  EXPECT_TRUE(other->connected);
  EXPECT_TRUE(crowd.back()->connected);
  EXPECT_EQ(provider_.PeerCount(), Peers::kMost);
}

// Those in front ask on and on, and those behind have their turn.
TEST_F(ProviderTest, NobodyStarves) {
  std::vector<std::shared_ptr<test::FakePeer>> greedy;
  for (int i = 0; i < 8; ++i) greedy.push_back(Connect());
  const auto last = Connect();
  Bytes questions;
  const Bytes question = test::FromHex(test::kRootAsked);
  for (int i = 0; i < 100; ++i) questions.insert(questions.end(), question.begin(), question.end());
  workTakes_ = std::chrono::milliseconds(2);
  for (const auto& peer : greedy) peer->Send(questions);
  last->Send(test::kRootAsked);
  for (int turn = 0; turn < 40; ++turn) workTimer_.Elapse();
  EXPECT_EQ(last->TakeWritten(), test::kRootAnswered);
  EXPECT_TRUE(workTimer_.IsRunning());
}

// However often it asks in one go.
TEST_F(ProviderTest, KeepAlivesInOneGoHaveOneAnswer) {
  const auto peer = Connect();
  Bytes requests;
  const Bytes request = test::FromHex("FE 00 0E 01 01 94 E4 FF");
  for (int i = 0; i < 200; ++i) requests.insert(requests.end(), request.begin(), request.end());
  peer->Send(requests);
  EXPECT_EQ(peer->TakeWritten(), "FE 00 0E 02 01 FD DC CE FF");
}

TEST_F(ProviderTest, WhatCannotBeSetIsAnsweredWithWhatHolds) {
  const auto peer = Connect();
  const std::string gain = ValueFrame({1, 4, 2, 3, 1}, std::int64_t{-36});
  for (const GlowValue& value : {GlowValue(std::int64_t{28}), GlowValue(std::int64_t{-101}),
                                 GlowValue(std::string("loud")), GlowValue(true)}) {
    peer->Send(Setting({1, 4, 2, 3, 1}, value));
    EXPECT_EQ(peer->TakeWritten(), gain);
  }
  EXPECT_EQ(std::exchange(events_.refusals, {}), std::vector(4, Refusal::BadValue));
  peer->Send(Setting({1, 3, 1, 0}, std::string("X")));
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 3, 1, 0}, std::string("CAM 1")));
  EXPECT_THAT(std::exchange(events_.refusals, {}), ElementsAre(Refusal::ReadOnly));
  model_.LinkStatus[0] = 0;
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{0}));
  EXPECT_EQ(peer->TakeWritten(), gain);
  EXPECT_THAT(events_.refusals, ElementsAre(Refusal::LinkDown));
  peer->Send(Setting({1, 4, 2, 64, 1}, std::int64_t{0}));  // not there
  EXPECT_EQ(peer->TakeWritten(), "");
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(model_.InputGains[3], 64);
}

class ReadOnlyProviderTest : public ProviderTest {
 protected:
  ReadOnlyProviderTest() : ProviderTest(false) {}
};

TEST_F(ReadOnlyProviderTest, NothingReachesTheLine) {
  const auto peer = Connect();
  peer->Send(Taking(1, 5, {3}));
  EXPECT_EQ(peer->TakeWritten(), RowFrame(Disposition::Locked, 5, {1, 7}));
  peer->Send(Setting({1, 4, 2, 3, 1}, std::int64_t{0}));
  EXPECT_EQ(peer->TakeWritten(), ValueFrame({1, 4, 2, 3, 1}, std::int64_t{-36}));
  peer->Send(test::kCallInvoked);
  EXPECT_EQ(
      peer->TakeWritten(),
      "FE 00 0E 00 01 C0 01 02 1F 02 60 15 77 13 A0 03 02 01 01 A1 03 01 01 00 A2 07 30 05 A0 "
      "03 01 01 00 5D FD DE FF");
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(events_.refusals, std::vector(3, Refusal::ReadOnly));
  // A gain says that it is for reading.
  peer->Send(Asked({1, 4, 2, 3}));
  EXPECT_THAT(peer->TakeWritten(), HasSubstr("A5 03 02 01 01 AD 03 02 01 01"));
}

TEST_F(ProviderTest, AQuietConsumerIsAskedAndThenDropped) {
  const auto quiet = Connect();
  const auto busy = Connect();
  for (int second = 0; second < 40; ++second) {
    now_ += seconds(1);
    if (busy->connected) busy->Send("FE 00 0E 02 01 FD DC CE FF");
    secondTimer_.Elapse();
  }
  EXPECT_EQ(quiet->TakeWritten(), "FE 00 0E 01 01 94 E4 FF");
  EXPECT_TRUE(quiet->closedByConsole);
  EXPECT_EQ(busy->TakeWritten(), "");
  EXPECT_TRUE(busy->connected);
  EXPECT_THAT(events_.drops, ElementsAre(PeerDrop::Silent));
}

TEST_F(ProviderTest, OneThatDoesNotReadIsDropped) {
  const auto peer = Connect();
  peer->reads = false;
  for (int i = 0; i < 10000 && peer->connected; ++i) peer->Send(test::kMatrixAsked);
  EXPECT_TRUE(peer->closedByConsole);
  EXPECT_LE(peer->unsent, (1U << 20) + 300);
  EXPECT_THAT(events_.drops, ElementsAre(PeerDrop::DoesNotRead));
}

TEST_F(ProviderTest, OneWithoutAnEndIsDropped) {
  const auto peer = Connect();
  peer->Send(Bytes{0xFE});
  for (int i = 0; i < 100 && peer->connected; ++i) peer->Send(Bytes(1024, 0x11));
  EXPECT_TRUE(peer->closedByConsole);
  EXPECT_THAT(events_.drops, ElementsAre(PeerDrop::TooLong));
}

TEST_F(ProviderTest, SoManyAreServedAndPlacesBecomeFree) {
  std::vector<std::shared_ptr<test::FakePeer>> peers;
  for (int i = 0; i < 32; ++i) {
    peers.push_back(Connect("10.0.1." + std::to_string(i)));
    peers.back()->Send(test::kRootAsked);
  }
  const auto tooMany = Connect();
  EXPECT_TRUE(tooMany->closedByConsole);
  EXPECT_EQ(events_.lines.back(), "10.0.0.7 turned away");
  peers[4]->Close();
  EXPECT_EQ(provider_.PeerCount(), 31);
  const auto next = Connect();
  next->Send(test::kRootAsked);
  EXPECT_EQ(next->TakeWritten(), test::kRootAnswered);
  EXPECT_EQ(events_.lines.back(), "5 10.0.0.7 connected");
}

TEST_F(ProviderTest, OneThatHasGoneIsFoundOutByWriting) {
  const auto peer = Subscribe();
  const auto other = Subscribe();
  peer->closesAtWrite = true;
  Report(6, {8});
  EXPECT_EQ(other->TakeWritten(), test::kAbsoluteReported);
  EXPECT_EQ(provider_.PeerCount(), 1);
  EXPECT_EQ(events_.lines.back(), "1 10.0.0.7 gone");
}

TEST_F(ProviderTest, TheNextOneInAPlaceInheritsNothing) {
  const auto first = Subscribe();
  first->Send(Bytes{0xFE, 0x00, 0x0E});
  first->Close();
  const auto next = Connect();
  next->Send(test::kRootAsked);
  EXPECT_EQ(next->TakeWritten(), test::kRootAnswered);
  Report(6, {8});
  EXPECT_EQ(next->TakeWritten(), "");
}

TEST_F(ProviderTest, WithoutChannelsThereIsNoMatrix) {
  model_.ChannelCount = 0;
  model_.AllocateMap();
  const auto peer = Connect();
  peer->Send(test::kNodeAsked);
  const std::string answer = peer->TakeWritten();
  EXPECT_THAT(answer, HasSubstr("A0 04 0D 02 01 05"));
  for (const char* const path : {"A0 04 0D 02 01 02", "A0 04 0D 02 01 03", "A0 04 0D 02 01 04"}) {
    EXPECT_THAT(answer, Not(HasSubstr(path)));
  }
  peer->Send(test::kMatrixAsked);
  peer->Send(test::kAbsolute);
  peer->Send(test::kCallInvoked);
  EXPECT_EQ(port_.TakeWritten(), "");
}

// Whatever byte of a message is another one, in a good frame: what reaches the line is a whole
// command of channels that are there.
TEST_F(ProviderTest, AWrongByteInAGoodFrameTakesOnlyWhatIsThere) {
  for (const char* const frame :
       {test::kAbsolute, test::kConnect, test::kDisconnect, test::kGainSet, test::kCallInvoked}) {
    FrameReader reader;
    std::vector<FrameReader::Event> events;
    ASSERT_TRUE(reader.Read(test::FromHex(frame), &events));
    ASSERT_EQ(events.size(), 1U);
    for (std::size_t at = 0; at < events[0].message.size(); ++at) {
      for (const int flip : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF}) {
        Bytes wrong = events[0].message;
        wrong[at] = static_cast<std::uint8_t>(wrong[at] ^ flip);
        const auto peer = Connect();
        peer->Send(Packets(wrong));
        if (peer->connected) peer->Close();
        Pass(std::chrono::milliseconds(2500));
        Bytes sent = test::FromHex(port_.TakeWritten());
        while (!sent.empty()) {
          const bool isGain = sent[0] == 0xE3;
          const std::size_t size = isGain ? 5 : 9;
          ASSERT_GE(sent.size(), size);
          if (isGain) {
            EXPECT_LT(sent[1], 8);
          } else {
            const auto take = switcher::ParseTake(std::span(sent).first(size));
            ASSERT_TRUE(take) << frame << " at " << at;
            EXPECT_LE(take->destination, 8);
            EXPECT_LE(take->source, 8);
          }
          sent.erase(sent.begin(), sent.begin() + static_cast<std::ptrdiff_t>(size));
        }
      }
    }
  }
}

// Whatever byte of a frame is another one, nothing is taken: the checksum says so.
TEST_F(ProviderTest, NoWrongByteOfATakeReachesTheLine) {
  for (const char* const frame : {test::kAbsolute, test::kAbsoluteWithContents, test::kConnect,
                                  test::kDisconnect, test::kGainSet, test::kCallInvoked}) {
    const Bytes bytes = test::FromHex(frame);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
      for (const int flip : {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80, 0xFF}) {
        Bytes wrong = bytes;
        wrong[at] = static_cast<std::uint8_t>(wrong[at] ^ flip);
        const auto peer = Connect();
        peer->Send(wrong);
        EXPECT_EQ(port_.TakeWritten(), "") << frame << " at " << at;
        if (peer->connected) peer->Close();
      }
    }
  }
}

}  // namespace
}  // namespace ember
