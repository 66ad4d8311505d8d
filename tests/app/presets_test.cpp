// SPDX-License-Identifier: MIT

#include "app/presets/presets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "files/whole_file.h"
#include "switcher/presets/preset_text.h"
#include "tests/app/slow_disk.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PresetsTest : public testing::Test {
 protected:
  void SetUp() override {
    model_.ChannelCount = 8;
    model_.AllocateMap();
    model_.LinkStatus = {1, 1, 0};
    model_.XmapComplete = true;
    for (int output = 1; output <= 8; ++output) knownMap_.CrosspointRowChanged(output, 0);
    ASSERT_TRUE(port_.Open(1).ok());
    QObject::connect(&presets_, &Presets::NoteRequested,
                     [this](const QString& note) { notes_.push_back(note.toStdString()); });
    QObject::connect(&presets_, &Presets::LineRequested,
                     [this](const QString& line) { lines_.push_back(line.toStdString()); });
    QObject::connect(&presets_, &Presets::TakeSent, [this](int output, int input, int action) {
      lines_.push_back(std::to_string(output) + "<" + std::to_string(input) + " " +
                       std::to_string(action));
    });
    window_.show();
    presets_.Show();
  }

  QDialog& Dialog(const char* name) { return *test::ShownDialogs(window_, name).front(); }
  bool IsOpen(const char* name) { return !test::ShownDialogs(window_, name).isEmpty(); }
  void Click(const char* dialog, const char* button) {
    test::Find<QPushButton>(Dialog(dialog), button).click();
    QCoreApplication::processEvents();
  }
  void Finish() { writer_.Finish(); }
  // Shows the presets anew.
  void ShowAgain() {
    presets_.CancelNow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    presets_.Show();
  }
  // Recalls what is chosen.
  void Recall() {
    Click("frmPresets", "cmdRecallPreset");
    Click("frmRecall", "cmdOkRecall");
    Finish();
    ASSERT_TRUE(QTest::qWaitFor([this] {
      Answer();
      return !IsOpen("frmRecall");
    }));
  }
  // The names under which states before a recall are kept.
  std::vector<std::string> Kept() {
    std::vector<std::string> names = Listed();
    std::erase_if(names, [](const std::string& name) { return !name.starts_with("Before"); });
    return names;
  }
  std::string Note() {
    return test::Find<QLabel>(Dialog("frmPresets"), "aidPresetNote").text().toStdString();
  }
  void Store(const char* name) {
    test::Find<QLineEdit>(Dialog("frmPresets"), "txtPresetName").setText(QLatin1String(name));
    Click("frmPresets", "cmdStorePreset");
    Finish();
  }
  std::vector<std::string> Listed() {
    std::vector<std::string> names;
    const auto& list = test::Find<QTreeWidget>(Dialog("frmPresets"), "lstPresets");
    for (int i = 0; i < list.topLevelItemCount(); ++i) {
      names.push_back(list.topLevelItem(i)->text(0).toStdString());
    }
    return names;
  }
  void Choose(const char* name) {
    auto& list = test::Find<QTreeWidget>(Dialog("frmPresets"), "lstPresets");
    list.setCurrentItem(list.findItems(QLatin1String(name), Qt::MatchExactly).front());
  }
  std::string Content(const std::string& name) {
    std::string text;
    (void)files::ReadWhole(folder_ / ("Presets/" + name + ".json"), 100000, &text);
    return text;
  }
  void Make(int output, int input, int made = 1) {
    model_.CrosspointMap.At(output, input) = static_cast<std::uint8_t>(made);
  }
  // The switcher carries out what was sent by now and reports the row.
  void Answer() {
    const std::string message = port_.TakeWritten();
    if (message.empty()) return;
    const int input = std::stoi(message.substr(9, 2), nullptr, 16) + 1;
    const int output = std::stoi(message.substr(15, 2), nullptr, 16) + 1;
    Make(output, input, message.substr(3, 2) == "02" ? 1 : 0);
    presets_.CrosspointRowChanged(output, 0);
  }

  test::TemporaryFolder folder_;
  model::SystemModel model_;
  model::Locks locks_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  switcher::LiveCommands live_{{.model = model_, .port = port_, .reporter = reporter_}, &locks_};
  switcher::KnownMap knownMap_{model_};
  QWidget window_;
  BackgroundWriter writer_;
  Presets presets_{
      {.window = window_,
       .folder = folder_ / "Presets",
       .recall = {.model = model_,
                  .locks = locks_,
                  .knownMap = knownMap_,
                  .commands = live_,
                  .facts = {
                      .outputLabel = [](int output) { return "OUT " + std::to_string(output); },
                      .inputLabel = [](int input) { return "IN " + std::to_string(input); },
                      .isInhibited = [](int /*output*/, int /*input*/) { return false; }}},
       .writer = writer_,
       .reporter = reporter_}};
  std::vector<std::string> notes_;
  std::vector<std::string> lines_;
};

TEST_F(PresetsTest, LookingMakesNothing) {
  EXPECT_THAT(Listed(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "Presets"));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(PresetsTest, StoresTheMapAndAsksBeforeItReplacesOne) {
  Make(6, 8);
  Store("Morning");
  EXPECT_THAT(Listed(), ElementsAre("Morning"));
  EXPECT_THAT(notes_, ElementsAre("Preset stored: Morning"));
  const std::string first = Content("Morning");
  EXPECT_THAT(first,
              testing::HasSubstr("{\"output\": 6, \"label\": \"OUT 6\", \"priority\": false, "
                                 "\"hears\": [\n      {\"input\": 8, \"label\": \"IN 8\"}"));
  Make(6, 8, 0);
  Store("Morning");
  ASSERT_TRUE(IsOpen("aidAskReplacePreset"));
  EXPECT_EQ(Content("Morning"), first);
  Click("aidAskReplacePreset", "aidReplacePreset");
  Finish();
  EXPECT_NE(Content("Morning"), first);
}

TEST_F(PresetsTest, AMapThatIsNotCompleteIsNotStored) {
  model_.XmapComplete = false;
  Store("Morning");
  EXPECT_THAT(Listed(), IsEmpty());
  EXPECT_EQ(test::Find<QLabel>(Dialog("frmPresets"), "aidPresetNote").text(),
            QStringLiteral("Not stored. Not before the switcher has reported the whole map."));
}

TEST_F(PresetsTest, AMapThatMayBeStaleOrDrawnIsNotStored) {
  model_.DemoMode = 1;
  Store("Morning");
  EXPECT_EQ(Note(), "Not stored. Not in demo mode: the map may show what no switcher does.");
  model_.DemoMode = 0;
  model_.LinkStatus = {0, 0, 0};
  knownMap_.LinkChanged();
  Store("Morning");
  EXPECT_EQ(Note(), "Not stored. Not while the switcher does not answer.");
  model_.LinkStatus = {1, 1, 0};
  knownMap_.CrosspointRowChanged(8, 0);
  Store("Morning");
  EXPECT_EQ(Note(),
            "Not stored. Not with a map from before the link was lost: Refresh Map asks for it.");
  EXPECT_THAT(Listed(), IsEmpty());
}

TEST_F(PresetsTest, WhatComesUpWhileItAsksIsLookedAtAgain) {
  Store("Morning");
  const std::string first = Content("Morning");
  Make(6, 8);
  Store("Morning");
  ASSERT_TRUE(IsOpen("aidAskReplacePreset"));
  model_.LinkStatus = {0, 0, 0};
  Click("aidAskReplacePreset", "aidReplacePreset");
  Finish();
  EXPECT_EQ(Content("Morning"), first);
}

TEST_F(PresetsTest, ASecondRecallKeepsTheFirstState) {
  Make(6, 8);
  Store("Morning");
  std::filesystem::copy_file(folder_ / "Presets/Morning.json",
                             folder_ / "Presets/Before recall of Morning.json");
  const std::string own = Content("Before recall of Morning");
  Make(6, 8, 0);
  Make(6, 1);
  ShowAgain();
  Choose("Morning");
  Recall();
  Make(6, 2);
  Choose("Morning");
  Recall();
  const std::vector<std::string> kept = Kept();
  ASSERT_THAT(kept, SizeIs(3));
  EXPECT_EQ(Content(kept[0]), own) << "an operator's own";
  EXPECT_THAT(Content(kept[1]), testing::HasSubstr("{\"input\": 1, \"label\": \"IN 1\"}"));
  EXPECT_THAT(Content(kept[2]), testing::HasSubstr("{\"input\": 2, \"label\": \"IN 2\"}"));
}

TEST_F(PresetsTest, OnlyTheLastStatesAreKept) {
  Make(6, 8);
  Store("Morning");
  for (int day = 1; day <= 25; ++day) {
    std::filesystem::copy_file(
        folder_ / "Presets/Morning.json",
        folder_ / ("Presets/Before recall of X, 2026-01-" + std::string(day < 10 ? "0" : "") +
                   std::to_string(day) + " 10.00.00.json"));
  }
  Make(6, 8, 0);
  Choose("Morning");
  Recall();
  const std::vector<std::string> kept = Kept();
  EXPECT_THAT(kept, SizeIs(20));
  EXPECT_THAT(kept, testing::Contains("Before recall of X, 2026-01-25 10.00.00"));
  EXPECT_THAT(kept, testing::Not(testing::Contains("Before recall of X, 2026-01-06 10.00.00")));
  EXPECT_THAT(Listed(), testing::Contains("Morning"));
}

TEST_F(PresetsTest, StatesOfALaterDayGoFirst) {
  Make(6, 8);
  Store("Morning");
  for (int day = 10; day <= 29; ++day) {
    std::filesystem::copy_file(folder_ / "Presets/Morning.json",
                               folder_ / ("Presets/Before recall of X, 2099-01-" +
                                          std::to_string(day) + " 10.00.00.json"));
  }
  Make(6, 8, 0);
  Choose("Morning");
  Recall();
  const std::vector<std::string> kept = Kept();
  EXPECT_THAT(kept, SizeIs(20));
  EXPECT_THAT(kept, testing::Contains(testing::StartsWith("Before recall of Morning, ")));
  EXPECT_THAT(kept, testing::Not(testing::Contains("Before recall of X, 2099-01-10 10.00.00")));
}

TEST_F(PresetsTest, ADiskThatTakesItsTimeStartsNoTakesLater) {
  Make(6, 8);
  Store("Morning");
  Make(6, 8, 0);
  SlowDisk disk(writer_);
  Click("frmPresets", "cmdRecallPreset");
  Click("frmRecall", "cmdOkRecall");
  auto& ok = test::Find<QPushButton>(Dialog("frmRecall"), "cmdOkRecall");
  ASSERT_TRUE(QTest::qWaitFor([&] { return ok.isEnabled(); }, 60000));
  disk.Answer();
  Finish();
  QTest::qWait(1);
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_TRUE(IsOpen("frmRecall"));
  Click("frmRecall", "cmdOkRecall");
  Finish();
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !IsOpen("frmRecall");
  }));
  EXPECT_EQ(model_.CrosspointMap.At(6, 8), 1);
}

TEST_F(PresetsTest, MoreThanCanBeListedIsSaid) {
  std::filesystem::create_directory(folder_ / "Presets");
  for (int each = 1999; each >= 1000; --each) {
    std::ofstream(folder_ / ("Presets/" + std::to_string(each) + ".json")) << "{}";
  }
  std::ofstream(folder_ / "Presets/0.json") << "{}";
  ShowAgain();
  EXPECT_THAT(Listed(), SizeIs(1000));
  EXPECT_EQ(Listed().front(), "0");
  EXPECT_EQ(Listed().back(), "1998");
  EXPECT_EQ(Note(), "Only the first 1000 presets are listed.");
}

TEST_F(PresetsTest, WhatCouldNotBeReadBackIsNotStored) {
  const PresetFolder folder(folder_ / "Presets");
  EXPECT_FALSE(folder
                   .Store("Morning", switcher::WritePreset({
                                         .channels = 8,
                                         .made = "now",
                                         .rows = {{{1, std::string(1025, 'x')}, false, {}}},
                                     }))
                   .ok());
  EXPECT_FALSE(std::filesystem::exists(folder_ / "Presets/Morning.json"));
}

TEST_F(PresetsTest, RecallsWhenWhatIsThereIsKept) {
  Make(6, 8);
  Store("Morning");
  Make(6, 8, 0);
  Make(6, 1);
  Click("frmPresets", "cmdRecallPreset");
  ASSERT_TRUE(IsOpen("frmRecall"));
  Click("frmRecall", "cmdOkRecall");
  Finish();
  ASSERT_THAT(Kept(), SizeIs(1));
  EXPECT_THAT(Kept().front(),
              testing::ContainsRegex("^Before recall of Morning, [0-9]+-[0-9]+-[0-9]+ "
                                     "[0-9][0-9][.][0-9][0-9][.][0-9][0-9]$"));
  EXPECT_THAT(Content(Kept().front()), testing::HasSubstr("{\"input\": 1, \"label\": \"IN 1\"}"));
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !IsOpen("frmRecall");
  }));
  EXPECT_EQ(model_.CrosspointMap.At(6, 8), 1);
  EXPECT_EQ(model_.CrosspointMap.At(6, 1), 0);
  EXPECT_THAT(notes_, ElementsAre("Preset stored: Morning", "Morning: 1 of 1 outputs recalled"));
  EXPECT_THAT(lines_, ElementsAre("Preset stored: " + Kept().front(),
                                  "Recall of Morning begun: 1 outputs", "6<8 2", "6<1 0"));
  EXPECT_THAT(Listed(), ElementsAre(Kept().front(), "Morning"));
}

TEST_F(PresetsTest, AsksWhenWhatIsThereCannotBeKept) {
  Make(6, 8);
  Store("Morning");
  Make(6, 8, 0);
  Click("frmPresets", "cmdRecallPreset");
  std::filesystem::remove_all(folder_ / "Presets");
  std::ofstream(folder_ / "Presets") << "in the way";
  Click("frmRecall", "cmdOkRecall");
  Finish();
  ASSERT_TRUE(IsOpen("aidAskRecallUnkept"));
  EXPECT_EQ(port_.TakeWritten(), "");
  Click("aidAskRecallUnkept", "aidRecallUnkept");
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !IsOpen("frmRecall");
  }));
  EXPECT_EQ(model_.CrosspointMap.At(6, 8), 1);
}

TEST_F(PresetsTest, AFileThatIsNoPresetIsRefused) {
  std::filesystem::create_directory(folder_ / "Presets");
  ASSERT_TRUE(files::Replace(folder_ / "Presets/Bad.json", "{}").ok());
  ASSERT_TRUE(files::Replace(folder_ / "Presets/other.txt", "{}").ok());
  ShowAgain();
  EXPECT_THAT(Listed(), ElementsAre("Bad"));
  Click("frmPresets", "cmdRecallPreset");
  EXPECT_FALSE(IsOpen("frmRecall"));
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Control Error|Error Reading A Preset\r\rError # 75 - Bad.json "
                          "is no preset"));
}

TEST_F(PresetsTest, DeletesWhenAskedTwice) {
  Store("Morning");
  Click("frmPresets", "cmdDeletePreset");
  ASSERT_TRUE(IsOpen("aidAskDeletePreset"));
  EXPECT_THAT(Listed(), SizeIs(1));
  Click("aidAskDeletePreset", "aidDeletePreset");
  EXPECT_THAT(Listed(), IsEmpty());
  EXPECT_EQ(notes_.back(), "Preset deleted: Morning");
}

TEST_F(PresetsTest, NothingIsStoredOrRecalledWhileTheConsoleIsLocked) {
  Store("Morning");
  locks_.LockConsole(true);
  Store("Evening");
  Click("frmPresets", "cmdRecallPreset");
  Click("frmPresets", "cmdDeletePreset");
  EXPECT_THAT(Listed(), ElementsAre("Morning"));
  EXPECT_FALSE(IsOpen("frmRecall"));
  EXPECT_FALSE(IsOpen("aidAskDeletePreset"));
  EXPECT_THAT(reporter_.reports, SizeIs(3));
}

TEST_F(PresetsTest, TheEndOfTheProgramClosesAll) {
  Make(6, 8);
  Store("Morning");
  Make(6, 8, 0);
  Click("frmPresets", "cmdRecallPreset");
  Click("frmRecall", "cmdOkRecall");
  Finish();
  presets_.CancelNow();
  EXPECT_FALSE(IsOpen("frmRecall"));
  EXPECT_FALSE(IsOpen("frmPresets"));
  QCoreApplication::processEvents();
  EXPECT_EQ(port_.TakeWritten(), "");
}

}  // namespace
}  // namespace app
