// SPDX-License-Identifier: MIT
//
// Edits in the views, taken back and done again with the keys and the menu.

#include "app/undo/undo_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <string>
#include <vector>

#include "app/shell/stored_elsewhere.h"
#include "app/shell/view_menu.h"
#include "db/keep_position.h"
#include "stations/open_stations.h"
#include "stations/record.h"
#include "tests/app/eight_channels.h"
#include "tests/support/recording_changes.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

namespace app {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UndoCommandsTest : public testing::Test {
 protected:
  void SetUp() override {
    QGuiApplication::clipboard()->clear();
    console_.window->resize(1000, 800);
    console_.window->show();
    console_.window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(console_.window.get()));
    QObject::connect(&undo_, &UndoCommands::NoteRequested,
                     [this](const QString& note) { notes_.push_back(note.toStdString()); });
  }

  QAction& Command(const char* name) { return test::Find<QAction>(*console_.window, name); }
  std::string Text(const char* name) {
    return Command(name).isEnabled() ? Command(name).text().remove(u'&').toStdString() : "";
  }

  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  static void Undo() { Press(Qt::Key_Z, Qt::ControlModifier); }
  static void Redo() { Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }

  QTableView& Labels() { return test::Find<QTableView>(*views_.Alphas(), "jgAlphas"); }
  QString Cell(int row, int column) {
    return Labels().model()->index(row, column).data().toString();
  }
  void GoToCell(int row, int column) {
    Labels().setCurrentIndex(Labels().model()->index(row, column));
    Labels().setFocus();
  }
  // Into the cell; its editor stays open.
  void Type(int row, int column, const char* text) {
    GoToCell(row, column);
    QTest::keyClicks(&Labels(), QLatin1String(text).left(1));
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text).mid(1));
  }
  void EditLabel(int station, const char* label) {
    Type(station - 1, kLabel, label);
    Press(Qt::Key_Return);
  }

  void ToggleInhibit(int output, int input) {
    auto& map = test::Find<QTableView>(*views_.Xmap(), "msfgXmap");
    ASSERT_TRUE(QMetaObject::invokeMethod(&map, "selectCell", Q_ARG(int, output + 1),
                                          Q_ARG(int, input + 1)));
    test::Find<QAction>(*views_.Xmap(), "ID_ToggleInhibit").trigger();
  }
  int Mark(int output, int input) {
    int mark = -1;
    auto& map = test::Find<QTableView>(*views_.Xmap(), "msfgXmap");
    EXPECT_TRUE(QMetaObject::invokeMethod(&map, "cellMark", Q_RETURN_ARG(int, mark),
                                          Q_ARG(int, output + 1), Q_ARG(int, input + 1)));
    return mark;
  }

  void Report(int station, const char* label) {
    std::unique_ptr<jet::RecordSet> stations;
    ASSERT_TRUE(stations::OpenStation(*console_.database, station, &stations).ok());
    stations::Record record(*stations);
    record.Set("Label", label);
    ASSERT_TRUE(record.Commit({console_.changes, stations::Origin::Switcher}).ok());
  }

  std::vector<std::string> Notes() { return std::exchange(notes_, {}); }

  test::ViewConsole console_{kChannels};
  OpenViews views_{*console_.area, console_.Services()};
  StoredElsewhere storedElsewhere_{console_.changes, views_};
  QMenu viewActions_;
  ViewMenu viewMenu_{{.menu = viewActions_, .views = views_, .window = *console_.window}};
  EditMenu menu_{{.menu = *console_.window->menuBar()->addMenu(QStringLiteral("&Edit")),
                  .views = views_,
                  .window = *console_.window,
                  .find = viewMenu_.FindCommand()}};
  UndoCommands undo_{
      {.menu = menu_, .views = views_, .data = console_.Services(), .database = [this] {
         return console_.database.get();
       }}};
  test::RecordingChanges heard_{console_.changes};
  std::vector<std::string> notes_;
};

TEST_F(UndoCommandsTest, ALockedConsoleNeitherUndoesNorRedoes) {
  views_.ShowAlphas();
  EditLabel(5, "STUDIO");
  console_.locks.LockConsole(true);
  Undo();
  EXPECT_EQ(Cell(4, kLabel), QStringLiteral("STUDIO"));
  console_.locks.LockConsole(false);
  Undo();
  console_.locks.LockConsole(true);
  Redo();
  EXPECT_NE(Cell(4, kLabel), QStringLiteral("STUDIO"));
  EXPECT_THAT(console_.reporter.reports, testing::SizeIs(2));
  EXPECT_THAT(console_.reporter.reports, testing::Each("exclamation|Control Error|Action Not "
                                                       "Allowed While Console Is Locked"));
}

TEST_F(UndoCommandsTest, WithoutAnEditThereIsNothingToTakeBack) {
  views_.ShowXmap();
  EXPECT_EQ(Text("aidUndo"), "");
  EXPECT_EQ(Text("aidRedo"), "");
  Undo();
  Redo();
  EXPECT_THAT(heard_.seen, IsEmpty());
}

TEST_F(UndoCommandsTest, RowsOfTheLabels) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  EditLabel(5, "CAM 5");
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of Station 5");
  Undo();
  EXPECT_EQ(Cell(4, kLabel), QStringLiteral("Sta. 005"));
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of Station 3");
  EXPECT_EQ(Text("aidRedo"), "Redo Label Of Station 5");
  Undo();
  EXPECT_EQ(Text("aidUndo"), "");
  Redo();
  EXPECT_EQ(Cell(2, kLabel), QStringLiteral("MIC 3"));
  EXPECT_THAT(heard_.seen,
              ElementsAre("operator 3: Label Sta. 003 > MIC 3",
                          "operator 5: Label Sta. 005 > CAM 5", "undo 5: Label CAM 5 > Sta. 005",
                          "undo 3: Label MIC 3 > Sta. 003", "redo 3: Label Sta. 003 > MIC 3"));
  EXPECT_THAT(Notes(), ElementsAre("Undone: Label of station 5", "Undone: Label of station 3",
                                   "Redone: Label of station 3"));
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(UndoCommandsTest, APasteIsOneStep) {
  views_.ShowAlphas();
  GoToCell(1, kLabel);
  QGuiApplication::clipboard()->setText(QStringLiteral("A\nB\nC\n"));
  EXPECT_TRUE(Command("aidEditPaste").isEnabled());
  Command("aidEditPaste").trigger();
  EXPECT_EQ(console_.Text(4, "Label"), "C");
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of 3 Stations");
  heard_.times = 0;
  Undo();
  EXPECT_EQ(heard_.times, 1);
  EXPECT_EQ(console_.Text(2, "Label"), "Sta. 002");
  EXPECT_EQ(console_.Text(4, "Label"), "Sta. 004");
}

TEST_F(UndoCommandsTest, InAnEditorTheKeyIsTheEditors) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  Type(4, kLabel, "CAM");
  auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->text(), QStringLiteral("CAM"));
  Undo();
  EXPECT_NE(editor->text(), QStringLiteral("CAM"));
  EXPECT_EQ(console_.Text(3, "Label"), "MIC 3");
  Redo();
  EXPECT_EQ(editor->text(), QStringLiteral("CAM"));
  // The same from the menu.
  Q_EMIT test::Find<QMenu>(*console_.window->menuBar(), "").aboutToShow();
  EXPECT_EQ(Text("aidUndo"), "Undo");
  Command("aidUndo").trigger();
  EXPECT_NE(editor->text(), QStringLiteral("CAM"));
  EXPECT_EQ(console_.Text(3, "Label"), "MIC 3");
}

TEST_F(UndoCommandsTest, AHalfTypedRowIsStoredFirst) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  Undo();
  heard_.Take();
  Type(4, kLabel, "CAM");
  GoToCell(4, kInput);
  EXPECT_THAT(heard_.seen, IsEmpty());
  EXPECT_EQ(Text("aidUndo"), "Undo Edited Row");
  EXPECT_EQ(Text("aidRedo"), "");
  Undo();
  EXPECT_THAT(heard_.Take(),
              ElementsAre("operator 5: Label Sta. 005 > CAM", "undo 5: Label CAM > Sta. 005"));
  EXPECT_EQ(Cell(4, kLabel), QStringLiteral("Sta. 005"));
  Redo();
  EXPECT_EQ(Cell(4, kLabel), QStringLiteral("CAM"));
}

TEST_F(UndoCommandsTest, Inhibits) {
  views_.ShowXmap();
  ToggleInhibit(3, 5);
  EXPECT_EQ(Text("aidUndo"), "Undo Inhibits Of Output 3");
  Undo();
  EXPECT_EQ(console_.Text(3, "Inhibits"), "00000000");
  EXPECT_EQ(Mark(3, 5), 0);
  Redo();
  EXPECT_EQ(console_.Text(3, "Inhibits"), "00001000");
  EXPECT_EQ(Mark(3, 5), 2);
}

TEST_F(UndoCommandsTest, AnInhibitOnAMadeCrosspointIsRefusedUntilItIsBroken) {
  views_.ShowXmap();
  ToggleInhibit(3, 5);
  ToggleInhibit(3, 5);
  console_.model.CrosspointMap.At(3, 5) = 1;
  views_.CrosspointRowChanged(3, 0);
  Undo();
  EXPECT_THAT(console_.reporter.reports,
              ElementsAre(testing::HasSubstr("Inhibit Not Possible With Existing Crosspoint")));
  EXPECT_EQ(console_.Text(3, "Inhibits"), "00000000");
  EXPECT_EQ(Mark(3, 5), 1);
  EXPECT_EQ(Text("aidUndo"), "Undo Inhibits Of Output 3");
  console_.model.CrosspointMap.At(3, 5) = 0;
  views_.CrosspointRowChanged(3, 0);
  Undo();
  EXPECT_EQ(console_.Text(3, "Inhibits"), "00001000");
  EXPECT_EQ(Mark(3, 5), 2);
}

TEST_F(UndoCommandsTest, CommandsToTheSwitcherAreNoEdits) {
  views_.ShowXmap();
  auto& map = test::Find<QTableView>(*views_.Xmap(), "msfgXmap");
  ASSERT_TRUE(QMetaObject::invokeMethod(&map, "selectCell", Q_ARG(int, 4), Q_ARG(int, 6)));
  test::Find<QAction>(*views_.Xmap(), "ID_Take").trigger();
  EXPECT_EQ(Text("aidUndo"), "");
}

TEST_F(UndoCommandsTest, ProgrammingOfAButtonWithWhatNavigationMadeOfIt) {
  console_.SetField(1, "B1 Type", 0);
  console_.SetField(1, "B1 First", 1);
  console_.SetField(1, "B1 Prog", Flags({1}));
  views_.ShowButtons();
  const auto find = [this](const char* name) -> QWidget& {
    return test::Find<QWidget>(*views_.Buttons(), name);
  };
  test::Find<QTabWidget>(*views_.Buttons(), "SSActiveTabs1").setCurrentIndex(4);
  static_cast<QRadioButton&>(find("optButType_1")).click();
  EXPECT_EQ(Text("aidUndo"), "Undo Button 1 Of Station 1");
  static_cast<QCheckBox&>(find("ckStationSel_0")).click();  // the last target: inactive
  static_cast<QRadioButton&>(find("optButType_255")).click();
  find("optButType_255").setFocus();
  static_cast<QPushButton&>(find("cmdNext")).click();
  heard_.Take();
  // Choosing an operation for it came to nothing when the station was left.
  Undo();
  EXPECT_THAT(heard_.Take(), ElementsAre("undo 1: B1 Prog " + Flags({}) + " > " + Flags({1}) +
                                         ", B1 Type 254 > 1"));
  static_cast<QPushButton&>(find("cmdPrev")).click();
  EXPECT_EQ(test::Find<QLabel>(*views_.Buttons(), "lblBtype_0").text(), QStringLiteral("LISTEN"));
  Undo();
  EXPECT_EQ(test::Find<QLabel>(*views_.Buttons(), "lblBtype_0").text(), QStringLiteral("TALK"));
  EXPECT_TRUE(static_cast<QRadioButton&>(find("optButType_0")).isChecked());
  Redo();
  EXPECT_EQ(test::Find<QLabel>(*views_.Buttons(), "lblBtype_0").text(), QStringLiteral("LISTEN"));
}

TEST_F(UndoCommandsTest, RelaysAndOptos) {
  views_.ShowButtons();
  const std::string none = console_.Text(1, "Relays");
  auto& relay = test::Find<QCheckBox>(*views_.Buttons(), "ckRelaySel_3");
  relay.click();
  EXPECT_NE(console_.Text(1, "Relays"), none);
  auto& opto = test::Find<QRadioButton>(*views_.Buttons(), "optOptoType_1");
  const int operation = console_.Number(1, "OptoType");
  opto.click();
  EXPECT_EQ(console_.Number(1, "OptoType"), 1);
  Undo();
  EXPECT_EQ(console_.Number(1, "OptoType"), operation);
  EXPECT_FALSE(opto.isChecked());
  Undo();
  EXPECT_EQ(console_.Text(1, "Relays"), none);
  EXPECT_FALSE(relay.isChecked());
}

TEST_F(UndoCommandsTest, AStepThatTheSwitcherOverwroteIsDroppedWithANote) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  EditLabel(5, "CAM 5");
  Report(5, "VT");
  Undo();
  EXPECT_THAT(Notes(), ElementsAre("Not undone, was changed since: Label of station 5"));
  EXPECT_EQ(console_.Text(5, "Label"), "VT");
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of Station 3");
  Undo();
  EXPECT_EQ(console_.Text(3, "Label"), "Sta. 003");
  Report(3, "X");
  Redo();
  EXPECT_THAT(Notes(), ElementsAre("Undone: Label of station 3",
                                   "Not redone, was changed since: Label of station 3"));
}

// By another program, in the same file.
TEST_F(UndoCommandsTest, AStepOfAStationThatIsGoneIsDroppedWithANote) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  EditLabel(5, "CAM 5");
  {
    const db::KeepPosition keep(*console_.stations);
    ASSERT_TRUE(console_.stations->Seek(5).ok());
    ASSERT_TRUE(console_.stations->Delete().ok());
  }
  Undo();
  EXPECT_THAT(Notes(), ElementsAre("Not undone, was changed since: Label of station 5"));
  EXPECT_THAT(console_.reporter.reports, testing::IsEmpty());
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of Station 3");
  Undo();
  EXPECT_EQ(console_.Text(3, "Label"), "Sta. 003");
}

TEST_F(UndoCommandsTest, AfterAFailureTheStepStaysAndTheFailureIsReported) {
  views_.ShowAlphas();
  EditLabel(3, "MIC 3");
  jet::Database* const open = console_.database.release();
  Undo();
  console_.database.reset(open);
  ASSERT_EQ(console_.reporter.reports.size(), 1);
  EXPECT_THAT(console_.reporter.reports.front(), testing::HasSubstr("Error Undoing An Edit"));
  EXPECT_EQ(Text("aidUndo"), "Undo Label Of Station 3");
}

}  // namespace
}  // namespace app
