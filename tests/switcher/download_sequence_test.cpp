// SPDX-License-Identifier: MIT

#include "switcher/download.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "switcher/wire/message_table.h"
#include "tests/support/download_system.h"
#include "tests/support/hex.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

// A download with everything around it.  What the operator and the switcher see is kept in
// order: "status ...", "poll off", "pause", and for each turn of the event loop "sent" with the
// code of the message and its length.
class DownloadTest : public test::DownloadSystem, public DownloadDisplay, public PollSwitch {
 protected:
  DownloadTest() { model_.DownloadInterval = 50; }

  void SetUp() override {
    DownloadSystem::SetUp();
    download_.emplace(Services(), *this);
  }

  Download::Services Services() { return {.model = model_, .tables = senders_, .poll = *this}; }

  // What the event loop would do next; false when there is nothing.
  bool RunOne() {
    if (std::exchange(delayPending_, false)) {
      download_->DelayTick();
    } else if (std::exchange(spacingPending_, false)) {
      download_->SpacingTick();
    } else if (std::exchange(turnPending_, false)) {
      download_->SendNext();
    } else {
      return false;
    }
    NoteSent();
    return true;
  }

  void NoteSent() {
    const std::string written = port_.TakeWritten();
    if (written.empty()) return;
    events_.push_back("sent " + written.substr(0, 2) + " " +
                      std::to_string((written.size() + 1) / 3));
  }

  void Note(std::string event) {
    NoteSent();
    events_.push_back(std::move(event));
  }

  void RunToTheEnd() {
    while (RunOne()) continue;
  }

  // Runs until that was seen.
  void RunUntil(const std::string& event) {
    while (std::find(events_.begin(), events_.end(), event) == events_.end()) {
      ASSERT_TRUE(RunOne()) << "never seen: " << event;
    }
  }

  // What was seen of the kind, such as "status ".
  std::vector<std::string> Seen(std::string_view kind) const {
    std::vector<std::string> seen;
    std::copy_if(events_.begin(), events_.end(), std::back_inserter(seen),
                 [&](const std::string& event) { return event.starts_with(kind); });
    return seen;
  }

  std::optional<Download> download_;
  std::vector<std::string> events_;
  std::vector<std::pair<Table, int>> sent_;
  std::vector<std::pair<Table, int>> failed_;
  int messages_ = 0;  // of all that was sent
  int position_ = -1;

 private:
  void SetPolling(bool on) override { Note(on ? "poll on" : "poll off"); }
  void ShowProgressBar(int maximum) override {
    Note("bar 0 of " + std::to_string(maximum));
    position_ = 0;
  }
  void ShowCaption(std::string_view caption) override { Note("caption " + std::string(caption)); }
  void ShowStatus(std::string_view status) override { Note("status " + std::string(status)); }
  void ShowPosition(int position) override { position_ = position; }
  void ShowCancelling() override { Note("cancelling"); }
  void StartDelayTimer() override { delayPending_ = true; }
  void StartSpacingTimer() override {
    Note("pause");
    spacingPending_ = true;
  }
  void RequestTurn() override { turnPending_ = true; }
  void TableSent(const TablePart& part, int messages) override {
    sent_.emplace_back(part.table, part.station);
    messages_ += messages;
  }
  void TableFailed(const TablePart& part) override {
    failed_.emplace_back(part.table, part.station);
  }
  void Close() override { Note("close " + download_->Result().notSent); }

  bool delayPending_ = false;
  bool spacingPending_ = false;
  bool turnPending_ = false;
};

TEST_F(DownloadTest, SaysWhatItIsAboutToDo) {
  EXPECT_EQ(download_->Confirmation(),
            "Preparing to Transmit System Information to the Switcher. This information Includes "
            "Alpha Labels, Button and Relay Programming and Crosspoint Inhibits. Click 'Ok' to "
            "continue and reprogram the existing System Information, or select 'Cancel' to "
            "abort.");
  model_.DownloadMode = -1;
  const Download buttonsOnly(Services(), *this);
  EXPECT_EQ(buttonsOnly.Confirmation(),
            "Preparing to Transmit Button Programming Information to the Switcher. Click 'Ok' to "
            "continue and reprogram the existing System Button Information, or select 'Cancel' "
            "to abort.");
}

TEST_F(DownloadTest, SendsEveryTableInOrderMessageByMessage) {
  model_.ChannelCount = 8;
  download_->Go();
  RunToTheEnd();
  std::vector<std::string> expected{
      "bar 0 of 40",
      "caption System Download Progress (403 Total Bytes)",
      "status Download Status",
      "poll off",
      "status Download Status (Optos)",
      "sent E1 1411",
      "status Download Status (Output Alphas)",
      "sent F7 37",
      "sent F9 132",
      "status Download Status (Input Alphas)",
      "sent F7 37",
      "sent F9 132",
      "status Download Status (Inhibits)",
  };
  expected.insert(expected.end(), 8, "sent F5 7");
  expected.emplace_back("status Download Status (Relays)");
  expected.insert(expected.end(), 8, "sent F4 21");
  for (int i = 0; i < 4; ++i) {
    expected.emplace_back("status Download Status (Pause)");
    expected.emplace_back("pause");
  }
  for (const char* const station : {"1", "2"}) {
    expected.push_back("status Download Status (Button Programming Sta " + std::string(station) +
                       ")");
    expected.emplace_back("sent FB 645");
    expected.emplace_back("pause");
  }
  expected.emplace_back("poll on");
  expected.emplace_back("close ");
  EXPECT_THAT(events_, ElementsAreArray(expected));
  EXPECT_THAT(sent_, ElementsAre(Pair(Table::Optos, 9999), Pair(Table::OutputLabels, 9999),
                                 Pair(Table::InputLabels, 9999), Pair(Table::Inhibits, 9999),
                                 Pair(Table::Relays, 9999), Pair(Table::Buttons, 1),
                                 Pair(Table::Buttons, 2)));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(DownloadTest, LeavesNoTableOut) {
  download_->Go();
  RunToTheEnd();
  for (const MessageKind& kind : kMessages) {
    const std::string code = test::Hex(Bytes{kind.code});
    EXPECT_EQ(Seen("sent " + code).empty(), kind.use != MessageUse::Table) << kind.name;
  }
}

TEST_F(DownloadTest, AnnouncesTheEstimateAsItIsComputed) {
  model_.ChannelCount = 64;
  model_.StationCount = 64;
  download_->Go();
  EXPECT_THAT(events_,
              ElementsAre("bar 0 of 2278", "caption System Download Progress (22787 Total Bytes)",
                          "status Download Status"));
}

TEST_F(DownloadTest, TheOtherModeSendsButtonProgrammingOnly) {
  model_.DownloadMode = -1;
  model_.StationCount = 16;
  download_.emplace(Services(), *this);
  download_->Go();
  RunToTheEnd();
  EXPECT_THAT(Seen("caption "), ElementsAre("caption System Download Progress (2112 Total Bytes)"));
  EXPECT_THAT(Seen("bar "), ElementsAre("bar 0 of 211"));
  EXPECT_EQ(Seen("sent FB 645").size(), 16U);
  EXPECT_EQ(Seen("sent").size(), 16U);
  EXPECT_EQ(Seen("pause").size(), 16U);
  EXPECT_EQ(Seen("status Download Status (Button Programming Sta 16)").size(), 1U);
}

TEST_F(DownloadTest, WithoutAnIntervalThereIsNoPause) {
  model_.DownloadInterval = 0;
  download_->Go();
  RunToTheEnd();
  EXPECT_THAT(Seen("pause"), IsEmpty());
  EXPECT_EQ(Seen("status Download Status (Pause)").size(), 4U);
  EXPECT_EQ(Seen("sent FB").size(), 2U);
  EXPECT_EQ(events_.back(), "close ");
}

TEST_F(DownloadTest, ThePollIsOffFromTheFirstTickToTheEnd) {
  download_->Go();
  EXPECT_THAT(Seen("poll"), IsEmpty());
  RunOne();
  EXPECT_THAT(Seen("poll"), ElementsAre("poll off"));
  RunToTheEnd();
  EXPECT_THAT(Seen("poll"), ElementsAre("poll off", "poll on"));
}

TEST_F(DownloadTest, TheBarMovesAtEveryEleventhValue) {
  model_.StationCount = 64;
  download_->Go();
  RunUntil("sent E1 1411");
  EXPECT_EQ(position_, 64);  // 64 optos of eleven values
  RunUntil("sent F7 37");
  EXPECT_EQ(position_, 65);  // 17 values
  RunUntil("sent F9 132");
  EXPECT_EQ(position_, 77);  // 129 more
}

TEST_F(DownloadTest, TheBarStopsAtItsEnd) {
  model_.ChannelCount = 8;
  download_->Go();
  RunToTheEnd();
  EXPECT_EQ(position_, 40);
}

TEST_F(DownloadTest, CancelBeforeOkClosesAndSendsNothing) {
  download_->Cancel();
  RunToTheEnd();
  EXPECT_THAT(events_, ElementsAre("close "));
  download_->Go();
  EXPECT_FALSE(RunOne());
}

TEST_F(DownloadTest, CancelBeforeTheFirstTickSendsNothing) {
  download_->Go();
  download_->Cancel();
  RunToTheEnd();
  EXPECT_THAT(Seen("sent"), IsEmpty());
  EXPECT_EQ(events_.back(),
            "close Optos, Output Alphas, Input Alphas, Inhibits, Relays, "
            "Button Programming Sta 1 to 2");
}

TEST_F(DownloadTest, CancelLetsTheRunningStageFinish) {
  download_->Go();
  RunUntil("sent F4 21");
  download_->Cancel();
  download_->Cancel();
  RunToTheEnd();
  EXPECT_EQ(Seen("sent F4 21").size(), 16U);
  EXPECT_THAT(Seen("pause"), IsEmpty());
  EXPECT_THAT(Seen("sent FB"), IsEmpty());
  EXPECT_EQ(Seen("cancelling").size(), 1U);
  EXPECT_THAT(Seen("poll"), ElementsAre("poll off", "poll on"));
  EXPECT_EQ(events_.back(), "close Button Programming Sta 1 to 2");
}

TEST_F(DownloadTest, CancelBetweenStagesBeginsNoOther) {
  download_->Go();
  RunUntil("sent E1 1411");
  download_->Cancel();
  RunToTheEnd();
  EXPECT_EQ(Seen("sent").size(), 1U);
  EXPECT_THAT(events_.back(), StartsWith("close Output Alphas, "));
}

TEST_F(DownloadTest, CancelInAPauseSkipsWhatIsLeft) {
  download_->Go();
  RunUntil("sent FB 645");
  download_->Cancel();
  RunToTheEnd();
  EXPECT_EQ(Seen("sent FB").size(), 1U);
  EXPECT_EQ(events_.back(), "close Button Programming Sta 2");
}

TEST_F(DownloadTest, CancelWhenAllIsSentLeavesNothingOut) {
  download_->Go();
  RunUntil("status Download Status (Button Programming Sta 2)");
  download_->Cancel();
  RunToTheEnd();
  EXPECT_EQ(Seen("sent FB").size(), 2U);
  EXPECT_EQ(events_.back(), "close ");
}

TEST_F(DownloadTest, AFailedStageIsReportedAndTheNextOneFollows) {
  port_.writesUntilFailure = 5;
  download_->Go();
  RunUntil("status Download Status (Optos)");
  port_.writesUntilFailure = -1;
  RunToTheEnd();
  EXPECT_THAT(reporter_.reports,
              ElementsAre(StartsWith("critical|Serial Communications Error|"
                                     "Error Sending Opto Programming Data\r\rError # ")));
  EXPECT_EQ(Seen("sent").front(), "sent E1 5");
  EXPECT_THAT(failed_, ElementsAre(Pair(Table::Optos, 9999)));
  EXPECT_THAT(sent_, ElementsAre(Pair(Table::OutputLabels, 9999), Pair(Table::InputLabels, 9999),
                                 Pair(Table::Inhibits, 9999), Pair(Table::Relays, 9999),
                                 Pair(Table::Buttons, 1), Pair(Table::Buttons, 2)));
  EXPECT_EQ(Seen("sent F9").size(), 2U);
  EXPECT_EQ(Seen("sent FB 645").size(), 2U);
  EXPECT_EQ(events_.back(), "close ");
}

TEST_F(DownloadTest, WhatCameOfItIsCounted) {
  download_->Go();
  RunToTheEnd();
  EXPECT_EQ(download_->Result().sent, 7);
  EXPECT_EQ(messages_, 1 + 2 + 2 + 16 + 16 + 2);
  EXPECT_THAT(download_->Result().failed, IsEmpty());
  EXPECT_EQ(download_->Result().notSent, "");
}

TEST_F(DownloadTest, TablesThatCouldNotBeSentAreNamedInTheirOrder) {
  download_->Go();
  RunUntil("sent F5 9");
  port_.Close();
  RunToTheEnd();
  EXPECT_EQ(download_->Result().sent, 3);
  EXPECT_THAT(download_->Result().failed,
              ElementsAre(TablePart{Table::Inhibits}, TablePart{Table::Relays},
                          TablePart{Table::Buttons, 1}, TablePart{Table::Buttons, 2}));
}

TEST_F(DownloadTest, AStationWithoutARecordIsNoTableThatWasSent) {
  model_.DownloadMode = -1;
  model_.StationCount = 130;  // a new database has 128
  download_.emplace(Services(), *this);
  download_->Go();
  RunToTheEnd();
  EXPECT_EQ(download_->Result().sent, 128);
  EXPECT_THAT(download_->Result().failed, IsEmpty());
}

TEST_F(DownloadTest, APortThatGoesFailsEachStageOnceAndTheEndComes) {
  download_->Go();
  RunUntil("sent F5 9");
  port_.Close();
  RunToTheEnd();
  EXPECT_THAT(reporter_.reports,
              ElementsAre(StartsWith("critical|Serial Communications Error|"
                                     "Error Sending Inhibits Table\r\rError # 8018 - "),
                          StartsWith("critical|Serial Communications Error|"
                                     "Error Sending Inhibits Table\r\rError # 8018 - "),
                          StartsWith("critical|Serial Communications Error|"
                                     "Error Sending Button Table\r\rError # 8018 - "),
                          StartsWith("critical|Serial Communications Error|"
                                     "Error Sending Button Table\r\rError # 8018 - ")));
  EXPECT_EQ(events_.back(), "close ");
  EXPECT_THAT(Seen("poll"), ElementsAre("poll off", "poll on"));
}

TEST_F(DownloadTest, AProgramThatEndsStillGetsTheRunningStageOut) {
  download_->Go();
  RunUntil("sent F5 9");
  download_->CancelNow();
  EXPECT_THAT(Seen("sent"), ElementsAre("sent E1 1411", "sent F7 37", "sent F9 132", "sent F7 37",
                                        "sent F9 132", "sent F5 9", "sent F5 135"));
  EXPECT_EQ(events_.back(), "close Relays, Button Programming Sta 1 to 2");
  EXPECT_EQ(sent_.back(), std::make_pair(Table::Inhibits, 9999));
  EXPECT_EQ(download_->Result().sent, 4);
  RunToTheEnd();
  EXPECT_EQ(Seen("sent").size(), 7U);
}

TEST_F(DownloadTest, AProgramThatEndsWhileItAsksSendsNothing) {
  download_->CancelNow();
  EXPECT_THAT(events_, ElementsAre("close "));
}

TEST_F(DownloadTest, OnlyStationsThatFollowEachOtherAreNamedAsOne) {
  const std::vector<TablePart> parts{
      {Table::Relays, 1}, {Table::Buttons, 1}, {Table::Buttons, 2}, {Table::Buttons, 4}};
  download_->GoFor(parts, {});
  download_->Cancel();
  RunToTheEnd();
  EXPECT_EQ(download_->Result().notSent,
            "Relays 1, Button Programming Sta 1 to 2, Button Programming Sta 4");
  EXPECT_EQ(download_->Result().leftOut, parts);
}

}  // namespace
}  // namespace switcher
