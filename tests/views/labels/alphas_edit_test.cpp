// SPDX-License-Identifier: MIT
//
// Editing in the grid of station labels, by keys and by clicks.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QTest>
#include <QWheelEvent>

#include "db/keep_position.h"
#include "tests/views/labels/labels_console.h"

namespace {

using test::LabelsConsole;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

QString EditorText(LabelsConsole& console) {
  auto* const field = qobject_cast<QLineEdit*>(console.Editor());
  return field == nullptr ? QStringLiteral("(no editor)") : field->text();
}

TEST(AlphasEdit, TypingReplacesTheCellAndEnterStoresTheRow) {
  LabelsConsole console;
  console.GoToStation(9);
  console.Open();
  console.Click(4, kLabel);
  console.Type("MIC");
  EXPECT_EQ(EditorText(console), QStringLiteral("MIC"));
  EXPECT_EQ(console.Text(5, "Label"), "Sta. 005") << "nothing is stored while typing";
  EXPECT_TRUE(console.IsMarkedEdited(4));
  EXPECT_FALSE(console.IsMarkedEdited(3));
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Text(5, "Label"), "MIC");
  EXPECT_EQ(console.Current(), QStringLiteral("5,1"));
  EXPECT_FALSE(console.IsMarkedEdited(4));
  EXPECT_THAT(console.said, ElementsAre("edited 1 5", "labels"));
  EXPECT_EQ(console.CurrentStation(), 9);
}

TEST(AlphasEdit, LabelsTypedOneAfterTheOtherGoToOneRowEach) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kLabel);
  for (const char* const label : {"CAM 1", "CAM 2", "CAM 3"}) {
    console.Type(label);
    console.Press(Qt::Key_Return);
  }
  EXPECT_EQ(console.Text(5, "Label"), "CAM 1");
  EXPECT_EQ(console.Text(6, "Label"), "CAM 2");
  EXPECT_EQ(console.Text(7, "Label"), "CAM 3");
  EXPECT_EQ(console.Current(), QStringLiteral("7,1"));
  EXPECT_EQ(console.Text(8, "Label"), "Sta. 008");
}

TEST(AlphasEdit, ShiftEnterGoesUpAndEnterMovesWithoutAnEdit) {
  LabelsConsole console;
  console.Open();
  console.Click(1, kInput);
  console.Type("MIC 1");
  console.Press(Qt::Key_Enter, Qt::ShiftModifier);
  EXPECT_EQ(console.Text(2, "InLabel"), "MIC 1");
  EXPECT_EQ(console.Current(), QStringLiteral("0,2"));
  console.Press(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(console.Current(), QStringLiteral("0,2")) << "the first row";
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Current(), QStringLiteral("1,2"));
  console.Click(127, kInput);
  console.Type("MIC 2");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(128, "InLabel"), "MIC 2");
  EXPECT_EQ(console.Current(), QStringLiteral("127,2")) << "the last row";
  EXPECT_EQ(console.said.size(), 4u);
}

TEST(AlphasEdit, F2AndDoubleClickEditWhatIsThere) {
  LabelsConsole console;
  console.Open();
  console.Click(2, kNotes);
  console.Press(Qt::Key_F2);
  EXPECT_EQ(EditorText(console), QStringLiteral("Notes for Station 003"));
  console.Press(Qt::Key_End);
  console.Type("!");
  console.Press(Qt::Key_Enter);
  EXPECT_EQ(console.Text(3, "Notes"), "Notes for Station 003!");
  EXPECT_THAT(console.said, ElementsAre("labels")) << "notes do not travel to the switcher";
  console.DoubleClick(3, kInput);
  EXPECT_EQ(EditorText(console), QStringLiteral("Inpt 004"));
  console.Type("CAM 1");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(4, "InLabel"), "CAM 1");
  EXPECT_THAT(console.said, ElementsAre("labels", "edited 2 4", "labels"));
}

TEST(AlphasEdit, TheStationNumberCannotBeEdited) {
  LabelsConsole console;
  console.Open();
  console.DoubleClick(2, kStation);
  console.Type("9");
  console.Press(Qt::Key_F2);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Cell(2, kStation), QStringLiteral("3"));
}

TEST(AlphasEdit, ANinthCharacterIsRefused) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("12345");
  ASSERT_NE(console.Editor(), nullptr);
  auto* const count = console.Editor()->findChild<QLabel*>(QStringLiteral("aidLength"));
  ASSERT_NE(count, nullptr);
  EXPECT_EQ(count->text(), QStringLiteral("5/8"));
  EXPECT_GE(count->x(), console.Editor()->width() / 2) << "at the editor's right";
  console.Type("678");
  EXPECT_EQ(count->text(), QStringLiteral("8/8"));
  console.Type("9");
  EXPECT_EQ(EditorText(console), QStringLiteral("12345678"));
  EXPECT_THAT(console.said, ElementsAre("note Station Label takes 8 characters"));
}

TEST(AlphasEdit, EveryTextColumnHasItsLimit) {
  LabelsConsole console;
  console.Open();
  const std::pair<int, int> limits[] = {
      {kLabel, 8}, {kInput, 8}, {kSystemInput, 20}, {kSystemOutput, 20}, {kNotes, 128}};
  for (const auto& [column, limit] : limits) {
    console.Click(1, column);
    console.Type(std::string(static_cast<std::size_t>(limit) + 1, 'x'));
    EXPECT_EQ(EditorText(console).size(), limit) << column;
    console.Press(Qt::Key_Escape);
  }
}

TEST(AlphasEdit, ALabelThatIsTooLongAlreadyIsNotCut) {
  LabelsConsole console;
  console.stations.reset();
  std::unique_ptr<jet::Database> foreign;
  ASSERT_TRUE(jet::Database::CreateInMemory(&foreign).ok());
  using jet::FieldType;
  const jet::TableSpec table{
      "Stations",
      {{.name = "StationNum"},
       {.name = "Hidden"},
       {.name = "Label", .type = FieldType::Text, .size = 20, .allowZeroLength = true},
       {.name = "InLabel", .type = FieldType::Text, .size = 20, .allowZeroLength = true}}};
  const jet::IndexSpec index{"StationNum", {"StationNum"}, true, true};
  ASSERT_TRUE(foreign->CreateTable(table, std::span(&index, 1)).ok());
  console.database = std::move(foreign);
  ASSERT_TRUE(console.database->OpenTable("Stations", &console.stations).ok());
  ASSERT_TRUE(console.stations->SetIndex("StationNum").ok());
  ASSERT_TRUE(console.stations->AddNew().ok());
  ASSERT_TRUE(console.stations->Set("StationNum", 1).ok());
  ASSERT_TRUE(console.stations->Set("Label", "a long label").ok());
  ASSERT_TRUE(console.stations->Update().ok());
  console.Open();
  ASSERT_EQ(console.reporter.reports.size(), 1U) << "fields are missing: said once";
  EXPECT_THAT(console.reporter.reports[0],
              HasSubstr("critical|Control Error|Error Reading Station Labels\r\rError # 3265"));
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("a long label"));
  console.Press(Qt::Key_F2);
  EXPECT_EQ(EditorText(console), QStringLiteral("a long label"));
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(1, "Label"), "a long label");
  console.Click(0, kNotes);
  console.Type("x");
  EXPECT_EQ(console.Editor(), nullptr) << "a field that is not there cannot be edited";
  console.Click(0, kInput);
  console.Type("IN");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(1, "InLabel"), "IN");
  EXPECT_EQ(console.reporter.reports.size(), 1U);
}

TEST(AlphasEdit, HiddenIsAChoice) {
  LabelsConsole console;
  console.Open();
  console.DoubleClick(1, kHidden);
  auto* const choice = qobject_cast<QComboBox*>(console.Editor());
  ASSERT_NE(choice, nullptr);
  ASSERT_EQ(choice->count(), 2);
  EXPECT_EQ(choice->itemText(0), QStringLiteral("No"));
  EXPECT_EQ(choice->itemText(1), QStringLiteral("Yes"));
  EXPECT_EQ(choice->currentText(), QStringLiteral("No"));
  EXPECT_TRUE(choice->view()->isVisible());
  QTest::keyClick(choice->view(), Qt::Key_Down);
  QTest::keyClick(choice->view(), Qt::Key_Return);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Cell(1, kHidden), QStringLiteral("Yes"));
  EXPECT_TRUE(console.IsMarkedEdited(1));
  EXPECT_EQ(console.Number(2, "Hidden"), 0);
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Number(2, "Hidden"), 1);
  EXPECT_THAT(console.said, ElementsAre("edited 1 2", "edited 2 2", "labels"));
}

TEST(AlphasEdit, HiddenTakesTheFirstLetterOfAWord) {
  LabelsConsole console;
  console.Open();
  console.Click(1, kHidden);
  console.Type("y");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Number(2, "Hidden"), 1);
  console.Click(1, kHidden);
  console.Type("n");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Number(2, "Hidden"), 0);
}

TEST(AlphasEdit, AStrangeHiddenValueIsNotLost) {
  LabelsConsole console;
  console.SetField(2, "Hidden", 7);
  console.SetField(3, "Hidden", jet::Value());
  console.Open();
  for (const int row : {1, 2}) {
    console.Click(row, kHidden);
    console.Press(Qt::Key_F2);
    auto* const choice = qobject_cast<QComboBox*>(console.Editor());
    ASSERT_NE(choice, nullptr);
    EXPECT_EQ(choice->currentIndex(), -1);
    QTest::keyClick(choice->view(), Qt::Key_Escape);
    console.Press(Qt::Key_Tab);
    console.Type("x");
    console.Press(Qt::Key_Return);
  }
  EXPECT_EQ(console.Number(2, "Hidden"), 7);
  EXPECT_EQ(console.Text(2, "SysInput"), "x");
  const db::KeepPosition keep(*console.stations);
  ASSERT_TRUE(console.stations->Seek(3).ok());
  jet::Value hidden;
  ASSERT_TRUE(console.stations->Get("Hidden", &hidden).ok());
  EXPECT_TRUE(hidden.IsNull());
}

TEST(AlphasEdit, TheWheelChangesNothing) {
  LabelsConsole console;
  console.Open();
  console.SetField(2, "Hidden", 1);
  console.view->UpdateLabels();
  console.Click(1, kHidden);
  console.Press(Qt::Key_F2);
  auto* const choice = qobject_cast<QComboBox*>(console.Editor());
  ASSERT_NE(choice, nullptr);
  choice->hidePopup();
  QWheelEvent wheel(QPointF(5, 5), choice->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, 120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(choice, &wheel);
  EXPECT_EQ(choice->currentText(), QStringLiteral("Yes"));
}

TEST(AlphasEdit, TabWalksAlongTheRowAndOnToTheNext) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Press(Qt::Key_Tab);
  console.Type("B");
  console.Press(Qt::Key_Tab);
  console.Type("y");
  console.Press(Qt::Key_Tab);
  console.Type("C");
  console.Press(Qt::Key_Tab);
  console.Type("D");
  console.Press(Qt::Key_Tab);
  console.Type("E");
  EXPECT_TRUE(console.IsMarkedEdited(0));
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001") << "the row is stored when it is left";
  EXPECT_THAT(console.said, IsEmpty());
  console.Press(Qt::Key_Tab);
  EXPECT_EQ(console.Current(), QStringLiteral("1,1")) << "over the number of the station";
  EXPECT_EQ(EditorText(console), QStringLiteral("Sta. 002"));
  EXPECT_EQ(console.Text(1, "Label"), "A");
  EXPECT_EQ(console.Text(1, "InLabel"), "B");
  EXPECT_EQ(console.Number(1, "Hidden"), 1);
  EXPECT_EQ(console.Text(1, "SysInput"), "C");
  EXPECT_EQ(console.Text(1, "SysOutput"), "D");
  EXPECT_EQ(console.Text(1, "Notes"), "E");
  EXPECT_FALSE(console.IsMarkedEdited(0));
  EXPECT_THAT(console.said, ElementsAre("edited 1 1", "edited 2 1", "labels"));
  console.Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(console.Current(), QStringLiteral("0,6"));
}

TEST(AlphasEdit, TabEndsAtTheLastCell) {
  LabelsConsole console;
  console.Open();
  console.Click(127, kNotes);
  console.Type("last");
  console.Press(Qt::Key_Tab);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Current(), QStringLiteral("127,6"));
  EXPECT_EQ(console.Cell(127, kNotes), QStringLiteral("last"));
}

TEST(AlphasEdit, LeavingTheRowStoresIt) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Click(0, kNotes);
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001") << "another cell of the row";
  console.Click(3, kNotes);
  EXPECT_EQ(console.Text(1, "Label"), "A") << "by a click";
  console.Type("B");
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Escape);
  console.Press(Qt::Key_Down);
  EXPECT_EQ(console.Text(4, "Notes"), "B") << "by a key";
  console.said.clear();
  console.Press(Qt::Key_Up);
  console.Press(Qt::Key_Return);
  EXPECT_THAT(console.said, IsEmpty()) << "there was nothing to store";
}

TEST(AlphasEdit, LeavingTheGridStoresTheRow) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  auto* const other = new QLineEdit;
  console.area->addSubWindow(other)->show();
  other->setFocus();
  EXPECT_EQ(console.Text(1, "Label"), "A");
  EXPECT_EQ(console.Editor(), nullptr);
}

TEST(AlphasEdit, EscapeClosesTheEditorThenGivesTheRowBack) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Press(Qt::Key_Tab);
  console.Type("B");
  console.Press(Qt::Key_Escape);
  EXPECT_EQ(console.Editor(), nullptr);
  EXPECT_EQ(console.Cell(0, kInput), QStringLiteral("Inpt 001"));
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("A"));
  EXPECT_TRUE(console.IsMarkedEdited(0));
  console.Press(Qt::Key_Escape);
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("Sta. 001"));
  EXPECT_FALSE(console.IsMarkedEdited(0));
  console.Press(Qt::Key_Down);
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001");
  EXPECT_THAT(console.said, IsEmpty());
}

TEST(AlphasEdit, TypingTheOldTextIsNoEdit) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Escape);
  EXPECT_TRUE(console.IsMarkedEdited(0));
  console.Click(0, kLabel);
  console.Type("Sta. 001");
  console.Press(Qt::Key_Return);
  EXPECT_FALSE(console.IsMarkedEdited(0));
  EXPECT_THAT(console.said, IsEmpty());
}

TEST(AlphasEdit, AFailedStoreKeepsTheRow) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.databaseIsOpen = false;
  console.Press(Qt::Key_Return);
  ASSERT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_THAT(console.reporter.reports[0],
              HasSubstr("critical|Control Error|Error Storing Station Labels\r\rError # "));
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("A"));
  EXPECT_TRUE(console.IsMarkedEdited(0));
  console.Press(Qt::Key_Down);
  EXPECT_EQ(console.Current(), QStringLiteral("0,1"));
  EXPECT_EQ(console.reporter.reports.size(), 2U);
  console.Click(5, kNotes);
  EXPECT_EQ(console.Current(), QStringLiteral("0,1"));
  EXPECT_EQ(console.Grid().selectionModel()->selectedIndexes().first().row(), 0);
  EXPECT_EQ(console.reporter.reports.size(), 3U) << "each once";
  console.Drag(0, kInput, 4, kNotes);
  EXPECT_EQ(console.reporter.reports.size(), 3U);
  EXPECT_EQ(console.Grid().currentIndex().row(), 0);
  console.ClickHeader(kNotes);
  EXPECT_EQ(console.reporter.reports.size(), 4U);
  EXPECT_EQ(console.Cell(0, kStation), QStringLiteral("1"));
  EXPECT_THAT(console.said, IsEmpty());

  console.databaseIsOpen = true;
  console.Press(Qt::Key_Down);
  EXPECT_EQ(console.Text(1, "Label"), "A");
  EXPECT_EQ(console.Grid().currentIndex().row(), 1);
  EXPECT_EQ(console.reporter.reports.size(), 4U);
}

TEST(AlphasEdit, AWindowWithARowThatCannotBeStoredStaysOpen) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.databaseIsOpen = false;
  console.Close();
  ASSERT_FALSE(console.subWindow.isNull());
  EXPECT_TRUE(console.subWindow->isVisible());
  EXPECT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("A"));
  console.databaseIsOpen = true;
  console.Close();
  EXPECT_TRUE(console.subWindow.isNull() || console.subWindow->isHidden());
  EXPECT_EQ(console.Text(1, "Label"), "A");
}

TEST(AlphasEdit, WhatTheCodePageDoesNotHaveIsRefusedWhenTheCellIsLeft) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kLabel);
  console.Type("Жук");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  console.Press(Qt::Key_Tab);
  EXPECT_THAT(console.reporter.reports,
              ElementsAre("exclamation|Control Error|Station 5, Station Label: “Ж” is not in code "
                          "page 1252, which the database is written in."));
  EXPECT_EQ(EditorText(console), QStringLiteral("Жук")) << "to be mended";
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.reporter.reports.size(), 2U);
  console.Click(9, kNotes);
  EXPECT_EQ(console.reporter.reports.size(), 3U);
  EXPECT_EQ(console.Current(), QStringLiteral("4,1"));
  EXPECT_EQ(EditorText(console), QStringLiteral("Жук"));
  EXPECT_TRUE(console.Editor()->hasFocus());
  EXPECT_FALSE(console.view->StoreRow());
  console.Press(Qt::Key_Escape);
  EXPECT_EQ(console.Cell(4, kLabel), QStringLiteral("Sta. 005"));
  console.Click(9, kNotes);
  EXPECT_EQ(console.Current(), QStringLiteral("9,6"));
  EXPECT_EQ(console.reporter.reports.size(), 4U);
}

TEST(AlphasEdit, TheEndOfAMessageIsRefusedInALabel) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kInput);
  console.Type("Louÿs");
  console.Press(Qt::Key_Return);
  EXPECT_THAT(console.reporter.reports,
              ElementsAre("exclamation|Control Error|Station 5, Input Label: A label cannot hold "
                          "“ÿ”: its code ends a message to the switcher."));
  EXPECT_EQ(console.Text(5, "InLabel"), "Inpt 005");
  console.Press(Qt::Key_Escape);
  console.Click(4, kNotes);
  console.Type("Louÿs");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(5, "Notes"), "Louÿs");
  EXPECT_EQ(console.reporter.reports.size(), 1U);
}

TEST(AlphasEdit, CharactersAbove127AreStoredWithANote) {
  LabelsConsole console;
  console.Open();
  console.Click(4, kLabel);
  console.Type("MÜLLER");
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(5, "Label"), "MÜLLER");
  EXPECT_THAT(console.said,
              ElementsAre("note Station 5: “Ü” does not travel well on a line of 7-bit data",
                          "edited 1 5", "labels"));
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(AlphasEdit, NullIsKeptUntilSomethingIsTyped) {
  LabelsConsole console;
  console.SetField(2, "Label", jet::Value());
  console.SetField(2, "Notes", jet::Value());
  console.Open();
  console.Click(1, kLabel);
  console.Press(Qt::Key_F2);
  console.Press(Qt::Key_Tab);
  console.Type("IN 2");
  console.Press(Qt::Key_Return);
  const db::KeepPosition keep(*console.stations);
  ASSERT_TRUE(console.stations->Seek(2).ok());
  jet::Value value;
  ASSERT_TRUE(console.stations->Get("Label", &value).ok());
  EXPECT_TRUE(value.IsNull());
  ASSERT_TRUE(console.stations->Get("InLabel", &value).ok());
  EXPECT_EQ(value.Text(), "IN 2");
}

TEST(AlphasEdit, OneEditIsOneRepaint) {
  LabelsConsole console;
  console.Open();
  QTest::qWait(50);  // the first paint lays the grid out
  console.Click(4, kHidden);
  console.Type("y");
  QTest::qWait(50);
  class Counter : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++paints;
      return false;
    }
    int paints = 0;
  } counter;
  console.Grid().viewport()->installEventFilter(&counter);
  console.Press(Qt::Key_Return);
  QTest::qWait(30);
  EXPECT_EQ(counter.paints, 1);
  counter.paints = 0;
  console.ClickHeader(kLabel);
  QTest::qWait(30);
  EXPECT_EQ(counter.paints, 1);
  counter.paints = 0;
  console.SetField(9, "Label", "changed");
  console.view->UpdateLabels();
  QTest::qWait(30);
  EXPECT_EQ(counter.paints, 1);
  counter.paints = 0;
  console.view->UpdateLabels();
  QTest::qWait(30);
  EXPECT_EQ(counter.paints, 0) << "nothing has changed";
}

}  // namespace
