// SPDX-License-Identifier: MIT

#include "views/presets/recall_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/views/gui_support.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecallWindowTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(port_.Open(1).ok());
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    SetSize(8);
  }

  void SetSize(int channels) {
    model_.ChannelCount = channels;
    model_.AllocateMap();
    for (int output = 1; output <= channels; ++output) knownMap_.CrosspointRowChanged(output, 0);
  }

  void Make(int output, int input, int made = 1) {
    model_.CrosspointMap.At(output, input) = static_cast<std::uint8_t>(made);
  }
  switcher::Preset Store(const std::vector<int>& outputs) {
    return switcher::PresetOf(model_, facts_, outputs, "2026-04-17 12:03:44");
  }

  void Show(const switcher::Preset& preset) {
    window_ = std::make_unique<RecallWindow>(RecallWindow::Services{.model = model_,
                                                                    .locks = locks_,
                                                                    .knownMap = knownMap_,
                                                                    .commands = live_,
                                                                    .facts = facts_},
                                             QStringLiteral("Morning"), preset);
    QObject::connect(window_.get(), &RecallWindow::RecallEnded,
                     [this](const QString& summary, const QStringList& left) {
                       ended_.push_back(summary.toStdString());
                       for (const QString& line : left) ended_.push_back(line.toStdString());
                     });
    window_->open();
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }
  std::vector<std::string> Rows() {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *Find<QAbstractItemView>("lstRecall").model();
    for (int row = 0; row < model.rowCount(); ++row) {
      const QVariant tick = model.index(row, 0).data(Qt::CheckStateRole);
      QStringList cells(!tick.isValid()               ? QStringLiteral("-")
                        : tick.toInt() == Qt::Checked ? QStringLiteral("x")
                                                      : QStringLiteral("o"));
      for (int column = 1; column < model.columnCount(); ++column) {
        cells.append(model.index(row, column).data().toString());
      }
      rows.push_back(cells.join(u'|').toStdString());
    }
    return rows;
  }
  // What the column What says when it is pointed at.
  std::vector<std::string> Tips() {
    std::vector<std::string> tips;
    const QAbstractItemModel& model = *Find<QAbstractItemView>("lstRecall").model();
    for (int row = 0; row < model.rowCount(); ++row) {
      tips.push_back(model.index(row, 2).data(Qt::ToolTipRole).toString().toStdString());
    }
    return tips;
  }
  bool MayRecall() { return Find<QPushButton>("cmdOkRecall").isEnabled(); }
  std::string Note() { return Find<QLabel>("aidRecallNote").text().toStdString(); }

  // The switcher carries out what was sent by now and reports the row.
  bool Answer() {
    const std::string message = port_.TakeWritten();
    if (message.empty()) return false;
    const auto byte = [&](std::size_t at) {
      return std::stoi(message.substr(3 * at), nullptr, 16);
    };
    const int input = byte(3) + 128 * byte(4) + 1;
    const int output = byte(5) + 128 * byte(6) + 1;
    if (!deaf_) Make(output, input, message.substr(3, 2) == "02" ? 1 : 0);
    window_->CrosspointRowChanged(output, 0);
    return true;
  }

  model::SystemModel model_;
  model::Locks locks_;
  switcher::KnownMap knownMap_{model_};
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  switcher::LiveCommands live_{{.model = model_, .port = port_, .reporter = reporter_}, &locks_};
  std::string moved_;
  std::set<std::pair<int, int>> inhibited_;
  switcher::ChannelFacts facts_{
      .outputLabel = [this](int output) { return moved_ + "OUT " + std::to_string(output); },
      .inputLabel = [](int input) { return "IN " + std::to_string(input); },
      .isInhibited =
          [this](int output, int input) {
            return inhibited_.contains({output, input});
          }};
  bool deaf_ = false;
  std::vector<std::string> ended_;
  std::unique_ptr<RecallWindow> window_;
};

TEST_F(RecallWindowTest, ListsWhatDiffersTickedAndWhyTheRestCannotBe) {
  Make(2, 1);
  Make(3, 1);
  Make(4, 1);
  Make(6, 1);
  const switcher::Preset preset = Store({1, 2, 3, 4, 5, 6});
  for (const int output : {2, 3, 4}) Make(output, 1, 0);
  Make(6, 8);
  locks_.LockOutput(3, model::Locks::Against::Console);
  inhibited_ = {{4, 1}};
  model_.ChannelStatus[6] = 1;
  Show(preset);
  EXPECT_THAT(Rows(), ElementsAre("x|Out 02  OUT 2|Sources|nothing|IN 1",
                                  "-|Out 03  OUT 3|Locked|nothing|IN 1",
                                  "-|Out 04  OUT 4|Inhibited|nothing|IN 1",
                                  "-|Out 06  OUT 6|Priority|IN 1, IN 8|IN 1"));
  EXPECT_EQ(Tips(), (std::vector<std::string>{"Sources", "Output locked", "IN 1 is inhibited",
                                              "Call or priority listen"}));
  EXPECT_TRUE(MayRecall());
  EXPECT_FALSE(Find<QCheckBox>("aidRecallRest").isVisible());
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RecallWindowTest, WithoutADifferenceNothingCanBeSent) {
  Show(Store({1, 2}));
  EXPECT_FALSE(MayRecall());
  EXPECT_EQ(Find<QLabel>("aidRecallText").text(),
            QStringLiteral("The map is as it is in the preset. There is nothing to send."));
  window_->Go();
  EXPECT_EQ(port_.TakeWritten(), "");
}

TEST_F(RecallWindowTest, RecallsWhatIsTickedAndCloses) {
  Make(2, 1);
  Make(3, 1);
  const switcher::Preset preset = Store({2, 3});
  Make(2, 1, 0);
  Make(3, 1, 0);
  Show(preset);
  QSignalSpy asked(window_.get(), &RecallWindow::RecallRequested);
  auto& list = Find<QAbstractItemView>("lstRecall");
  list.setCurrentIndex(list.model()->index(0, 1));
  QTest::keyClick(&list, Qt::Key_Space);
  Find<QPushButton>("cmdOkRecall").click();
  ASSERT_EQ(asked.size(), 1);
  EXPECT_FALSE(MayRecall()) << "what is there is being kept";
  EXPECT_EQ(port_.TakeWritten(), "");
  window_->Go();
  EXPECT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !ended_.empty();
  }));
  EXPECT_THAT(ended_, ElementsAre("1 of 1 outputs recalled"));
  EXPECT_FALSE(window_->isVisible());
  EXPECT_EQ(model_.CrosspointMap.At(2, 1), 0);
  EXPECT_EQ(model_.CrosspointMap.At(3, 1), 1);
}

class RecallWindowOfSizeTest : public RecallWindowTest, public testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Sizes, RecallWindowOfSizeTest, testing::Values(64, 256));

TEST_P(RecallWindowOfSizeTest, BringsTheWholeMapBack) {
  const int channels = GetParam();
  const auto wanted = [channels](int output) { return channels + 1 - output; };
  const auto standing = [&](int output) { return wanted(output) % channels + 1; };
  SetSize(channels);
  std::vector<int> outputs;
  for (int output = 1; output <= channels; ++output) {
    outputs.push_back(output);
    Make(output, wanted(output));
  }
  const switcher::Preset preset = Store(outputs);
  for (const int output : outputs) {
    Make(output, wanted(output), 0);
    Make(output, standing(output));
  }
  Show(preset);
  ASSERT_EQ(Rows().size(), outputs.size());
  const std::string last = std::to_string(channels);
  EXPECT_EQ(Rows().back(), "x|Out " + last + "  OUT " + last + "|Sources|IN 2|IN 1");
  EXPECT_LE(window_->width(), window_->screen()->availableSize().width());
  EXPECT_LE(window_->height(), window_->screen()->availableSize().height());
  EXPECT_TRUE(MayRecall());
  window_->Go();
  ASSERT_TRUE(QTest::qWaitFor(
      [this] {
        while (Answer()) {
        }
        return !ended_.empty();
      },
      60000));
  EXPECT_THAT(ended_, ElementsAre(last + " of " + last + " outputs recalled"));
  for (const int output : outputs) {
    EXPECT_EQ(model_.CrosspointMap.At(output, wanted(output)), 1) << output;
    EXPECT_EQ(model_.CrosspointMap.At(output, standing(output)), 0) << output;
  }
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(RecallWindowTest, StaysAndNamesWhatTheSwitcherDidNotDo) {
  Make(2, 1);
  Make(3, 1);
  const switcher::Preset preset = Store({2, 3});
  Make(2, 1, 0);
  Make(3, 1, 0);
  Show(preset);
  deaf_ = true;
  window_->Go();
  ASSERT_TRUE(QTest::qWaitFor(
      [this] {
        Answer();
        return !ended_.empty();
      },
      30000));
  EXPECT_THAT(ended_,
              ElementsAre("0 of 2 outputs recalled", "Out 02  OUT 2: The switcher did not do it",
                          "Out 03  OUT 3: Not begun"));
  EXPECT_TRUE(window_->isVisible());
  EXPECT_THAT(Rows(), ElementsAre("-|Out 02  OUT 2|Not done|nothing|IN 1",
                                  "-|Out 03  OUT 3|Not begun|nothing|IN 1"));
  EXPECT_EQ(Find<QLabel>("aidRecallText").text(),
            QStringLiteral("0 of 2 outputs recalled. These are not as they are in the preset:"));
  EXPECT_EQ(Find<QPushButton>("cmdCancelRecall").text(), QStringLiteral("Close"));
  Find<QPushButton>("cmdCancelRecall").click();
  EXPECT_FALSE(window_->isVisible());
}

TEST_F(RecallWindowTest, CancelFinishesTheOutput) {
  Make(2, 1);
  Make(2, 2);
  Make(3, 1);
  const switcher::Preset preset = Store({2, 3});
  Make(2, 1, 0);
  Make(2, 2, 0);
  Make(3, 1, 0);
  Show(preset);
  window_->Go();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Answer(); }));
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  EXPECT_TRUE(window_->isVisible());
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !ended_.empty();
  }));
  EXPECT_THAT(ended_,
              ElementsAre("1 of 2 outputs recalled, then cancelled", "Out 03  OUT 3: Not begun"));
  EXPECT_TRUE(Find<QPushButton>("cmdCancelRecall").hasFocus());
}

TEST_F(RecallWindowTest, ACancelThatKeepsNothingFromItIsNotNamed) {
  Make(2, 1);
  const switcher::Preset preset = Store({2});
  Make(2, 1, 0);
  Show(preset);
  window_->Go();
  QTest::keyClick(window_.get(), Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !ended_.empty();
  }));
  EXPECT_THAT(ended_, ElementsAre("1 of 1 outputs recalled"));
}

TEST_F(RecallWindowTest, WhatIsHalfRecalledIsNamedSo) {
  Make(2, 1);
  Make(2, 2);
  const switcher::Preset preset = Store({2});
  Make(2, 1, 0);
  Make(2, 2, 0);
  Show(preset);
  window_->Go();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Answer(); }));
  locks_.LockOutput(2, model::Locks::Against::Console);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !ended_.empty(); }));
  EXPECT_THAT(ended_, ElementsAre("0 of 1 outputs recalled",
                                  "Out 02  OUT 2: Output locked: half recalled"));
  EXPECT_EQ(Tips()[0], "Output locked: half recalled");
}

TEST_F(RecallWindowTest, TheEndOfTheProgramSaysWhatWasDone) {
  Make(2, 1);
  Make(2, 2);
  Make(3, 1);
  const switcher::Preset preset = Store({2, 3});
  Make(2, 1, 0);
  Make(2, 2, 0);
  Make(3, 1, 0);
  Show(preset);
  window_->Go();
  ASSERT_TRUE(QTest::qWaitFor([this] { return Answer(); }));
  window_->CancelNow();
  EXPECT_THAT(ended_,
              ElementsAre("0 of 2 outputs recalled, then cancelled",
                          "Out 02  OUT 2: Cancelled: half recalled", "Out 03  OUT 3: Not begun"));
}

TEST_F(RecallWindowTest, WhatIsAskedForIsFrozenUntilItIsBegun) {
  Make(2, 1);
  const switcher::Preset preset = Store({2});
  Make(2, 1, 0);
  Show(preset);
  Find<QPushButton>("cmdOkRecall").click();
  EXPECT_TRUE(window_->IsKeeping());
  EXPECT_FALSE(Find("lstRecall").isEnabled());
  EXPECT_EQ(Note(), "Keeping what the map is now…");
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsKeeping(); }, 60000));
  EXPECT_EQ(Note(), "Nothing was sent: what the map is now could not be kept in time.");
  EXPECT_TRUE(Find("lstRecall").isEnabled());
  EXPECT_TRUE(MayRecall());
}

TEST_F(RecallWindowTest, OfAnotherMapDoesTheRestOnlyWhenToldTo) {
  Make(2, 1);
  Make(8, 1);
  switcher::Preset preset = Store({2, 8});
  preset.channels = 16;
  preset.rows[1].output.label = "VTR 1";
  Make(2, 1, 0);
  Show(preset);
  EXPECT_THAT(Rows(), ElementsAre("x|Out 02  OUT 2|Sources|nothing|IN 1",
                                  "-|Out 08  VTR 1|Other label|IN 1|IN 1"))
      << "as the preset calls it";
  EXPECT_EQ(Tips()[1], "Out 08 was VTR 1");
  preset.rows[1].output.label = "OUT 8";
  preset.rows[1].hears[0].label = "CAM 4";
  Show(preset);
  EXPECT_EQ(Rows()[1], "-|Out 08  OUT 8|Other label|IN 1|CAM 4");
  EXPECT_EQ(Tips()[1], "In 01 was CAM 4");
  EXPECT_FALSE(MayRecall());
  EXPECT_TRUE(Find<QLabel>("aidRecallText")
                  .text()
                  .startsWith(QStringLiteral("This preset was stored of another map: what does "
                                             "not fit cannot be ticked.")));
  ASSERT_TRUE(Find<QCheckBox>("aidRecallRest").isVisible());
  Find<QCheckBox>("aidRecallRest").click();
  EXPECT_TRUE(MayRecall());
}

TEST_F(RecallWindowTest, SaysWhyItCannotBeDoneNow) {
  Make(2, 1);
  const switcher::Preset preset = Store({2});
  Make(2, 1, 0);
  model_.XmapComplete = false;
  Show(preset);
  EXPECT_FALSE(MayRecall());
  EXPECT_EQ(Note(), "Not before the switcher has reported the whole map.");
  window_->Go();
  EXPECT_EQ(port_.TakeWritten(), "");
  model_.XmapComplete = true;
  EXPECT_TRUE(QTest::qWaitFor([this] { return MayRecall(); })) << "it looks again";
  EXPECT_EQ(Note(), "");
  knownMap_.CrosspointRowSpoiled(3);
  Show(preset);
  EXPECT_EQ(Note(), "Not with a map from before the link was lost: Refresh Map asks for it.");
  model_.DemoMode = 1;
  Show(preset);
  EXPECT_EQ(Note(), "Not in demo mode: the map may show what no switcher does.");
  model_.DemoMode = 0;
  model_.LinkStatus[0] = 0;
  Show(preset);
  EXPECT_EQ(Note(), "Not while the switcher does not answer.");
}

}  // namespace
}  // namespace views
