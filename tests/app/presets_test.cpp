// SPDX-License-Identifier: MIT

#include "app/presets.h"

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
#include <string>
#include <vector>

#include "files/whole_file.h"
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
    ASSERT_TRUE(port_.Open(1).ok());
    QObject::connect(&presets_, &Presets::NoteRequested,
                     [this](const QString& note) { notes_.push_back(note.toStdString()); });
    QObject::connect(&presets_, &Presets::LineRequested,
                     [this](const QString& line) { lines_.push_back(line.toStdString()); });
    window_.show();
    presets_.Show();
  }

  QDialog& Dialog(const char* name) { return *test::ShownDialogs(window_, name).front(); }
  bool IsOpen(const char* name) { return !test::ShownDialogs(window_, name).isEmpty(); }
  void Click(const char* dialog, const char* button) {
    test::Find<QPushButton>(Dialog(dialog), button).click();
    QCoreApplication::processEvents();
  }
  void Finish() { presets_.Finish(QDeadlineTimer(QDeadlineTimer::Forever)); }
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
  QWidget window_;
  Presets presets_{
      {.window = window_,
       .folder = folder_ / "Presets",
       .recall = {.model = model_,
                  .locks = locks_,
                  .commands = live_,
                  .isInhibited = [](int /*output*/, int /*input*/) { return false; }},
       .facts = {.outputLabel = [](int output) { return "OUT " + std::to_string(output); },
                 .inputLabel = [](int input) { return "IN " + std::to_string(input); },
                 .isInhibited = [](int /*output*/, int /*input*/) { return false; }},
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
            QStringLiteral("Not stored: the switcher has not reported the whole map yet."));
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
  EXPECT_THAT(Content("Before recall of Morning"),
              testing::HasSubstr("{\"input\": 1, \"label\": \"IN 1\"}"));
  ASSERT_TRUE(QTest::qWaitFor([this] {
    Answer();
    return !IsOpen("frmRecall");
  }));
  EXPECT_EQ(model_.CrosspointMap.At(6, 8), 1);
  EXPECT_EQ(model_.CrosspointMap.At(6, 1), 0);
  EXPECT_THAT(notes_, ElementsAre("Preset stored: Morning", "Morning: 1 of 1 outputs recalled"));
  EXPECT_THAT(lines_, ElementsAre("Preset stored: Before recall of Morning"));
  EXPECT_THAT(Listed(), ElementsAre("Before recall of Morning", "Morning"));
}

TEST_F(PresetsTest, AsksWhenWhatIsThereCannotBeKept) {
  Make(6, 8);
  Store("Morning");
  Make(6, 8, 0);
  std::filesystem::create_directory(folder_ / "Presets/Before recall of Morning.json");
  Click("frmPresets", "cmdRecallPreset");
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
  presets_.CancelNow();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  presets_.Show();
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
