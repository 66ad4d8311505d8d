// SPDX-License-Identifier: MIT

#include "tools/tesksim/simulator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tesksim/simulated_line.h"

namespace tesksim {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;
using test::Hex;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

class SimulatorTest : public testing::Test {
 protected:
  SwitcherState& State() { return line_.simulator.State(); }
  std::string Ask(std::string_view hex) { return line_.Ask(hex); }
  const Stats& Counts() { return line_.simulator.Counts(); }

  SimulatedLine line_{{.channels = 16}};
};

constexpr char kEmptyMapOf16[] =
    "F3 00 00 00 00 00 00 00 00 00 FF "
    "F3 01 00 00 00 00 00 00 00 01 FF "
    "F3 02 00 00 00 00 00 00 00 02 FF "
    "F3 03 00 00 00 00 00 00 00 03 FF "
    "F3 04 00 00 00 00 00 00 00 04 FF "
    "F3 05 00 00 00 00 00 00 00 05 FF "
    "F3 06 00 00 00 00 00 00 00 06 FF "
    "F3 07 00 00 00 00 00 00 00 07 FF "
    "F3 08 00 00 00 00 00 00 00 08 FF "
    "F3 09 00 00 00 00 00 00 00 09 FF "
    "F3 0A 00 00 00 00 00 00 00 0A FF "
    "F3 0B 00 00 00 00 00 00 00 0B FF "
    "F3 0C 00 00 00 00 00 00 00 0C FF "
    "F3 0D 00 00 00 00 00 00 00 0D FF "
    "F3 0E 00 00 00 00 00 00 00 0E FF "
    "F3 0F 00 00 00 00 00 00 00 0F FF "
    "E2 40 40 40 40 40 40 40 40 40 40 40 40 40 40 40 40 00 FF";

TEST_F(SimulatorTest, SilentUntilPolled) { EXPECT_EQ(line_.Answer(), ""); }

TEST_F(SimulatorTest, MapPollBringsEveryRowInOrderThenTheGains) {
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, TheMapShowsCrosspointsPriorityAndGains) {
  State().crosspoints.At(1, 2) = Crosspoint::Ordinary;
  State().crosspoints.At(3, 1) = Crosspoint::Ordinary;
  State().crosspoints.At(3, 8) = Crosspoint::Priority;
  State().crosspoints.At(3, 16) = Crosspoint::Ordinary;
  State().crosspoints.At(16, 9) = Crosspoint::Ordinary;
  State().gains[0] = 100;
  State().gains[15] = 127;
  const std::string map = Ask("E5");
  EXPECT_THAT(map, StartsWith("F3 00 00 00 00 02 00 00 00 02 FF "
                              "F3 01 00 00 00 00 00 00 00 01 FF "
                              "F3 02 00 01 00 01 01 00 01 04 FF "
                              "F3 03 00 00 00 00 00 00 00 03 FF "));
  EXPECT_THAT(map, EndsWith("F3 0F 00 00 00 00 00 01 00 10 FF "
                            "E2 64 40 40 40 40 40 40 40 40 40 40 40 40 40 40 7F 63 FF"));
}

TEST_F(SimulatorTest, TallyPollBringsTheTally) {
  State().tally[0] = 1;
  State().tally[63] = 255;
  std::string expected = "E4 01 00 ";
  for (int point = 2; point <= 63; ++point) expected += "00 00 ";
  expected += "7F 01 00 FF";
  EXPECT_EQ(Ask("E4"), expected);
}

TEST_F(SimulatorTest, KeepAliveIsAnsweredByOneByte) {
  EXPECT_EQ(Ask("ED"), "EB");
  EXPECT_EQ(Ask("ED ED"), "EB EB");
}

TEST_F(SimulatorTest, TheLinkAnswerComesBetweenTwoBytesOfAMessage) {
  line_.simulator.SendRow(1);
  EXPECT_EQ(Hex(line_.Run(milliseconds(1))), "F3 00 00 00 00");
  EXPECT_EQ(Ask("ED"), "EB 00 00 00 00 00 FF");
}

TEST_F(SimulatorTest, MapPollsWhileTheMapIsGoingOutStartNothing) {
  // 256 rows of 71 bytes and the gain report take 3.2 s: the console polls in it four times.
  SimulatedLine big({.channels = 256});
  std::size_t received = 0;
  for (int second = 0; second < 4; ++second) {
    big.Send("E5");
    received += big.Run(seconds(1)).size();
  }
  received += big.Run(seconds(10)).size();
  EXPECT_EQ(received, 256u * 71 + 259);
  EXPECT_EQ(big.simulator.Counts().mapPolls, 4u);
}

TEST_F(SimulatorTest, AMapPollAfterTheMapStartsItAgain) {
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(seconds(1))), kEmptyMapOf16);
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(seconds(1))), kEmptyMapOf16);
}

// Takes: destination 6, source 8 unless said otherwise.

TEST_F(SimulatorTest, SumMakesAndBreaks) {
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0E FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
  EXPECT_EQ(Ask("FD 02 00 00 00 05 00 07 FF"), "F3 05 00 00 00 01 01 00 00 06 FF");
  EXPECT_EQ(Ask("FD 00 00 07 00 05 00 0C FF"), "F3 05 00 00 00 01 00 00 00 06 FF");
}

TEST_F(SimulatorTest, ProgramTakeReleasesTheOtherSourcesOfItsOutputOnly) {
  Ask("FD 02 00 00 00 05 00 07 FF");
  Ask("FD 06 01 0F 00 05 00 1A FF");  // call from 16
  Ask("FD 02 00 00 00 06 00 08 FF");  // output 7 from 1
  EXPECT_EQ(Ask("FD 03 00 07 00 05 00 0F FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
  EXPECT_THAT(Ask("E5"), testing::HasSubstr("F3 06 00 00 00 01 00 00 00 07 FF"));
}

TEST_F(SimulatorTest, CallAndPriorityListenGiveThePriorityStatus) {
  EXPECT_EQ(Ask("FD 06 01 07 00 05 00 12 FF"), "F3 05 00 01 00 00 01 00 00 06 FF");  // call
  EXPECT_EQ(Ask("FD 02 00 00 00 05 00 07 FF"), "F3 05 00 01 00 01 01 00 00 07 FF");  // sum 1
  EXPECT_EQ(Ask("FD 04 01 07 00 05 00 10 FF"), "F3 05 00 00 00 01 00 00 00 06 FF");  // call off
  EXPECT_EQ(Ask("FD 0A 01 07 00 05 00 16 FF"), "F3 05 00 01 00 01 01 00 00 07 FF");  // listen
  EXPECT_EQ(Ask("FD 08 01 07 00 05 00 14 FF"), "F3 05 00 00 00 01 00 00 00 06 FF");
}

TEST_F(SimulatorTest, AnOrdinaryMakeTakesThePriorityAway) {
  Ask("FD 06 01 07 00 05 00 12 FF");
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0E FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
}

TEST_F(SimulatorTest, ProgramTakeOfAPrioritySourceLeavesAnOrdinaryOne) {
  Ask("FD 06 01 07 00 05 00 12 FF");
  EXPECT_EQ(Ask("FD 03 00 07 00 05 00 0F FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
}

TEST_F(SimulatorTest, TheLastChannelsOfTheLargestMatrix) {
  SimulatedLine big({.channels = 256});
  big.simulator.State().inhibits.At(256, 256) = 0;  // as it begins, from itself
  std::string row = "F3 7F 01 00 00 ";
  for (int group = 1; group <= 31; ++group) row += "00 00 ";
  EXPECT_EQ(big.Ask("FD 03 00 7F 01 7F 01 01 FF"), row + "00 01 7F FF");
}

TEST_F(SimulatorTest, InhibitRowForbidsMaking) {
  // Output 6: inputs 1 and 8.
  EXPECT_EQ(Ask("F5 05 00 01 01 00 00 06 FF"), "");
  EXPECT_THAT(line_.log, ElementsAre("rx inhibits output 6 inhibits 1 8"));
  EXPECT_EQ(Ask("FD 02 00 01 00 05 00 08 FF"), "F3 05 00 00 00 02 00 00 00 07 FF");
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0E FF"), "F3 05 00 00 00 02 00 00 00 07 FF");
  EXPECT_EQ(Ask("FD 06 01 07 00 05 00 12 FF"), "F3 05 00 00 00 02 00 00 00 07 FF");
  EXPECT_EQ(Counts().refused, 2u);
}

TEST_F(SimulatorTest, ARefusedProgramTakeReleasesNothing) {
  Ask("FD 02 00 01 00 05 00 08 FF");
  Ask("F5 05 00 01 01 00 00 06 FF");
  EXPECT_EQ(Ask("FD 03 00 07 00 05 00 0F FF"), "F3 05 00 00 00 02 00 00 00 07 FF");
  EXPECT_THAT(line_.log, Contains("rx take output 6 source 8 action 3 (refused)"));
}

TEST_F(SimulatorTest, WhatWasMadeBeforeTheInhibitStaysAndCanBeBroken) {
  Ask("FD 02 00 07 00 05 00 0E FF");
  Ask("F5 05 00 01 01 00 00 06 FF");
  EXPECT_THAT(Ask("E5"), testing::HasSubstr("F3 05 00 00 00 00 01 00 00 05 FF"));
  EXPECT_EQ(Ask("FD 00 00 07 00 05 00 0C FF"), "F3 05 00 00 00 00 00 00 00 05 FF");
}

TEST_F(SimulatorTest, ANewInhibitRowReplacesTheOldOne) {
  Ask("F5 05 00 01 01 00 00 06 FF");
  Ask("F5 05 00 00 00 00 00 05 FF");
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0E FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
}

TEST_F(SimulatorTest, ABrokenInhibitRowChangesNothing) {
  Ask("F5 05 00 01 01 00 00 07 FF");                 // checksum
  Ask("F5 05 00 01 01 06 FF");                       // one group short
  EXPECT_EQ(Ask("F5 10 00 01 01 00 00 11 FF"), "");  // output 17
  EXPECT_EQ(Counts().malformed, 2u);
  EXPECT_EQ(Counts().refused, 1u);
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0E FF"), "F3 05 00 00 00 00 01 00 00 05 FF");
}

TEST_F(SimulatorTest, TakesOutsideTheMatrix) {
  EXPECT_EQ(Ask("FD 02 00 10 00 05 00 17 FF"), "F3 05 00 00 00 00 00 00 00 05 FF");  // source 17
  EXPECT_EQ(Ask("FD 02 00 05 00 10 00 17 FF"), "");                                  // output 17
  EXPECT_EQ(Ask("FD 02 00 7F 7F 7F 7F 00 FF"), "");
  EXPECT_EQ(Counts().refused, 3u);
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, ATakeWithAWrongChecksumIsNotActedOn) {
  EXPECT_EQ(Ask("FD 02 00 07 00 05 00 0F FF"), "");
  EXPECT_EQ(Ask("FD 02 00 07 00 05 0E FF"), "");
  EXPECT_THAT(line_.log, ElementsAre("rx malformed take 9 bytes", "rx malformed take 8 bytes"));
  EXPECT_EQ(Counts().malformed, 2u);
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, ATakesRowGoesBeforeTheRestOfTheMap) {
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(milliseconds(2))), "F3 00 00 00 00 00 00 00 00 00 FF");
  const std::string rest = Ask("FD 02 00 07 00 05 00 0E FF");
  EXPECT_THAT(rest, StartsWith("F3 05 00 00 00 00 01 00 00 05 FF "
                               "F3 01 00 00 00 00 00 00 00 01 FF "));
  EXPECT_THAT(rest, testing::HasSubstr("F3 04 00 00 00 00 00 00 00 04 FF "
                                       "F3 05 00 00 00 00 01 00 00 05 FF "
                                       "F3 06 00 00 00 00 00 00 00 06 FF "));
}

TEST_F(SimulatorTest, GainIsStoredAndReportedWithTheNextMap) {
  EXPECT_EQ(Ask("E3 05 64 69 FF"), "");
  EXPECT_THAT(line_.log, ElementsAre("rx gain input 6 step 100"));
  EXPECT_THAT(Ask("E5"), EndsWith("E2 40 40 40 40 40 64 40 40 40 40 40 40 40 40 40 40 24 FF"));
}

TEST_F(SimulatorTest, AGainOfAnInputThatIsNotThereIsRefused) {
  EXPECT_EQ(Ask("E3 10 64 74 FF"), "");  // input 17
  EXPECT_EQ(Ask("E3 05 64 68 FF"), "");  // checksum
  EXPECT_EQ(Counts().refused, 1u);
  EXPECT_EQ(Counts().malformed, 1u);
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, NoiseDoesNotKeepAPollFromBeingHeard) {
  EXPECT_EQ(Ask("00 91 FF F3 00 ED 07"), "EB");
  EXPECT_EQ(Counts().noiseBytes, 6u);
  EXPECT_THAT(line_.log, ElementsAre("rx noise 5 bytes", "rx poll keep-alive", "rx noise 1 byte",
                                     "tx link answer"));
}

TEST_F(SimulatorTest, AKeepAliveInsideAMessageIsAnsweredAndBreaksTheMessage) {
  EXPECT_EQ(Ask("FD 02 00 07 ED 00 05 00 0E FF"), "EB");
  EXPECT_EQ(Counts().malformed, 1u);
  EXPECT_THAT(line_.log, Contains("rx broken take 4 bytes"));
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, TheRemainsOfADeadSenderSwallowNoPoll) {
  EXPECT_EQ(Ask("F9 14 20 20 20"), "");  // ten seconds without another byte
  EXPECT_THAT(line_.log, ElementsAre("rx broken label-texts 5 bytes"));
  EXPECT_EQ(Ask("ED"), "EB");
}

TEST_F(SimulatorTest, AMapOf256ChannelsTakesItsTimeOnTheLine) {
  SimulatedLine big({.channels = 256});
  big.Send("E5");
  std::size_t received = 0;
  for (int tick = 1; tick <= 4000; ++tick) {
    received += big.Run(milliseconds(1)).size();
    const double carried = std::min(tick * 5.760, 18435.0);
    ASSERT_LE(static_cast<double>(received), carried);
    ASSERT_GE(static_cast<double>(received), carried - 7.0);  // at most a portion behind
  }
  EXPECT_EQ(received, 18435u);
}

TEST_F(SimulatorTest, AnAnswerAfterAPauseTakesItsTimeToo) {
  Simulator& simulator = line_.simulator;
  const Bytes poll{0xED};
  simulator.Receive(poll, Time{});
  EXPECT_TRUE(simulator.TakeOutput(Time{}).empty());
  EXPECT_EQ(Hex(simulator.TakeOutput(Time{} + milliseconds(1))), "EB");
  simulator.Receive(poll, Time{} + milliseconds(500));
  EXPECT_TRUE(simulator.TakeOutput(Time{} + milliseconds(500)).empty());
  EXPECT_EQ(Hex(simulator.TakeOutput(Time{} + milliseconds(501))), "EB");
}

TEST_F(SimulatorTest, WithoutAPaceTheAnswerIsThereAtOnce) {
  SimulatedLine fast({.channels = 16}, {.baud = 0});
  fast.Send("E5");
  EXPECT_EQ(Hex(fast.Run(nanoseconds(0))), kEmptyMapOf16);
}

TEST_F(SimulatorTest, SilenceActsButDoesNotAnswer) {
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(milliseconds(1))), "F3 00 00 00 00");
  line_.simulator.SetSilence(true);
  EXPECT_EQ(Ask("ED E5 E4 FD 02 00 07 00 05 00 0E FF"), "");
  line_.simulator.SendRow(6);
  EXPECT_EQ(line_.Answer(), "F3 05 00 00 00 00 01 00 00 05 FF");
  line_.simulator.SetSilence(false);
  EXPECT_EQ(Ask("ED"), "EB");
}

TEST_F(SimulatorTest, ADroppedLineForgetsWhatWasUnderWay) {
  line_.Send("E5 FD 02 00");
  EXPECT_EQ(Hex(line_.Run(milliseconds(1))), "F3 00 00 00 00");
  line_.simulator.DropLine();
  EXPECT_EQ(Ask("07 00 05 00 0E FF ED"), "EB");  // the take's second half is noise now
  EXPECT_EQ(Counts().noiseBytes, 6u);
  EXPECT_EQ(Counts().malformed, 0u);
  EXPECT_EQ(Ask("E5"), kEmptyMapOf16);
}

TEST_F(SimulatorTest, WhatIsNotReadDoesNotPileUpWithoutEnd) {
  SimulatedLine slow({.channels = 16}, {.baud = 300});
  for (int i = 0; i < 10000; ++i) slow.simulator.SendRow(1);
  EXPECT_EQ(slow.simulator.Output().MessagesDropped(), 10000u - 65536 / 11);
}

TEST_F(SimulatorTest, LogNamesWhatGoesOut) {
  State().crosspoints.At(6, 8) = Crosspoint::Priority;
  line_.simulator.SendRow(6);
  line_.simulator.SendTally();
  line_.simulator.SendGains();
  line_.simulator.SendRaw({0xE0, 0xFF});
  EXPECT_THAT(line_.Answer(), EndsWith("00 FF E0 FF"));
  EXPECT_THAT(line_.log, ElementsAre("tx row output 6 status 1 sources 8 priority 8",
                                     "tx tally responding 0", "tx gains", "tx raw 2 bytes"));
}

TEST_F(SimulatorTest, EveryMessageToTheSwitcherIsActedOn) {
  for (const switcher::MessageKind& kind : switcher::kMessages) {
    if (!kind.ToSwitcher()) continue;
    line_.log.clear();
    Ask(test::Hex(Bytes{kind.code, 0xFF}));
    EXPECT_THAT(line_.log, ElementsAre(testing::HasSubstr("malformed " + std::string(kind.name))));
  }
}

TEST_F(SimulatorTest, NothingIsLoggedUnlessAskedFor) {
  line_.simulator.SetLogging(false);
  Ask("E5");
  EXPECT_THAT(line_.log, testing::IsEmpty());
}

}  // namespace
}  // namespace tesksim
