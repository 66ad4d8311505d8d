// SPDX-License-Identifier: MIT

#include "app/journal/rescue.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <cerrno>
#include <memory>

#include "tests/app/journal/journal_fixture.h"
#include "tests/app/patience.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/recording_reporter.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using stations::Origin;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class RescueTest : public JournalFixture {
 protected:
  RescueTest() {
    database_.AddStation(5, {{"Label", "MIC"}, {"InLabel", "IN 5"}});
    database_.AddStation(7, {{"Label", "CAM"}});
    window_.show();
    window_.activateWindow();
  }

  void SetUp() override { ASSERT_TRUE(QTest::qWaitForWindowActive(&window_)); }

  // A start of the console, up to what it offers.
  void Start() {
    rescue_.reset();
    keeper_ = std::make_unique<JournalKeeper>(changes_, Path(), DatabasePath());
    keeper_->Begin();
    rescue_ = std::make_unique<Rescue>(
        Rescue::Services{.journal = *keeper_,
                         .database = [this] { return database_.Files().Database(); },
                         .changes = changes_,
                         .hints = *hints_,
                         .command = command_,
                         .window = window_,
                         .reporter = reporter_,
                         .storeEdits = [this] { return mayLeave_; }});
    QObject::connect(rescue_.get(), &Rescue::NoteRequested,
                     [this](const QString& note) { notes_.push_back(note.toStdString()); });
    rescue_->Begin();
    keeper_->Finish();
    ASSERT_TRUE(QTest::qWaitFor([this] { return keeper_->Digest().has_value(); }, kPatience));
  }

  // The hint without its date; empty when there is none.
  std::string Hint() const {
    if (hints_->isHidden()) return {};
    QString text = test::Find<QLabel>(*hints_, "aidHintText").toolTip();
    return text
        .replace(QRegularExpression(QStringLiteral("\\d+ \\w+ \\d\\d:\\d\\d")),
                 QStringLiteral("DATE"))
        .toStdString();
  }

  std::vector<std::string> Offered() const {
    std::vector<std::string> names;
    for (const QToolButton* const button : hints_->findChildren<QToolButton*>()) {
      if (button->isVisible() && button->objectName() != QLatin1String("aidHintClose")) {
        names.push_back(button->objectName().toStdString());
      }
    }
    return names;
  }

  void Click(const char* button) {
    QTest::mouseClick(&test::Find<QToolButton>(*hints_, button), Qt::LeftButton);
  }

  // Gives this answer to the question that is open.
  void Answer(const char* question, const char* answer) {
    QTest::mouseClick(&test::Find<QPushButton>(test::Find<QMessageBox>(window_, question), answer),
                      Qt::LeftButton);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  void Cancel(const char* question) {
    auto& box = test::Find<QMessageBox>(window_, question);
    QTest::mouseClick(box.button(QMessageBox::Cancel), Qt::LeftButton);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  test::SmallDatabase database_;
  model::Locks locks_;
  stations::Changes changes_{locks_};
  QWidget window_;
  HintStrip* hints_ = new HintStrip(&window_);
  QAction command_;
  test::RecordingReporter reporter_;
  bool mayLeave_ = true;
  std::vector<std::string> notes_;
  std::unique_ptr<JournalKeeper> keeper_;
  std::unique_ptr<Rescue> rescue_;
};

TEST_F(RescueTest, WhereAllWasSavedNothingIsOffered) {
  Start();
  EXPECT_EQ(Hint(), "");
  EXPECT_FALSE(command_.isEnabled());
}

TEST_F(RescueTest, WhatIsRestoredIsStoredAsOneActAndThenSaidToBe) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes");
  EXPECT_THAT(Offered(), ElementsAre("aidRestore", "aidShowChanges", "aidDiscard"));
  EXPECT_EQ(database_.Field(5, "Label"), "MIC") << "nothing is restored unasked";
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5 Label of station 7; restored",
                                  "4 Restored: Label of 2 stations"));
  // First the restore, then that it was.
  EXPECT_LT(Text().find("\"restore\""), Text().find(" restored 1 "));
  EXPECT_EQ(Hint(), "");
  EXPECT_FALSE(command_.isEnabled());
  EXPECT_THAT(notes_, ElementsAre(HasSubstr("Restored: 2 changes of ")));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RescueTest, ALockedConsoleNeitherRestoresNorDiscards) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  locks_.LockConsole(true);
  Click("aidRestore");
  Click("aidDiscard");
  EXPECT_THAT(window_.findChildren<QMessageBox*>(), testing::IsEmpty());
  EXPECT_THAT(reporter_.reports, testing::SizeIs(2));
  EXPECT_THAT(reporter_.reports, testing::Each("exclamation|Control Error|Action Not Allowed While "
                                               "Console Is Locked"));
  locks_.LockConsole(false);
  Click("aidDiscard");
  locks_.LockConsole(true);
  Answer("aidAskDiscard", "aidDiscardRun");
  EXPECT_THAT(Offered(), ElementsAre("aidRestore", "aidShowChanges", "aidDiscard"));
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
}

TEST_F(RescueTest, TheFirstCloseAsksAboutWhatCouldOnlyBeShownBehindIt) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  EXPECT_FALSE(rescue_->MayClose());
  QString text = test::Find<QMessageBox>(window_, "aidAskClose").text();
  EXPECT_EQ(text.replace(QRegularExpression(QStringLiteral("\\d+ \\w+ \\d\\d:\\d\\d")),
                         QStringLiteral("DATE")),
            QStringLiteral("Close Without Restoring?\r\rThe console ended without saving on DATE: "
                           "2 changes. Once Tesk.mdb has been saved, that can only be shown."));
  Cancel("aidAskClose");
  EXPECT_TRUE(window_.isVisible());
  EXPECT_THAT(Offered(), ElementsAre("aidRestore", "aidShowChanges", "aidDiscard"));
  EXPECT_TRUE(rescue_->MayClose()) << "it is said once";
}

TEST_F(RescueTest, WhoClosesAllTheSameClosesTheWindow) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  EXPECT_FALSE(rescue_->MayClose());
  Answer("aidAskClose", "aidCloseAllTheSame");
  EXPECT_FALSE(window_.isVisible());
  EXPECT_TRUE(rescue_->MayClose());
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
}

// The oldest run first, whichever was looked at.
TEST_F(RescueTest, TheFirstCloseCanRestoreInstead) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  RunAndCrash({LabelOf(5, "MIC", "A"), LabelOf(7, "CAM", "VT")});
  Start();
  command_.trigger();
  command_.trigger();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes (run 2 of 2)");
  EXPECT_FALSE(rescue_->MayClose());
  Answer("aidAskClose", "aidRestoreFirst");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_TRUE(window_.isVisible());
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes");
}

TEST_F(RescueTest, WhatWasDecidedAboutHoldsNobodyUp) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  Click("aidRestore");
  EXPECT_TRUE(rescue_->MayClose());
}

TEST_F(RescueTest, OnAnotherDatabaseItCanOnlyBeShown) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  test::WriteFile(DatabasePath(), "another");
  Start();
  EXPECT_TRUE(rescue_->MayClose()) << "closing loses nothing of it";
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 1 change, made in another Tesk.mdb");
  EXPECT_THAT(Offered(), ElementsAre("aidShowChanges", "aidDiscard"));
}

TEST_F(RescueTest, ClosingDecidesNothingAndTheCommandBringsItBack) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  Click("aidHintClose");
  EXPECT_EQ(Hint(), "");
  EXPECT_TRUE(command_.isEnabled());
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5"));
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  command_.trigger();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 1 change");
  EXPECT_TRUE(test::Find<QToolButton>(*hints_, "aidRestore").hasFocus()) << "for who works by keys";
}

TEST_F(RescueTest, SeveralAreOfferedOneByOneTheOldestFirst) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  RunAndCrash({LabelOf(5, "MIC", "A"), LabelOf(7, "CAM", "VT")});
  Start();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 1 change (run 1 of 2)");
  command_.trigger();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 1 change (run 1 of 2)")
      << "the operator was elsewhere";
  command_.trigger();
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes (run 2 of 2)");
  command_.trigger();
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes");
}

TEST_F(RescueTest, WhatWasEditedSinceIsAskedAbout) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  EXPECT_THAT(
      test::Find<QMessageBox>(window_, "aidAskEdited").text().toStdString(),
      HasSubstr(
          "These were edited again after the crash:\r\rStation 5, Label: NEW now, LINE then"));
  EXPECT_EQ(database_.Field(7, "Label"), "CAM") << "nothing is stored meanwhile";
  Cancel("aidAskEdited");
  EXPECT_EQ(database_.Field(7, "Label"), "CAM");
  EXPECT_THAT(Offered(), ElementsAre("aidRestore", "aidShowChanges", "aidDiscard"));
  Click("aidRestore");
  Answer("aidAskEdited", "aidKeepEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "NEW");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
  EXPECT_EQ(Hint(), "");
  EXPECT_THAT(notes_, ElementsAre(StartsWith("Restored: 1 change of ")));
}

TEST_F(RescueTest, WhereNothingWasLeftToRestoreItSaysSo) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  Answer("aidAskEdited", "aidKeepEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "NEW");
  EXPECT_THAT(notes_, ElementsAre(StartsWith("Restored: no changes of ")));
}

TEST_F(RescueTest, WhatWasEditedSinceCanBeRestoredToo) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
}

// The operator has seen and decided about what was there when the question was asked.
TEST_F(RescueTest, WhatIsEditedWhileTheQuestionStandsIsLeftOutAndOfferedAgain) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  database_.Set(7, "Label", "SAT");
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(database_.Field(7, "Label"), "SAT");
  EXPECT_THAT(notes_,
              ElementsAre(AllOf(
                  StartsWith("Restored: 1 change of "),
                  EndsWith(". Left out, because they were edited here since: Station 7 Label"))));
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 2 changes");
  Click("aidRestore");
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
  EXPECT_EQ(Hint(), "");
}

TEST_F(RescueTest, WhatIsEditedOnceMoreWhileTheQuestionStandsIsLeftOut) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  database_.Set(5, "Label", "NEWER");
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "NEWER");
  EXPECT_THAT(notes_, ElementsAre(StartsWith("Restored: no changes of ")));
}

// Half of a button would be none.
TEST_F(RescueTest, AButtonThatIsEditedWhileTheQuestionStandsIsLeftOutWhole) {
  database_.Set(5, "B1 Type", 255);
  database_.Set(5, "B1 First", 1);
  RunAndCrash({LabelOf(7, "CAM", "VT"),
               {Origin::Operator,
                5,
                {{"B1 Type", jet::Value(255), jet::Value(0)},
                 {"B1 First", jet::Value(1), jet::Value(4)}}}});
  Start();
  database_.Set(7, "Label", "NEW");
  Click("aidRestore");
  database_.Set(5, "B1 First", 9);
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(5, "B1 Type"), "255");
  EXPECT_EQ(database_.Field(5, "B1 First"), "9");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
}

TEST_F(RescueTest, WhatIsKeptIsKeptWhateverItHoldsByThen) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  database_.Set(5, "Label", "NEW");
  Click("aidRestore");
  database_.Set(5, "Label", "MIC");
  Answer("aidAskEdited", "aidKeepEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
}

TEST_F(RescueTest, WhatCameFromTheSwitcherIsAChoiceOfItsOwn) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT", Origin::Switcher)});
  Start();
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
  Answer("aidAskReceived", "aidRestoreEdits");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(database_.Field(7, "Label"), "CAM");
  EXPECT_THAT(notes_, ElementsAre(StartsWith("Restored: 1 change of ")));
}

TEST_F(RescueTest, WhatCameFromTheSwitcherCanBeRestoredToo) {
  RunAndCrash({LabelOf(7, "CAM", "VT", Origin::Switcher)});
  Start();
  Click("aidRestore");
  EXPECT_EQ(test::Find<QMessageBox>(window_, "aidAskReceived")
                .findChild<QPushButton*>(QStringLiteral("aidRestoreEdits")),
            nullptr)
      << "there is nothing else";
  Answer("aidAskReceived", "aidRestoreAll");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
}

TEST_F(RescueTest, DiscardingAsksOnce) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  Click("aidDiscard");
  Cancel("aidAskDiscard");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5"));
  Click("aidDiscard");
  Answer("aidAskDiscard", "aidDiscardRun");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5; discarded"));
  EXPECT_EQ(Hint(), "");
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
  Start();
  EXPECT_EQ(Hint(), "");
}

TEST_F(RescueTest, WhatCannotBeDiscardedIsSaidAndOfferedOn) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  faults::FaultPlan plan(folder_.Path());
  TeskWatch(plan.Shared());
  plan.Fail(1, 1 << 30, ENOSPC);
  Click("aidDiscard");
  Answer("aidAskDiscard", "aidDiscardRun");
  plan.Lift();
  TeskWatch(nullptr);
  EXPECT_THAT(notes_, ElementsAre(StartsWith("Not discarded: 1 change of ")));
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 1 change");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5"));
}

// The crash came between the renaming of the database and the line that says so.
TEST_F(RescueTest, ARunWhoseChangesAreAllThereWasSaved) {
  RunAndCrash({LabelOf(5, "A", "MIC"), LabelOf(7, "A", "CAM")});
  test::WriteFile(DatabasePath(), "with the changes");
  Start();
  EXPECT_EQ(Hint(), "");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5 Label of station 7; saved"));
}

TEST_F(RescueTest, ARunThatWasTakenBackToNothingIsNotOffered) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(5, "LINE", "MIC")});
  Start();
  EXPECT_EQ(Hint(), "");
}

// The window answers while a long run is read, and what is edited meanwhile counts.
TEST_F(RescueTest, ALongRunIsReadBitByBit) {
  constexpr int kActs = 4000;
  std::vector<std::string> labels{"MIC"};
  for (int act = 0; act < kActs; ++act) labels.push_back("L" + std::to_string(act));
  std::vector<stations::Change> changes;
  for (std::size_t act = 0; act < kActs; ++act) {
    changes.push_back(LabelOf(5, labels[act].c_str(), labels[act + 1].c_str()));
  }
  RunAndCrash(changes);
  Start();
  EXPECT_EQ(Hint(), "") << "it is still being read";
  EXPECT_FALSE(command_.isEnabled());
  database_.Set(5, "Label", "NEW");
  ASSERT_TRUE(QTest::qWaitFor([this] { return !Hint().empty(); }, kPatience));
  EXPECT_EQ(Hint(), "The console ended without saving on DATE: 4000 changes");
  Click("aidRestore");
  Answer("aidAskEdited", "aidRestoreEdited");
  EXPECT_EQ(database_.Field(5, "Label"), "L3999");
}

// A crash in a restore: before the line that says so, what was restored is not in Tesk.mdb either.
TEST_F(RescueTest, ACrashInARestoreLosesNothingAndRestoringTwiceIsHarmless) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(7, "CAM", "VT")});
  Start();
  faults::FaultPlan plan(folder_.Path());
  TeskWatch(plan.Shared());
  plan.Fail(1, 1 << 30, ENOSPC, false);
  Click("aidRestore");
  plan.Lift();
  TeskWatch(nullptr);
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_THAT(Runs(), ElementsAre("1 Label of station 5 Label of station 7"))
      << "a restore that is in no journal is not said to be one";
  database_.Set(5, "Label", "MIC");
  database_.Set(7, "Label", "CAM");
  Start();
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(database_.Field(7, "Label"), "VT");
  EXPECT_EQ(Hint(), "");
}

TEST_F(RescueTest, WhatIsTypedIsStoredFirst) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  mayLeave_ = false;
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "MIC");
  EXPECT_THAT(Offered(), ElementsAre("aidRestore", "aidShowChanges", "aidDiscard"));
}

TEST_F(RescueTest, AStationThatIsGoneIsPassedOver) {
  RunAndCrash({LabelOf(5, "MIC", "LINE"), LabelOf(6, "A", "B")});
  Start();
  Click("aidRestore");
  EXPECT_EQ(database_.Field(5, "Label"), "LINE");
  EXPECT_EQ(Hint(), "");
  EXPECT_THAT(notes_, ElementsAre(AllOf(StartsWith("Restored: 1 change of "),
                                        EndsWith(", 1 station has no record"))));
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(RescueTest, ShowingNamesTheRun) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  Start();
  qint64 shown = 0;
  QObject::connect(rescue_.get(), &Rescue::ShowRequested, [&](qint64 run) { shown = run; });
  Click("aidShowChanges");
  EXPECT_EQ(shown, 1);
}

// The end of a run is in the file before its middle was lost.
TEST_F(RescueTest, LinesThatCannotBeReadAreSaid) {
  RunAndCrash({LabelOf(5, "MIC", "LINE")});
  {
    stations::Journal journal(Path());
    ASSERT_TRUE(journal.Read().ok());
    const std::string beginning(journal.Contents().Runs()[0].beginning);
    journal.SetBeginning(beginning);
    ASSERT_TRUE(journal.AddAct("{\"of\":\"another program\"}").ok());
    ASSERT_TRUE(
        journal.AddAct(stations::WriteAct({.title = "Label", .changes = {LabelOf(7, "CAM", "VT")}}))
            .ok());
  }
  Start();
  command_.trigger();
  command_.trigger();
  EXPECT_THAT(Hint(), HasSubstr(": 1 change, and some that cannot be read (run 2 of 2)"));
}

TEST_F(RescueTest, ARunThatCannotBeReadCanBeDiscarded) {
  {
    stations::Journal journal(Path());
    ASSERT_TRUE(journal.Read().ok());
    journal.SetBeginning(stations::WriteBeginning(kDigest));
    ASSERT_TRUE(journal.AddAct("{\"of\":\"another program\"}").ok());
  }
  Start();
  EXPECT_EQ(Hint(), "The console ended without saving, and what it changed cannot be read");
  EXPECT_THAT(Offered(), ElementsAre("aidShowChanges", "aidDiscard"));
  EXPECT_THAT(Text(), Not(HasSubstr(" saved ")));
}

}  // namespace
}  // namespace app
