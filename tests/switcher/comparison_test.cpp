// SPDX-License-Identifier: MIT

#include "switcher/comparison/comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_changes.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_switcher_events.h"
#include "tests/support/silent_link_display.h"
#include "tests/support/small_database.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// The whole answer of a switcher of eight channels, stations and relays, one label, one button and
// one opto, in the order in which it sends it.  It differs from the database in the label of
// station 1, the inhibits of output 2 and the button of station 1.
const std::vector<std::string>& Answer() {
  static const std::vector<std::string> kAnswer{
      "F9 14 43 41 4D 20 31 20 20 20 16 FF",  // CAM 1
      "F9 0A 4D 49 43 20 31 20 20 20 14 FF",  // MIC 1
      "F5 00 00 00 00 00 FF",
      "F4 00 00 00 00 00 FF",
      "F5 01 00 01 00 02 FF",  // input 1 to output 2
      "F4 01 00 00 00 01 FF",
      "F5 02 00 00 00 02 FF",
      "F4 02 00 00 00 02 FF",
      "F5 03 00 00 00 03 FF",
      "F4 03 00 00 00 03 FF",
      "F5 04 00 00 00 04 FF",
      "F4 04 00 00 00 04 FF",
      "F5 05 00 00 00 05 FF",
      "F4 05 00 00 00 05 FF",
      "F5 06 00 00 00 06 FF",
      "F4 06 00 00 00 06 FF",
      "F5 07 00 00 00 07 FF",
      "F4 07 00 00 00 07 FF",
      "E1 " + test::Times(11, "00 00") + "00 FF",
      "FB 00 00 00 00 01 00 01 00 02 FF",  // TALK to station 1
      "FB 01 00 7F 01 00 00 00 00 00 FF",
      "FB 02 00 7F 01 00 00 00 00 01 FF",
      "FB 03 00 7F 01 00 00 00 00 02 FF",
      "FB 04 00 7F 01 00 00 00 00 03 FF",
      "FB 05 00 7F 01 00 00 00 00 04 FF",
      "FB 06 00 7F 01 00 00 00 00 05 FF",
      "FB 07 00 7F 01 00 00 00 00 06 FF",
  };
  return kAnswer;
}

class ComparisonTest : public testing::Test, public ComparisonDisplay, public PollSwitch {
 protected:
  ComparisonTest() {
    model_.ChannelCount = 8;
    model_.StationCount = 8;
    model_.LabelCount = 1;
    model_.ButtonCount = 1;
    model_.RelayCount = 8;
    model_.OptoCount = 1;
    model_.AllocateMap();
    database_.AddStation(1, {{"Label", "Sta. 001"},
                             {"InLabel", "MIC 1"},
                             {"Hidden", 0},
                             {"Inhibits", test::kNoFlags},
                             {"Relays", test::kNoFlags},
                             {"B1 Type", 255},
                             {"B1 First", 0},
                             {"B1 Prog", test::kNoFlags},
                             {"OptoType", 0},
                             {"OptoChannel", 0},
                             {"OptoFirst", 0},
                             {"OptoStations", test::kNoFlags}});
    database_.AddStation(2, {{"Inhibits", test::kNoFlags}, {"B1 Type", 255}});
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  std::vector<std::string> TakeSeen() { return std::exchange(seen_, {}); }

  // Begins, and the request is out.
  void Begin() {
    comparison_.Go();
    comparison_.DelayTick();
    EXPECT_EQ(port_.TakeWritten(), "E7");
    seen_.clear();
  }

  // Messages `first` to behind `last` of the answer arrive and are decoded.
  void Deliver(std::size_t first, std::size_t last) {
    for (std::size_t i = first; i < last; ++i) Deliver(Answer()[i]);
  }
  void Deliver(const std::string& hex) {
    port_.Deliver(hex);
    while (link_.DecodeTick()) {
    }
  }
  void DeliverAll() { Deliver(0, Answer().size()); }

  void Seconds(int count) {
    for (int i = 0; i < count; ++i) comparison_.SecondTick();
  }

  // Nothing of the switcher's has reached the database.
  void ExpectUntouched() {
    EXPECT_EQ(database_.Field(1, "Label"), "Sta. 001");
    EXPECT_EQ(database_.Field(2, "Inhibits"), test::kNoFlags);
    EXPECT_EQ(database_.Field(1, "B1 Type"), "255");
    EXPECT_THAT(changes_.seen, IsEmpty());
    EXPECT_THAT(events_.seen, IsEmpty());
    EXPECT_THAT(events_.refused, IsEmpty());
    EXPECT_THAT(reporter_.reports, IsEmpty());
    EXPECT_FALSE(model_.RetrieveActive);
  }

  // What is sent unasked reaches the database again.
  void ExpectTheDecoderIsBack() {
    EXPECT_FALSE(comparison_.IsListening());
    Deliver("F5 01 00 02 00 03 FF");
    EXPECT_EQ(database_.Field(2, "Inhibits"), "01" + std::string(62, '0'));
  }

  std::vector<std::string> Differences() {
    std::vector<std::string> seen;
    for (const stations::Change& change : comparison_.Result().differences) {
      for (const stations::FieldChange& field : change.fields) {
        seen.push_back(std::to_string(change.station) + " " + field.field);
      }
    }
    return seen;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::RecordingSwitcherEvents events_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  stations::Changes stream_;
  test::RecordingChanges changes_{stream_};
  Decoder decoder_{{.model = model_,
                    .database = [this] { return database_.Files().Database(); },
                    .reporter = reporter_,
                    .changes = stream_,
                    .observers = {events_}}};
  test::SilentLinkDisplay linkDisplay_;
  Link link_{model_, port_, decoder_, linkDisplay_};
  bool isOpen_ = true;
  Comparison comparison_{
      {.model = model_,
       .database = [this] { return isOpen_ ? database_.Files().Database() : nullptr; },
       .port = port_,
       .link = link_,
       .poll = *this,
       .reporter = reporter_},
      *this};
  std::vector<std::string> seen_;

 private:
  void SetPolling(bool on) override { seen_.emplace_back(on ? "poll on" : "poll off"); }
  void ShowHeldUp() override { seen_.emplace_back("held up"); }
  void ShowWaiting() override { seen_.emplace_back("waiting"); }
  void ShowProgress(int messages, int bytes) override {
    seen_.push_back(std::to_string(messages) + " messages, " + std::to_string(bytes) + " bytes");
  }
  void ShowSilence(int seconds) override {
    if (seconds > 0) seen_.push_back("silence " + std::to_string(seconds));
  }
  void ShowLine(RetrievalLine line) override {
    if (line == RetrievalLine::Closed) seen_.emplace_back("line closed");
    if (line == RetrievalLine::OpenAgain) seen_.emplace_back("line open again");
  }
  void ShowResult(const ComparisonResult& result) override {
    seen_.emplace_back(result.completed ? "completed" : "cancelled");
  }
  void StartDelayTimer() override { seen_.emplace_back("delay"); }
  void StopDelayTimer() override { seen_.emplace_back("no delay"); }
};

TEST_F(ComparisonTest, AsksAsARetrievalDoes) {
  comparison_.Go();
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off", "waiting", "delay"));
  EXPECT_EQ(port_.TakeWritten(), "");
  comparison_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "E7");
  comparison_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "");
  ExpectUntouched();
}

TEST_F(ComparisonTest, FindsWhatDiffersAndStoresNothing) {
  Begin();
  DeliverAll();
  const ComparisonResult& result = comparison_.Result();
  EXPECT_TRUE(result.completed);
  EXPECT_FALSE(result.lineLost);
  EXPECT_EQ(result.messages, 27);
  EXPECT_EQ(result.bytes, 2 * 12 + 16 * 7 + 25 + 8 * 11);
  EXPECT_THAT(result.refused, IsEmpty());
  EXPECT_THAT(result.missing, IsEmpty());
  EXPECT_THAT(result.accepted, SizeIs(27));
  EXPECT_TRUE(result.IsWhole());
  EXPECT_THAT(Differences(),
              ElementsAre("1 Label", "1 B1 Type", "1 B1 First", "1 B1 Prog", "2 Inhibits"));
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

TEST_F(ComparisonTest, EveryMessageIsProgressAndTheLastOneEndsTheWait) {
  Begin();
  Deliver(0, 2);
  EXPECT_THAT(TakeSeen(), ElementsAre("1 messages, 12 bytes", "2 messages, 24 bytes"));
  Deliver(2, 26);
  TakeSeen();
  EXPECT_TRUE(comparison_.IsWaiting());
  Deliver(26, 27);
  EXPECT_THAT(TakeSeen(), ElementsAre("27 messages, 249 bytes", "poll on", "completed"));
  EXPECT_FALSE(comparison_.IsWaiting());
}

// The map, gains and tally are nobody's business but the ordinary decoder's.
TEST_F(ComparisonTest, WhatIsNoTableGoesItsOrdinaryWay) {
  Begin();
  Deliver(0, 5);
  Deliver("F3 01 00 00 00 02 00 03 FF");
  EXPECT_THAT(events_.seen, ElementsAre("row 2 mode 0"));
  EXPECT_EQ(model_.CrosspointMap.At(2, 2), 1);
  EXPECT_EQ(comparison_.Result().messages, 5);
  events_.seen.clear();
  ExpectUntouched();
}

TEST_F(ComparisonTest, ARefusedMessageIsNamedWithoutABox) {
  Begin();
  Deliver(0, 4);
  Deliver("F5 01 00 01 00 03 FF");
  Deliver(5, 27);
  const ComparisonResult& result = comparison_.Result();
  EXPECT_TRUE(result.completed);
  EXPECT_FALSE(result.IsWhole());
  ASSERT_THAT(result.refused, SizeIs(1));
  EXPECT_EQ(result.refused[0].part, (TablePart{Table::Inhibits, 2}));
  EXPECT_EQ(result.refused[0].status, DecodeStatus::ChecksumFailed);
  EXPECT_THAT(result.missing, IsEmpty());
  EXPECT_THAT(Differences(), ElementsAre("1 Label", "1 B1 Type", "1 B1 First", "1 B1 Prog"));
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

// A message was lost on the line: others may come behind the last one, which is seen by waiting.
TEST_F(ComparisonTest, AMessageThatDidNotComeIsMissingAfterThreeQuietSeconds) {
  Begin();
  Deliver(0, 4);
  Deliver(5, 27);
  TakeSeen();
  Seconds(3);
  EXPECT_TRUE(comparison_.IsWaiting());
  Seconds(1);
  EXPECT_FALSE(comparison_.IsWaiting());
  EXPECT_FALSE(comparison_.IsListening());
  EXPECT_EQ(TakeSeen().back(), "completed");
  EXPECT_THAT(comparison_.Result().missing, ElementsAre(TablePart{Table::Inhibits, 2}));
  EXPECT_FALSE(comparison_.Result().IsWhole());
  ExpectUntouched();
}

// An earlier retrieval was cancelled, and the switcher is still answering it: its last message is
// not that of the answer to this request.
TEST_F(ComparisonTest, TheEndOfAnEarlierAnswerEndsNothing) {
  comparison_.Go();
  Deliver(24, 26);
  comparison_.DelayTick();
  Deliver(26, 27);
  EXPECT_TRUE(comparison_.IsWaiting());
  Seconds(2);
  DeliverAll();
  EXPECT_TRUE(comparison_.Result().IsWhole());
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

TEST_F(ComparisonTest, TheEndBeforeTheRequestEndsNothing) {
  comparison_.Go();
  DeliverAll();
  EXPECT_TRUE(comparison_.IsWaiting());
  comparison_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "E7");
  DeliverAll();
  EXPECT_TRUE(comparison_.Result().IsWhole());
  ExpectUntouched();
}

TEST_F(ComparisonTest, CancelBeforeTheRequestSendsNothing) {
  comparison_.Go();
  TakeSeen();
  comparison_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("no delay", "poll on", "cancelled"));
  comparison_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_THAT(comparison_.Result().missing, SizeIs(27));
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

// Whatever had come by then: the rest never reaches the database.
TEST_F(ComparisonTest, CancelledAtEveryMessageNothingLateIsStored) {
  for (std::size_t cancelled = 0; cancelled < Answer().size(); ++cancelled) {
    SCOPED_TRACE(cancelled);
    Begin();
    Deliver(0, cancelled);
    TakeSeen();
    comparison_.Cancel();
    EXPECT_THAT(TakeSeen(), ElementsAre("poll on", "cancelled"));
    EXPECT_FALSE(comparison_.IsWaiting());
    EXPECT_TRUE(comparison_.IsListening());
    EXPECT_FALSE(comparison_.Result().completed);
    EXPECT_EQ(comparison_.Result().messages, static_cast<int>(cancelled));
    EXPECT_THAT(comparison_.Result().missing, SizeIs(Answer().size() - cancelled));
    Deliver(cancelled, Answer().size());
    EXPECT_THAT(TakeSeen(), IsEmpty());
    EXPECT_EQ(comparison_.Result().messages, static_cast<int>(cancelled));
    EXPECT_FALSE(comparison_.IsListening()) << "the last one has come";
    ExpectUntouched();
  }
  ExpectTheDecoderIsBack();
}

TEST_F(ComparisonTest, WithoutTheLastMessageLateAnswersEndWithThreeQuietSeconds) {
  Begin();
  Deliver(0, 3);
  comparison_.Cancel();
  Seconds(3);
  EXPECT_TRUE(comparison_.IsListening());
  Deliver(3, 10);
  Seconds(3);
  EXPECT_TRUE(comparison_.IsListening());
  Seconds(1);
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

// The switcher talks on while the plug is out.
TEST_F(ComparisonTest, NothingIsQuietOnALineThatIsLost) {
  Begin();
  Deliver(0, 3);
  port_.unavailable = true;
  port_.Vanish();
  comparison_.Cancel();
  EXPECT_TRUE(comparison_.Result().lineLost);
  Seconds(60);
  EXPECT_TRUE(comparison_.IsListening());
  port_.unavailable = false;
  ASSERT_TRUE(link_.KeepOpen());
  Seconds(2);
  Deliver(12, 26);
  ExpectUntouched();
  Seconds(4);
  ExpectTheDecoderIsBack();
}

TEST_F(ComparisonTest, ALineLostInTheMiddleIsOpenedAgain) {
  Begin();
  Deliver(0, 3);
  TakeSeen();
  port_.unavailable = true;
  port_.Vanish();
  Seconds(2);
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off", "line closed", "poll off", "line closed"));
  port_.unavailable = false;
  Seconds(1);
  EXPECT_TRUE(port_.IsOpen());
  EXPECT_EQ(port_.TakeWritten(), "") << "neither a poll nor a second request";
  TakeSeen();
  Seconds(1);
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off", "line open again"));
  Deliver(20, 27);
  Seconds(4);
  const ComparisonResult& result = comparison_.Result();
  EXPECT_TRUE(result.completed);
  EXPECT_TRUE(result.lineLost);
  EXPECT_THAT(result.missing, SizeIs(17));
  EXPECT_FALSE(result.IsWhole());
  ExpectUntouched();
}

TEST_F(ComparisonTest, SilenceIsSpokenOfFromTenSecondsOn) {
  Begin();
  Seconds(9);
  TakeSeen();
  Seconds(2);
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off", "silence 10", "poll off", "silence 11"));
  Deliver(0, 1);
  TakeSeen();
  Seconds(1);
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off"));
  EXPECT_TRUE(comparison_.IsWaiting()) << "it is the operator's to end it";
}

TEST_F(ComparisonTest, ANewOneWaitsForTheEndOfTheLateAnswers) {
  Begin();
  Deliver(0, 3);
  comparison_.Cancel();
  TakeSeen();
  comparison_.Go();
  EXPECT_THAT(TakeSeen(), ElementsAre("held up"));
  EXPECT_TRUE(comparison_.IsWaiting());
  Deliver(3, 27);
  EXPECT_THAT(TakeSeen(), ElementsAre("poll off", "waiting", "delay"));
  comparison_.DelayTick();
  EXPECT_EQ(port_.TakeWritten(), "E7");
  DeliverAll();
  EXPECT_TRUE(comparison_.Result().IsWhole());
  EXPECT_EQ(comparison_.Result().messages, 27);
  ExpectUntouched();
}

TEST_F(ComparisonTest, ANewOneThatIsCancelledWhileItIsHeldUpAsksNothing) {
  Begin();
  Deliver(0, 3);
  comparison_.Cancel();
  comparison_.Go();
  TakeSeen();
  comparison_.Cancel();
  EXPECT_THAT(TakeSeen(), ElementsAre("cancelled"));
  EXPECT_EQ(comparison_.Result().messages, 3) << "of the one before";
  Deliver(3, 27);
  EXPECT_THAT(TakeSeen(), IsEmpty());
  EXPECT_EQ(port_.TakeWritten(), "");
  ExpectUntouched();
  ExpectTheDecoderIsBack();
}

TEST_F(ComparisonTest, OneAtATime) {
  Begin();
  comparison_.Go();
  EXPECT_THAT(TakeSeen(), IsEmpty());
}

TEST_F(ComparisonTest, ARequestThatCannotBeSentIsReportedAndTheWaitIsTheOperatorsToEnd) {
  comparison_.Go();
  port_.Close();
  comparison_.DelayTick();
  EXPECT_THAT(reporter_.reports, ElementsAre(StartsWith("critical|Serial Communications Error|"
                                                        "Error Requesting System Data\r\r"
                                                        "Error # 8018 - ")));
  EXPECT_TRUE(comparison_.IsWaiting());
  comparison_.Cancel();
  EXPECT_FALSE(comparison_.IsWaiting());
}

TEST_F(ComparisonTest, WithoutADatabaseItSaysSoAndAsksNothing) {
  isOpen_ = false;
  comparison_.Go();
  EXPECT_THAT(reporter_.reports,
              ElementsAre(StartsWith("critical|Error Processing|Error in Comparing With The "
                                     "Switcher\rError # ")));
  EXPECT_THAT(TakeSeen(), IsEmpty());
  EXPECT_FALSE(comparison_.IsListening());
}

// What is edited while it waits is not in the copy.
TEST_F(ComparisonTest, ComparesWithTheDatabaseAsItWasAtTheBeginning) {
  Begin();
  database_.Set(1, "Label", "CAM 1");
  DeliverAll();
  ASSERT_FALSE(comparison_.Result().differences.empty());
  const stations::FieldChange& label = comparison_.Result().differences[0].fields[0];
  EXPECT_EQ(label.field, "Label");
  EXPECT_EQ(label.before.Text(), "Sta. 001");
  EXPECT_EQ(label.after.Text(), "CAM 1");
}

TEST_F(ComparisonTest, TheReportedDatabaseHoldsWhatWasReported) {
  EXPECT_EQ(comparison_.ReportedDatabase(), nullptr);
  Begin();
  DeliverAll();
  std::unique_ptr<jet::RecordSet> stations;
  ASSERT_TRUE(comparison_.ReportedDatabase()->OpenTable("Stations", &stations).ok());
  jet::Value label;
  ASSERT_TRUE(stations->Get("Label", &label).ok());
  EXPECT_EQ(label.Text(), "CAM 1");
}

}  // namespace
}  // namespace switcher
