// SPDX-License-Identifier: MIT

#include "switcher/comparison/comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/comparison_system.h"

namespace switcher {
namespace {

using test::Answer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class ComparisonTest : public test::ComparisonSystem, public ComparisonDisplay {
 protected:
  std::vector<std::string> TakeSeen() { return std::exchange(seen_, {}); }

  // Begins, and the request is out.
  void Begin() {
    comparison_.Go();
    comparison_.DelayTick();
    EXPECT_EQ(port_.TakeWritten(), "E7");
    seen_.clear();
  }

  void Seconds(int count) {
    for (int i = 0; i < count; ++i) comparison_.SecondTick();
  }

  void ExpectTheEnd() {
    EXPECT_FALSE(comparison_.IsListening());
    ExpectTheDecoderIsBack();
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

  Comparison comparison_{ComparisonServices(), *this};

 private:
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
  ExpectTheEnd();
}

TEST_F(ComparisonTest, WhatTheSwitcherHoldsIsTold) {
  Begin();
  Deliver(0, 4);
  Deliver("F5 01 00 01 00 03 FF");
  EXPECT_THAT(held_, SizeIs(4)) << "what was refused says nothing";
  Deliver("F5 01 00 01 00 02 FF");
  const std::vector<std::uint8_t> row = test::FromHex("F5 01 00 01 00 02 FF");
  EXPECT_EQ(held_.at({Table::Inhibits, 2}), DigestOf(row));
  comparison_.Cancel();
  const auto held = held_;
  Deliver(5, 27);
  EXPECT_EQ(held_, held);
}

// Without the station labels nobody knows whose mark is in the input labels.
TEST_F(ComparisonTest, InputLabelsAloneSayNothingOfWhatIsHeld) {
  Begin();
  Deliver(1, 2);
  EXPECT_THAT(held_, IsEmpty());
}

TEST_F(ComparisonTest, InputLabelsThatCameFirstAreHeldWithTheStationLabels) {
  Begin();
  Deliver(1, 2);
  Deliver(0, 1);
  EXPECT_TRUE(held_.contains({Table::InputLabels}));
  EXPECT_TRUE(held_.contains({Table::OutputLabels}));
}

// What is reported is stored with flags for all stations, where a view stores 64 of them and an
// older database sixteen.
TEST_F(ComparisonTest, WhatDoesNotDifferIsHeldAsItIsHere) {
  model_.StationCount = 72;
  database_.Set(1, "B1 Type", 0);
  database_.Set(1, "B1 Prog", test::kNoFlags);
  database_.Set(1, "OptoStations", std::string(16, '0'));
  const std::map<TablePart, MessagePrint> here = LoadPrints(*database_.Files().Database(), model_);
  Begin();
  const std::string row = "FB 00 00 " + test::Times(11, "00 00") + "00 FF";
  Deliver(row);
  Deliver(Answer()[18]);
  comparison_.Cancel();
  EXPECT_THAT(Differences(), IsEmpty());
  ASSERT_THAT(held_, SizeIs(2));
  for (const auto& [part, digest] : held_) EXPECT_EQ(digest, here.at(part).digest);
}

// One that differs is held as it was reported, and back to what is here as it is here.
TEST_F(ComparisonTest, WhatDiffersIsHeldAsItWasReported) {
  database_.Set(2, "Inhibits", std::string(16, '0'));
  const std::map<TablePart, MessagePrint> here = LoadPrints(*database_.Files().Database(), model_);
  const TablePart row{Table::Inhibits, 2};
  Begin();
  Deliver("F5 01 00 01 00 02 FF");
  EXPECT_NE(held_.at(row), here.at(row).digest);
  Deliver("F5 01 00 00 00 01 FF");
  EXPECT_EQ(held_.at(row), here.at(row).digest);
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  ExpectTheEnd();
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
  EXPECT_THAT(TakeSeen(), ElementsAre("cancelled"));
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
