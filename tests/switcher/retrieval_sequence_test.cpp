// SPDX-License-Identifier: MIT

#include "switcher/retrieval.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

// A retrieval with everything around it; what the operator sees is kept in order.
class RetrievalTest : public testing::Test, public RetrievalDisplay, public PollSwitch {
 protected:
  RetrievalTest() {
    model_.ChannelCount = 16;
    model_.StationCount = 3;
    model_.AllocateMap();
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  std::vector<std::string> TakeSeen() { return std::exchange(seen_, {}); }

  // OK, and the request is out.
  void Begin() {
    retrieval_.Go();
    retrieval_.DelayTick();
    EXPECT_EQ(port_.TakeWritten(), "E7");
    seen_.clear();
  }

  model::SystemModel model_;
  test::RecordingSwitcherEvents events_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [] { return nullptr; },
                    .reporter = reporter_,
                    .changes = changes_,
                    .observers = {events_}}};
  test::SilentLinkDisplay linkDisplay_;
  Link link_{{.model = model_, .port = port_, .decoder = decoder_, .display = linkDisplay_}};
  const Retrieval::Services services_{.model = model_,
                                      .decoder = decoder_,
                                      .port = port_,
                                      .link = link_,
                                      .poll = *this,
                                      .reporter = reporter_};
  Retrieval retrieval_{services_, *this};
  std::vector<std::string> seen_;

 private:
  void SetPolling(bool on) override { seen_.emplace_back(on ? "poll on" : "poll off"); }
  void CloseViews() override { seen_.emplace_back("views closed"); }
  void ShowHistory() override { seen_.emplace_back("empty history"); }
  void SetWaiting(bool waiting) override {
    seen_.emplace_back(waiting ? "waiting" : "not waiting");
  }
  void AddMessage(std::string_view description, int byteCount, DecodeStatus status) override {
    seen_.push_back("row " + std::string(description) + "|" + std::to_string(byteCount) + "|" +
                    std::string(StatusWord(status)));
  }
  void ShowCaption(std::string_view caption) override {
    seen_.push_back("caption " + std::string(caption));
  }
  void ShowSilence(int seconds) override {
    if (seconds > 0) seen_.push_back("silence " + std::to_string(seconds));
  }
  void ShowLine(RetrievalLine line) override {
    if (line == RetrievalLine::Closed) seen_.emplace_back("line closed");
    if (line == RetrievalLine::OpenAgain) seen_.emplace_back("line open again");
  }
  void StartDelayTimer() override { seen_.emplace_back("delay"); }
  void StopDelayTimer() override { seen_.emplace_back("no delay"); }
  void Close() override { seen_.emplace_back("close"); }
};

TEST_F(RetrievalTest, SaysWhatItIsAboutToDo) {
  EXPECT_STREQ(Retrieval::kConfirmation,
               "Preparing to Request System Information from the Switcher. This information "
               "Includes\n Alpha Labels, Button and Relay Programming and Crosspoint Inhibits. "
               "Click 'Ok' to \ncontinue and reprogram the existing Computer Information, or "
               "select 'Cancel' to abort.");
  EXPECT_STREQ(Retrieval::kCaption, "Retrieve System Data");
}

TEST_F(RetrievalTest, OkClosesTheViewsStopsThePollAndAsksAfterTheDelay) {
  retrieval_.Go();
  EXPECT_THAT(TakeSeen(), ElementsAre("views closed", "caption Retrieve System Data",
                                      "empty history", "waiting", "poll off", "delay"));
  EXPECT_TRUE(model_.RetrieveActive);
  EXPECT_EQ(port_.TakeWritten(), "");
  retrieval_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "E7");
  EXPECT_EQ(Retrieval::kDelayMilliseconds, 500);
}

TEST_F(RetrievalTest, EveryMessageIsARowAndAddsToTheTotal) {
  Begin();
  retrieval_.UpdateStatus("Alpha Labels", 132, DecodeStatus::Ok);
  retrieval_.UpdateStatus("Output 1 Inhibit Map", 9, DecodeStatus::ChecksumFailed);
  retrieval_.UpdateStatus("Output 2 Inhibit Map", 8, DecodeStatus::WrongSize);
  retrieval_.UpdateStatus("Output 99 Inhibit Map", 9, DecodeStatus::WrongChannel);
  retrieval_.UpdateStatus("Station 1 Button Data", 645, DecodeStatus::MissingEnd);
  retrieval_.UpdateStatus("Station 2 Button Data", 645, static_cast<DecodeStatus>(5));
  EXPECT_THAT(
      TakeSeen(),
      ElementsAre(
          "row Alpha Labels|132|OK", "caption Retrieving System Data ( 132 Bytes)",
          "row Output 1 Inhibit Map|9|Failed Csum", "caption Retrieving System Data ( 141 Bytes)",
          "row Output 2 Inhibit Map|8|Size Error", "caption Retrieving System Data ( 149 Bytes)",
          "row Output 99 Inhibit Map|9|Channel Error",
          "caption Retrieving System Data ( 158 Bytes)",
          "row Station 1 Button Data|645|Missing EOM",
          "caption Retrieving System Data ( 803 Bytes)", "row Station 2 Button Data|645|",
          "caption Retrieving System Data ( 1448 Bytes)"));
}

TEST_F(RetrievalTest, TheLastStationsButtonDataEndsIt) {
  Begin();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  EXPECT_THAT(TakeSeen(), ElementsAre("row Station 3 Button Data|645|OK", "not waiting",
                                      "caption Retrieval Completed (645 Bytes)", "poll on"));
  EXPECT_FALSE(model_.RetrieveActive);
  EXPECT_TRUE(retrieval_.Result().completed);
  EXPECT_EQ(retrieval_.Result().refused, 0);
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("close"));
}

TEST_F(RetrievalTest, ARefusedLastMessageEndsItToo) {
  Begin();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::ChecksumFailed);
  EXPECT_FALSE(model_.RetrieveActive);
  EXPECT_TRUE(retrieval_.Result().completed);
  EXPECT_EQ(retrieval_.Result().refused, 1);
}

TEST_F(RetrievalTest, OtherStationsDoNotEndIt) {
  Begin();
  retrieval_.UpdateStatus("Station 33 Button Data", 645, DecodeStatus::Ok);
  retrieval_.UpdateStatus("Station 2 Button Data", 645, DecodeStatus::Ok);
  EXPECT_TRUE(model_.RetrieveActive);
}

TEST_F(RetrievalTest, TheDecodersReportToIt) {
  Begin();
  // The crosspoint row of output 2 with a wrong checksum.
  decoder_.Decode(test::FromHex("F3 01 00 00 00 00 00 00 00 7F FF"));
  EXPECT_THAT(TakeSeen(), ElementsAre("row Output 2 Crosspoint Map|11|Failed Csum",
                                      "caption Retrieving System Data ( 11 Bytes)"));
  retrieval_.Cancel();
  TakeSeen();
  decoder_.Decode(test::FromHex("F3 01 00 00 00 00 00 00 00 01 FF"));
  EXPECT_THAT(TakeSeen(), IsEmpty());
}

TEST_F(RetrievalTest, CancelBeforeOkClosesAndSendsNothing) {
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("close"));
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RetrievalTest, CancelInTheDelaySendsNothing) {
  retrieval_.Go();
  TakeSeen();
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(),
              ElementsAre("no delay", "not waiting", "caption Retrieve System Data", "poll on"));
  retrieval_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_FALSE(model_.RetrieveActive);
}

TEST_F(RetrievalTest, CancelWhileWaitingEndsTheWaitAndTheNextOneCloses) {
  Begin();
  retrieval_.UpdateStatus("Alpha Labels", 132, DecodeStatus::Ok);
  TakeSeen();
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("not waiting", "caption Retrieve System Data", "poll on"));
  EXPECT_FALSE(retrieval_.Result().completed);
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("close"));
}

TEST_F(RetrievalTest, WhatCameOfItIsCounted) {
  Begin();
  retrieval_.UpdateStatus("Alpha Labels", 132, DecodeStatus::Ok);
  retrieval_.UpdateStatus("Output 12 Relay Assignments", 21, DecodeStatus::ChecksumFailed);
  retrieval_.UpdateStatus("Output 13 Relay Assignments", 21, DecodeStatus::NotStored);
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  const RetrievalResult& result = retrieval_.Result();
  EXPECT_TRUE(result.completed);
  EXPECT_TRUE(result.asked);
  EXPECT_FALSE(result.lineLost);
  EXPECT_EQ(result.messages, 4);
  EXPECT_EQ(result.refused, 2);
  EXPECT_EQ(result.firstRefused, "Output 12 Relay Assignments");
  EXPECT_FALSE(result.IsWhole());

  Begin();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  EXPECT_EQ(retrieval_.Result().messages, 1);
  EXPECT_TRUE(retrieval_.Result().IsWhole());
}

// As when an earlier retrieval was cancelled and the switcher is still at it.
TEST_F(RetrievalTest, TheRequestIsSentAlsoWhenTheLastMessageCameBeforeIt) {
  retrieval_.Go();
  TakeSeen();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  EXPECT_THAT(TakeSeen(), ElementsAre("row Station 3 Button Data|645|OK", "not waiting",
                                      "caption Retrieval Completed (645 Bytes)", "poll on"));
  EXPECT_FALSE(retrieval_.Result().IsWhole());
  retrieval_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "E7");
  retrieval_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_FALSE(retrieval_.Result().asked) << "not by the time it ended";
}

TEST_F(RetrievalTest, AWindowThatClosesBeforeTheRequestSendsNothing) {
  retrieval_.Go();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  TakeSeen();
  retrieval_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("no delay", "close"));
  retrieval_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RetrievalTest, APortThatIsLostIsTriedAgainEachSecond) {
  model_.XmapComplete = true;
  Begin();
  retrieval_.SecondTick();
  EXPECT_THAT(TakeSeen(), IsEmpty());
  port_.unavailable = true;
  port_.Vanish();
  const int tries = port_.openCount;
  retrieval_.SecondTick();
  retrieval_.SecondTick();
  EXPECT_EQ(port_.openCount, tries + 2);
  EXPECT_THAT(TakeSeen(), ElementsAre("line closed", "line closed"));

  port_.unavailable = false;
  retrieval_.SecondTick();
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_FALSE(model_.XmapComplete) << "what the switcher did meanwhile is not known";
  EXPECT_TRUE(model_.RetrieveActive);
  retrieval_.SecondTick();
  EXPECT_THAT(TakeSeen(), ElementsAre("line open again", "line open again"));
  EXPECT_EQ(port_.TakeWritten(), "") << "neither a poll nor a second request";

  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::Ok);
  EXPECT_TRUE(retrieval_.Result().completed);
  EXPECT_FALSE(retrieval_.Result().IsWhole());
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RetrievalTest, AnEndRightBehindALossKnowsOfIt) {
  Begin();
  port_.Vanish();
  retrieval_.Cancel();
  EXPECT_TRUE(retrieval_.Result().lineLost);
  port_.unavailable = false;
  ASSERT_TRUE(link_.KeepOpen());
  Begin();
  EXPECT_FALSE(retrieval_.Result().lineLost);
}

TEST_F(RetrievalTest, ANewOkBeginsAtNothing) {
  Begin();
  retrieval_.UpdateStatus("Station 3 Button Data", 645, DecodeStatus::MissingEnd);
  Begin();
  EXPECT_FALSE(retrieval_.Result().completed);
  EXPECT_EQ(retrieval_.Result().refused, 0);
  retrieval_.UpdateStatus("Alpha Labels", 132, DecodeStatus::Ok);
  EXPECT_EQ(TakeSeen().back(), "caption Retrieving System Data ( 132 Bytes)");
}

TEST_F(RetrievalTest, OkWhileWaitingDoesNothing) {
  Begin();
  retrieval_.Go();
  EXPECT_THAT(TakeSeen(), IsEmpty());
}

TEST_F(RetrievalTest, AnEarlierRetrievalThatGoesLateTakesNoMessagesAway) {
  auto earlier = std::make_unique<Retrieval>(services_, *this);
  Retrieval later(services_, *this);
  earlier.reset();
  later.Go();
  seen_.clear();
  decoder_.Decode(test::FromHex("E4 00 FF"));
  EXPECT_EQ(seen_, (std::vector<std::string>{"row QDV Responding Tally Info|3|Size Error",
                                             "caption Retrieving System Data ( 3 Bytes)"}));
}

TEST_F(RetrievalTest, SilenceIsSpokenOfFromTenSecondsOn) {
  retrieval_.SecondTick();
  Begin();
  for (int i = 0; i < 9; ++i) retrieval_.SecondTick();
  EXPECT_THAT(TakeSeen(), IsEmpty());
  retrieval_.SecondTick();
  retrieval_.SecondTick();
  EXPECT_THAT(TakeSeen(), ElementsAre("silence 10", "silence 11"));
  retrieval_.UpdateStatus("Alpha Labels", 132, DecodeStatus::Ok);
  TakeSeen();
  for (int i = 0; i < 9; ++i) retrieval_.SecondTick();
  EXPECT_THAT(TakeSeen(), IsEmpty());
}

TEST_F(RetrievalTest, ARequestThatCannotBeSentIsReportedAndTheWaitIsTheOperatorsToEnd) {
  retrieval_.Go();
  port_.Close();
  retrieval_.DelayTick();
  EXPECT_THAT(reporter_.reports, ElementsAre(StartsWith("critical|Serial Communications Error|"
                                                        "Error Requesting System Data\r\r"
                                                        "Error # 8018 - ")));
  EXPECT_TRUE(model_.RetrieveActive);
  retrieval_.Cancel();
  EXPECT_FALSE(model_.RetrieveActive);
}

}  // namespace
}  // namespace switcher
