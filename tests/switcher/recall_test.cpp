// SPDX-License-Identifier: MIT
//
// A map that is brought to a preset, with a switcher that does as it is told, refuses, is slow, or
// is used by others meanwhile.

#include "switcher/presets/recall.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecallTest : public testing::Test, public RecallDisplay {
 protected:
  RecallTest() {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  static Sources Hear(std::initializer_list<int> inputs) {
    Sources sources;
    for (const int input : inputs) sources.set(static_cast<std::size_t>(input));
    return sources;
  }

  // What an output hears as the model has it, "1 2".
  std::string Heard(int output) {
    std::string text;
    for (int input = 1; input <= 8; ++input) {
      if (model_.CrosspointMap.At(output, input) == 1) {
        text += (text.empty() ? "" : " ") + std::to_string(input);
      }
    }
    return text;
  }

  void SetRow(int output, const Sources& sources, int mode = 0) {
    for (int input = 1; input <= 8; ++input) {
      model_.CrosspointMap.At(output, input) = sources.test(static_cast<std::size_t>(input));
    }
    model_.ChannelStatus[output] = static_cast<std::uint8_t>(mode);
  }

  // The switcher reports a row.
  void Report(int output, const Sources& sources, int mode = 0) {
    SetRow(output, sources, mode);
    knownMap_.CrosspointRowChanged(output, mode);
    recall_.CrosspointRowChanged(output, mode);
  }

  // A row that hears what the model says, and is to hear something else.
  RecallRow Row(int output, std::initializer_list<int> wanted) {
    return {.output = output, .listed = SourcesOf(model_, output), .wanted = Hear(wanted)};
  }

  // Turns of the event loop; the switcher carries out and reports what it was told.
  void RunWithSwitcher() {
    for (int turn = 0; turn < 1000 && recall_.IsRunning() && turnDue_; ++turn) {
      Turn();
      const std::string message = port_.TakeWritten();
      if (message.empty()) continue;
      commands_.push_back(message);
      const int input = std::stoi(message.substr(9, 2), nullptr, 16) + 1;
      const int output = std::stoi(message.substr(15, 2), nullptr, 16) + 1;
      Sources row = SourcesOf(model_, output);
      row.set(static_cast<std::size_t>(input), message.substr(3, 2) == "02");
      if (refused_.contains({output, input})) row = SourcesOf(model_, output);
      if (beforeReport_) beforeReport_(output, &row);
      Report(output, row);
    }
  }

  void Turn() {
    turnDue_ = false;
    recall_.Next();
  }

  std::vector<RecallOutcome> Outcomes() {
    std::vector<RecallOutcome> outcomes;
    for (const RecallRow& row : recall_.Rows()) outcomes.push_back(row.outcome);
    return outcomes;
  }

  // The switcher falls silent, the port stays open.
  void LoseLink() {
    model_.LinkStatus = {0, 0, 0};
    knownMap_.LinkChanged();
  }

  void ShowRow(std::size_t row) override { shown_.push_back(row); }
  void CommandSent(int output, int input, TakeAction action) override {
    logged_.push_back(std::to_string(output) + "<" + std::to_string(input) + " " +
                      std::to_string(static_cast<int>(action)));
  }
  void RequestTurn() override { turnDue_ = true; }
  void StartAnswerTimer() override { isTimed_ = true; }
  void StopAnswerTimer() override { isTimed_ = false; }
  void Ended() override { ++ends_; }

  model::SystemModel model_;
  model::Locks locks_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  LiveCommands live_{{.model = model_, .port = port_, .reporter = reporter_}, &locks_};
  std::set<std::pair<int, int>> inhibited_;
  bool isReadable_ = true;
  KnownMap knownMap_{model_};
  const Recall::Services services_{
      .model = model_,
      .locks = locks_,
      .knownMap = knownMap_,
      .commands = live_,
      .facts = {
          .outputLabel = {}, .inputLabel = {}, .isInhibited = [this](int output, int input) {
            return isReadable_ ? std::optional(inhibited_.contains({output, input})) : std::nullopt;
          }}};
  Recall recall_{services_, *this};

  std::set<std::pair<int, int>> refused_;  // crosspoints that the switcher does not touch
  std::function<void(int output, Sources* row)> beforeReport_;
  std::vector<std::string> commands_;
  std::vector<std::size_t> shown_;
  std::vector<std::string> logged_;
  bool turnDue_ = false;
  bool isTimed_ = false;
  int ends_ = 0;
};

TEST_F(RecallTest, ConnectsWhatIsWantedAndThenBreaksWhatIsNot) {
  SetRow(6, Hear({1, 2}));
  recall_.Go({Row(6, {2, 8})});
  EXPECT_EQ(port_.TakeWritten(), "") << "not in the handler of the button";
  RunWithSwitcher();
  EXPECT_THAT(commands_, ElementsAre("FD 02 00 07 00 05 00 0E FF",    // + 8
                                     "FD 00 00 00 00 05 00 05 FF"));  // - 1
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Done));
  EXPECT_EQ(Heard(6), "2 8");
  EXPECT_EQ(ends_, 1);
  EXPECT_FALSE(isTimed_);
}

TEST_F(RecallTest, GoesOutputByOutput) {
  SetRow(3, Hear({1}));
  recall_.Go({Row(2, {4}), Row(3, {}), Row(5, {1, 2})});
  RunWithSwitcher();
  EXPECT_THAT(commands_, ElementsAre("FD 02 00 03 00 01 00 06 FF", "FD 00 00 00 00 02 00 02 FF",
                                     "FD 02 00 00 00 04 00 06 FF", "FD 02 00 01 00 04 00 07 FF"));
  EXPECT_THAT(shown_, ElementsAre(0, 1, 2));
  EXPECT_THAT(Outcomes(), testing::Each(RecallOutcome::Done));
}

TEST_F(RecallTest, WithoutARowNothingIsSent) {
  recall_.Go({});
  EXPECT_EQ(ends_, 1);
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RecallTest, WaitsForTheWantedStateAndNotForAnyReport) {
  SetRow(6, Hear({1}));
  recall_.Go({Row(6, {8})});
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 07 00 05 00 0E FF");
  EXPECT_TRUE(isTimed_);
  Report(6, Hear({1}));  // an answer to what was asked before
  Report(5, Hear({8}));  // another row
  EXPECT_FALSE(turnDue_);
  EXPECT_TRUE(isTimed_);
  Report(6, Hear({1, 8}));
  EXPECT_TRUE(turnDue_);
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "FD 00 00 00 00 05 00 05 FF");
}

TEST_F(RecallTest, ASwitcherThatRefusesEndsIt) {
  refused_ = {{3, 4}};
  recall_.Go({Row(2, {4}), Row(3, {4}), Row(4, {4})});
  RunWithSwitcher();
  EXPECT_TRUE(recall_.IsRunning());
  EXPECT_TRUE(isTimed_);
  recall_.AnswerOverdue();
  EXPECT_FALSE(recall_.IsRunning());
  EXPECT_EQ(ends_, 1);
  EXPECT_THAT(Outcomes(),
              ElementsAre(RecallOutcome::Done, RecallOutcome::NoAnswer, RecallOutcome::NotBegun));
  Report(3, Hear({4}));  // too late
  EXPECT_FALSE(turnDue_);
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RecallTest, ARowThatWasChangedSinceItWasListedIsSkipped) {
  std::vector<RecallRow> rows{Row(2, {4}), Row(3, {4})};
  SetRow(2, Hear({7}));
  recall_.Go(rows);
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Changed, RecallOutcome::Done));
  EXPECT_EQ(Heard(2), "7");
  EXPECT_FALSE(recall_.Rows()[0].isPartial);
}

TEST_F(RecallTest, ARowThatSomebodyChangesMeanwhileIsLeftToHim) {
  beforeReport_ = [](int output, Sources* row) {
    if (output == 2) row->set(7);
  };
  recall_.Go({Row(2, {4, 5}), Row(3, {4})});
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Changed, RecallOutcome::Done));
  EXPECT_EQ(Heard(2), "4 7") << "5 is not made any more";
  EXPECT_TRUE(recall_.Rows()[0].isPartial);
  EXPECT_FALSE(recall_.Rows()[1].isPartial);
}

TEST_F(RecallTest, EachCommandIsTold) {
  SetRow(6, Hear({1}));
  recall_.Go({Row(6, {8})});
  RunWithSwitcher();
  EXPECT_THAT(logged_, ElementsAre("6<8 2", "6<1 0"));
}

TEST_F(RecallTest, ALinkThatIsLostInTheMiddleEndsIt) {
  recall_.Go({Row(2, {4, 5}), Row(3, {4})});
  Turn();
  port_.TakeWritten();
  Report(2, Hear({4}));
  LoseLink();
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(ends_, 1);
  EXPECT_EQ(recall_.Obstacle(), RecallObstacle::NotConnected);
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::NotNow, RecallOutcome::NotBegun));
  EXPECT_TRUE(recall_.Rows()[0].isPartial);
}

TEST_F(RecallTest, ALinkThatWasLostAndIsBackEndsItToo) {
  recall_.Go({Row(2, {4, 5})});
  Turn();
  port_.TakeWritten();
  LoseLink();
  model_.LinkStatus = {1, 1, 0};
  Report(2, Hear({4}));
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(recall_.Obstacle(), RecallObstacle::MapNotKnown);
}

TEST_F(RecallTest, WhatCannotBeReadIsNotTakenForAllowed) {
  SetRow(3, Hear({1}));
  isReadable_ = false;
  recall_.Go({Row(2, {4}), Row(3, {})});
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::NotKnown, RecallOutcome::Done));
  EXPECT_EQ(Heard(2), "");
}

TEST_F(RecallTest, ARowThatChangesAfterItWasDoneIsNamedAtTheEnd) {
  beforeReport_ = [this](int output, Sources* /*row*/) {
    if (output == 3) SetRow(2, Hear({}));
  };
  recall_.Go({Row(2, {4}), Row(3, {4})});
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Undone, RecallOutcome::Done));
  EXPECT_FALSE(recall_.Rows()[0].isPartial);
}

TEST_F(RecallTest, ACallIsNotDisturbed) {
  recall_.Go({Row(2, {4}), Row(3, {4})});
  SetRow(2, Hear({1}), 1);
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "");
  Turn();
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00 03 00 02 00 07 FF");
  Report(3, Hear({1, 4}), 1);  // one comes while the command is on its way
  EXPECT_FALSE(recall_.IsRunning());
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Priority, RecallOutcome::Priority));
}

TEST_F(RecallTest, WhatIsLockedOrInhibitedMeanwhileIsSkipped) {
  recall_.Go({Row(2, {4}), Row(3, {4}), Row(4, {4})});
  locks_.LockOutput(2, model::Locks::Against::Console);
  inhibited_ = {{3, 4}};
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(),
              ElementsAre(RecallOutcome::Locked, RecallOutcome::Inhibited, RecallOutcome::Done));
  EXPECT_THAT(commands_, ElementsAre("FD 02 00 03 00 03 00 08 FF"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RecallTest, AnInhibitedCrosspointThatStandsIsBroken) {
  SetRow(2, Hear({4}));
  inhibited_ = {{2, 4}};
  recall_.Go({Row(2, {})});
  RunWithSwitcher();
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Done));
}

TEST_F(RecallTest, CancelEndsItBehindTheOutput) {
  recall_.Go({Row(2, {4, 5}), Row(3, {4})});
  Turn();
  recall_.Cancel();
  EXPECT_TRUE(recall_.IsRunning());
  port_.TakeWritten();
  Report(2, Hear({4}));
  RunWithSwitcher();
  EXPECT_EQ(ends_, 1);
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Done, RecallOutcome::NotBegun));
  EXPECT_EQ(Heard(2), "4 5");
}

TEST_F(RecallTest, TheEndOfTheProgramEndsItAtOnce) {
  recall_.Go({Row(2, {4, 5})});
  Turn();
  port_.TakeWritten();
  recall_.CancelNow();
  Report(2, Hear({4}));
  recall_.Next();
  recall_.AnswerOverdue();
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_EQ(ends_, 0);
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::Cancelled));
}

TEST_F(RecallTest, ACommandThatCannotBeSentEndsIt) {
  port_.writesUntilFailure = 3;
  recall_.Go({Row(2, {4}), Row(3, {4})});
  Turn();
  EXPECT_EQ(ends_, 1);
  EXPECT_THAT(Outcomes(), ElementsAre(RecallOutcome::NotSent, RecallOutcome::NotBegun));
  EXPECT_EQ(reporter_.reports.size(), 1U);
  EXPECT_FALSE(isTimed_);
}

TEST_F(RecallTest, IsRefusedWhereItWouldBeBlind) {
  EXPECT_EQ(Recall::WhyNot(services_), std::nullopt);
  LoseLink();
  model_.LinkStatus = {1, 1, 0};
  Report(8, {});
  EXPECT_EQ(Recall::WhyNot(services_), RecallObstacle::MapNotKnown) << "one row is no map";
  model_.XmapComplete = false;
  EXPECT_EQ(Recall::WhyNot(services_), RecallObstacle::MapIncomplete);
  model_.LinkStatus[0] = 0;
  EXPECT_EQ(Recall::WhyNot(services_), RecallObstacle::NotConnected);
  model_.DemoMode = 1;
  EXPECT_EQ(Recall::WhyNot(services_), RecallObstacle::DemoMode);
  locks_.LockConsole(true);
  EXPECT_EQ(Recall::WhyNot(services_), RecallObstacle::ConsoleLocked);
}

}  // namespace
}  // namespace switcher
