// SPDX-License-Identifier: MIT

#include "switcher/link.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "switcher/live_commands.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"

namespace switcher {
namespace {

using test::Hex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RecordingDisplay : public LinkDisplay {
 public:
  void ShowLinkText(std::string_view text) override { texts.emplace_back(text); }
  void StartDecodeTimer() override { ++timerStarts; }
  void ShowBlockedCode(std::optional<std::uint8_t> code) override {
    blocked.push_back(code.has_value() ? *code : -1);
  }

  std::vector<std::string> texts;
  std::vector<int> blocked;  // -1 for "free again"
  int timerStarts = 0;
};

class LinkTest : public testing::Test {
 protected:
  LinkTest() {
    model_.ComPort = 2;
    model_.ChannelCount = 16;
    model_.AllocateMap();
  }

  // What one tick of the poll timer writes.
  std::string Poll() {
    link_.PollTick();
    return port_.TakeWritten();
  }

  void Open() {
    ASSERT_TRUE(link_.OpenPort().ok());
    display_.texts.clear();
  }

  model::SystemModel model_;
  test::FakeSerialPort port_;
  test::RecordingSwitcherEvents events_;
  test::RecordingReporter reporter_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [] { return nullptr; },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {events_}}};
  RecordingDisplay display_;
  Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = display_}};
};

constexpr char kConnected[] = "Connected - COM 2  (57600, 8, N, 1)";
constexpr char kNotConnected[] = "Not Connected - COM 2";

TEST_F(LinkTest, OpeningShowsNotConnectedAndThePort) {
  ASSERT_TRUE(link_.OpenPort().ok());
  EXPECT_EQ(port_.Number(), 2);
  EXPECT_THAT(display_.texts, ElementsAre(kNotConnected));
}

TEST_F(LinkTest, APortThatCannotBeOpenedShowsNothing) {
  port_.unavailable = true;
  EXPECT_FALSE(link_.OpenPort().ok());
  EXPECT_THAT(display_.texts, IsEmpty());
  EXPECT_EQ(Poll(), "");
}

TEST_F(LinkTest, MovingToAnotherPortBeginsAnewThere) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  model_.SendBusy = true;
  port_.Deliver("EB");
  port_.Deliver("F5 01");
  ASSERT_FALSE(link_.RxBuffer().empty());
  display_.texts.clear();
  EXPECT_TRUE(link_.MoveTo(3).ok());
  EXPECT_EQ(port_.Number(), 3);
  EXPECT_EQ(model_.ComPort, 3);
  EXPECT_TRUE(link_.RxBuffer().empty()) << "the other half comes on no line";
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_THAT(display_.texts, ElementsAre(kNotConnected, "Not Connected - COM 3"));
  EXPECT_EQ(Poll(), "E5") << "the map of what is there";
  model_.XmapComplete = true;
  EXPECT_EQ(Poll(), "E4") << "and its tally";
  port_.Deliver("EB");
  EXPECT_EQ(display_.texts.back(), "Connected - COM 3  (57600, 8, N, 1)");
}

TEST_F(LinkTest, APortToMoveToThatCannotBeOpenedIsTriedAgain) {
  Open();
  port_.unavailable = true;
  EXPECT_FALSE(link_.MoveTo(4).ok());
  EXPECT_FALSE(port_.IsOpen());
  EXPECT_EQ(display_.texts.back(), "Not Connected - COM 4");
  EXPECT_EQ(Poll(), "");
  port_.unavailable = false;
  EXPECT_EQ(Poll(), "E5");
  EXPECT_EQ(port_.Number(), 4);
}

TEST_F(LinkTest, PollAsksForTheMapThenTheTallyThenKeepsAlive) {
  Open();
  EXPECT_EQ(Poll(), "E5");
  EXPECT_EQ(Poll(), "E5");
  model_.XmapComplete = true;
  EXPECT_EQ(Poll(), "E4");
  model_.TallySeen = true;
  EXPECT_EQ(Poll(), "ED");
  model_.XmapComplete = false;
  EXPECT_EQ(Poll(), "E5");
}

TEST_F(LinkTest, NoPollWhileAMessageIsBeingSent) {
  Open();
  model_.SendBusy = true;
  EXPECT_EQ(Poll(), "");
  model_.SendBusy = false;
  EXPECT_EQ(Poll(), "E5");
}

TEST_F(LinkTest, ThirdUnansweredKeepAliveLosesTheLink) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  port_.Deliver("EB");
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
  Poll();
  Poll();
  EXPECT_EQ(model_.LinkStatus[0], 1);
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
  EXPECT_EQ(Poll(), "ED");
  EXPECT_THAT(display_.texts, ElementsAre(kConnected, kNotConnected));
  EXPECT_EQ(model_.LinkStatus[0], 0);
  EXPECT_EQ(model_.LinkStatus[2], 0);
}

TEST_F(LinkTest, AnAnswerStartsTheCountAnew) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  port_.Deliver("EB");
  for (int second = 0; second < 20; ++second) {
    Poll();
    Poll();
    port_.Deliver("EB");
  }
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
}

TEST_F(LinkTest, BeforeTheFirstTallyTheLinkIsNeverLost) {
  Open();
  model_.XmapComplete = true;
  port_.Deliver("EB");
  for (int second = 0; second < 20; ++second) EXPECT_EQ(Poll(), "E4");
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
}

TEST_F(LinkTest, KeepAlivesAreCountedUntilOneIsAnswered) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  port_.Deliver("EB");
  EXPECT_THAT(model_.LinkStatus, ElementsAre(1, 1, 0));
  Poll();
  EXPECT_THAT(model_.LinkStatus, ElementsAre(1, 0, 1));
  Poll();
  EXPECT_THAT(model_.LinkStatus, ElementsAre(1, 0, 2));
  port_.Deliver("EB");
  EXPECT_THAT(model_.LinkStatus, ElementsAre(1, 1, 0));
}

TEST_F(LinkTest, MapPollsAreNotWatched) {
  Open();
  model_.TallySeen = true;
  port_.Deliver("EB");
  for (int second = 0; second < 5; ++second) EXPECT_EQ(Poll(), "E5");
  EXPECT_THAT(model_.LinkStatus, ElementsAre(1, 1, 0));
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
}

TEST_F(LinkTest, ALostLinkIsPolledOnAndComesBackWithAnAnswer) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  port_.Deliver("EB");
  for (int second = 0; second < 20; ++second) EXPECT_EQ(Poll(), "ED");
  EXPECT_THAT(model_.LinkStatus, ElementsAre(0, 0, 0));
  EXPECT_THAT(display_.texts, ElementsAre(kConnected, kNotConnected));
  port_.Deliver("EB");
  EXPECT_THAT(display_.texts, ElementsAre(kConnected, kNotConnected, kConnected));
  Poll();
  Poll();
  EXPECT_EQ(model_.LinkStatus[0], 1);
  Poll();
  EXPECT_EQ(model_.LinkStatus[0], 0);
}

TEST_F(LinkTest, AnyDataIsAnAnswer) {
  Open();
  port_.Deliver("F3");
  EXPECT_THAT(display_.texts, ElementsAre(kConnected));
  EXPECT_EQ(model_.LinkStatus[1], 1);
}

TEST_F(LinkTest, TextIsWrittenOnAChangeOnly) {
  Open();
  port_.Deliver("EB");
  port_.Deliver("EB");
  link_.SetLinkState(true);
  link_.SetLinkState(false);
  link_.SetLinkState(false);
  EXPECT_THAT(display_.texts, ElementsAre(kConnected, kNotConnected));
}

TEST_F(LinkTest, LinkAnswerInsideABurstIsTakenOut) {
  Open();
  port_.Deliver("F3 00 00 00 EB 00 02 EB 00 00");
  EXPECT_EQ(Hex(link_.RxBuffer()), "F3 00 00 00 00 02 00 00");
  port_.Deliver("00 02 FF");
  EXPECT_THAT(events_.seen, ElementsAre("row 1 mode 0"));
  EXPECT_EQ(model_.CrosspointMap.At(1, 2), 1);
}

TEST_F(LinkTest, ALoneLinkAnswerStartsNoDecoding) {
  Open();
  port_.Deliver("EB");
  EXPECT_EQ(display_.timerStarts, 0);
  EXPECT_TRUE(link_.RxBuffer().empty());
  EXPECT_FALSE(link_.DecodeTick());
}

TEST_F(LinkTest, TwoMessagesInOneReadTakeTwoSteps) {
  Open();
  port_.Deliver("F3 00 00 00 00 00 00 00 00 00 FF F3 01 00 00 00 00 00 00 00 01 FF");
  EXPECT_EQ(display_.timerStarts, 1);
  EXPECT_THAT(events_.seen, ElementsAre("row 1 mode 0"));
  EXPECT_TRUE(link_.DecodeTick());
  EXPECT_THAT(events_.seen, ElementsAre("row 1 mode 0", "row 2 mode 0"));
  EXPECT_FALSE(link_.DecodeTick());
}

TEST_F(LinkTest, AMessageMayArriveByteByByte) {
  Open();
  for (const char* byte : {"F3", "00", "00", "00", "00", "01", "00", "00", "00", "01"}) {
    port_.Deliver(byte);
    EXPECT_TRUE(link_.DecodeTick());
    EXPECT_THAT(events_.seen, IsEmpty());
  }
  port_.Deliver("FF");
  EXPECT_THAT(events_.seen, ElementsAre("row 1 mode 0"));
}

TEST_F(LinkTest, UnknownCodeBlocksAndIsNamedOnce) {
  Open();
  port_.Deliver("E0 00 FF F3 00 00 00 00 00 00 00 00 00 FF");
  for (int tick = 0; tick < 5; ++tick) EXPECT_TRUE(link_.DecodeTick());
  EXPECT_THAT(events_.seen, IsEmpty());
  EXPECT_THAT(display_.blocked, ElementsAre(0xE0));
}

TEST_F(LinkTest, ABlockingByteIsDiscardedByTheOperatorAloneAndOnlyIt) {
  Open();
  EXPECT_EQ(link_.DiscardBlockedByte(), std::nullopt) << "nothing blocks";
  port_.Deliver("CD 00 01 FF F3 00 00 00 00 02 00 00 00 02 FF");
  for (int tick = 0; tick < 5; ++tick) EXPECT_TRUE(link_.DecodeTick());
  ASSERT_THAT(display_.blocked, ElementsAre(0xCD));
  const int starts = display_.timerStarts;
  EXPECT_EQ(link_.DiscardBlockedByte(), 0xCD);
  EXPECT_EQ(Hex(link_.RxBuffer()), "00 01 FF F3 00 00 00 00 02 00 00 00 02 FF");
  EXPECT_THAT(display_.blocked, ElementsAre(0xCD, -1));
  EXPECT_EQ(display_.timerStarts, starts + 1) << "decoding goes on";
  EXPECT_EQ(link_.DiscardBlockedByte(), std::nullopt) << "a second press takes nothing more";

  // The rest is taken as it stands: data bytes go by themselves, the end byte blocks in its turn.
  for (int tick = 0; tick < 5; ++tick) link_.DecodeTick();
  EXPECT_EQ(Hex(link_.RxBuffer()), "FF F3 00 00 00 00 02 00 00 00 02 FF");
  EXPECT_THAT(display_.blocked, ElementsAre(0xCD, -1, 0xFF));
  EXPECT_THAT(events_.seen, IsEmpty());
  EXPECT_EQ(link_.DiscardBlockedByte(), 0xFF);
  link_.DecodeTick();
  EXPECT_THAT(events_.seen, ElementsAre("row 1 mode 0"));
  EXPECT_TRUE(link_.RxBuffer().empty());
}

TEST_F(LinkTest, AMessageThatHasNotEndedIsNotToBeDiscarded) {
  Open();
  port_.Deliver("CD 00");
  EXPECT_EQ(link_.DiscardBlockedByte(), std::nullopt);
  EXPECT_EQ(Hex(link_.RxBuffer()), "CD 00");
}

TEST_F(LinkTest, TheStateIsSetWhenTheTextIsShown) {
  class Looking : public RecordingDisplay {
   public:
    explicit Looking(const model::SystemModel& model) : model_(model) {}
    void ShowLinkText(std::string_view /*text*/) override {
      states.push_back(model_.LinkStatus[0]);
    }
    std::vector<int> states;

   private:
    const model::SystemModel& model_;
  };
  Looking display(model_);
  Link link({.model = model_, .port = port_, .decoder = decoder_, .display = display});
  link.SetLinkState(true);
  link.SetLinkState(false);
  EXPECT_THAT(display.states, ElementsAre(1, 0));
}

TEST_F(LinkTest, ReceiveBufferDropsTheNewestBeyondItsLimit) {
  Open();
  port_.Deliver("E0");
  port_.Deliver(Bytes(Link::kRxLimit - 2, 0x01));
  EXPECT_EQ(link_.RxBuffer().size(), Link::kRxLimit - 1);
  port_.Deliver("02 03");
  EXPECT_EQ(link_.RxBuffer().size(), Link::kRxLimit);
  EXPECT_EQ(link_.RxBuffer().front(), 0xE0);
  EXPECT_EQ(link_.RxBuffer().back(), 0x02);
  port_.Deliver("04");
  EXPECT_EQ(link_.RxBuffer().back(), 0x02);
}

TEST_F(LinkTest, DrainedOutputEndsTheSending) {
  Open();
  model_.SendBusy = true;
  port_.SetSendThreshold(1);
  port_.Drain();
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 0);
}

TEST_F(LinkTest, ATakeThatFailedSilencesThePollUntilTheLineHasDrained) {
  Open();
  LiveCommands commands({.model = model_, .port = port_, .reporter = reporter_});
  port_.writesUntilFailure = 3;
  EXPECT_FALSE(commands.SendTake(1, 1, 0x02));
  port_.writesUntilFailure = -1;
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00");
  EXPECT_EQ(Poll(), "");
  port_.Drain();
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_EQ(Poll(), "E5");
}

TEST_F(LinkTest, LossClearsTheLinkAndReturnAsksForTheMapAgain) {
  Open();
  model_.XmapComplete = model_.TallySeen = true;
  port_.Deliver("EB F3 00");
  model_.SendBusy = true;
  port_.unavailable = true;
  port_.Vanish();
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_TRUE(link_.RxBuffer().empty());
  EXPECT_THAT(display_.texts, ElementsAre(kConnected, kNotConnected));
  EXPECT_EQ(Poll(), "");
  EXPECT_EQ(Poll(), "");
  EXPECT_EQ(port_.openCount, 3);

  port_.unavailable = false;
  EXPECT_EQ(Poll(), "E5");
  EXPECT_FALSE(model_.XmapComplete);
  EXPECT_TRUE(model_.TallySeen);
}

TEST_F(LinkTest, ATakeWhileTheDeviceWasAwayDoesNotSilenceThePoll) {
  Open();
  port_.Vanish();
  model_.SendBusy = true;  // as a take leaves it that could not be written
  EXPECT_EQ(Poll(), "E5");
}

TEST_F(LinkTest, LossWhileBlockedFreesTheDisplay) {
  Open();
  port_.Deliver("E0 FF");
  port_.Vanish();
  EXPECT_THAT(display_.blocked, ElementsAre(0xE0, -1));
}

TEST_F(LinkTest, APortMissingAtStartIsFoundLater) {
  port_.unavailable = true;
  EXPECT_FALSE(link_.OpenPort().ok());
  port_.unavailable = false;
  EXPECT_EQ(Poll(), "E5");
  EXPECT_THAT(display_.texts, ElementsAre(kNotConnected));
}

// Takes tables, and writes down their codes.
class RecordingTaker : public TableTaker {
 public:
  void TakeTable(std::span<const std::uint8_t> message) override {
    taken.push_back(test::Hex(message));
  }

  std::vector<std::string> taken;
};

TEST_F(LinkTest, TablesCanBeDivertedAndNothingElse) {
  Open();
  RecordingTaker taker;
  link_.DivertTables(&taker);
  for (const char* const message : {"F9 FF", "FB FF", "F4 FF", "F5 FF", "E1 FF"}) {
    port_.Deliver(message);
  }
  EXPECT_THAT(taker.taken, ElementsAre("F9 FF", "FB FF", "F4 FF", "F5 FF", "E1 FF"));
  EXPECT_THAT(events_.refused, IsEmpty());
  for (const char* const message : {"E2 FF", "F3 FF", "E4 FF"}) port_.Deliver(message);
  EXPECT_THAT(taker.taken, SizeIs(5));
  EXPECT_THAT(events_.refused, SizeIs(3));

  link_.DivertTables(nullptr);
  port_.Deliver("F5 FF");
  EXPECT_THAT(taker.taken, SizeIs(5));
  EXPECT_THAT(events_.refused, SizeIs(4));
}

}  // namespace
}  // namespace switcher
