// SPDX-License-Identifier: MIT
//
// Blocks of cells between the grid of station labels and a spreadsheet.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "db/keep_position.h"
#include "tests/views/labels/labels_console.h"

namespace {

using test::LabelsConsole;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace test;  // NOLINT(google-build-using-namespace): the columns

TEST(AlphasPaste, ABlockIsCopiedAsText) {
  LabelsConsole console;
  console.SetField(2, "Notes", "two\nlines");
  console.Open();
  console.Click(0, kLabel);
  EXPECT_EQ(console.Copy(), "Sta. 001\n");
  console.Drag(0, kStation, 2, kHidden);
  EXPECT_EQ(console.Copy(),
            "1\tSta. 001\tInpt 001\tNo\n2\tSta. 002\tInpt 002\tNo\n3\tSta. 003\tInpt 003\tNo\n");
  console.Drag(1, kSystemOutput, 2, kNotes);
  EXPECT_EQ(console.Copy(),
            "QDV(1) - Ch B\t\"two\nlines\"\nQDV(2) - Ch A\tNotes for Station 003\n");
}

TEST(AlphasPaste, ABlockIsStoredAsOne) {
  LabelsConsole console;
  console.GoToStation(40);
  console.Open();
  console.Click(2, kLabel);
  console.Paste(
      QStringLiteral("MIC 3\tIN 3\tYes\r\nSta. 004\tInpt 004\tNo\r\nSta. 005\tIN 5\t0\r\n"));
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_EQ(console.Text(3, "Label"), "MIC 3");
  EXPECT_EQ(console.Text(3, "InLabel"), "IN 3");
  EXPECT_EQ(console.Number(3, "Hidden"), 1);
  EXPECT_EQ(console.Text(5, "InLabel"), "IN 5");
  EXPECT_EQ(console.Cell(2, kLabel), QStringLiteral("MIC 3"));
  EXPECT_EQ(console.Cell(2, kHidden), QStringLiteral("Yes"));
  EXPECT_THAT(console.said, ElementsAre("edited 1 3", "edited 2 3", "edited 2 5", "labels"))
      << "station 4 was not changed";
  EXPECT_EQ(console.CurrentStation(), 40);
  EXPECT_EQ(console.Current(), QStringLiteral("2,1"));
  EXPECT_EQ(console.Grid().selectionModel()->selectedIndexes().size(), 9);
}

TEST(AlphasPaste, GoesByTheOrderShown) {
  LabelsConsole console;
  console.Open();
  console.ClickHeader(kStation);
  console.Click(0, kNotes);
  console.Paste(QStringLiteral("last\n\"two\nlines\"\n"));
  EXPECT_EQ(console.Text(128, "Notes"), "last");
  EXPECT_EQ(console.Text(127, "Notes"), "two\nlines");
}

TEST(AlphasPaste, TakesItsOwnCopyBack) {
  LabelsConsole console;
  console.SetField(3, "Label", jet::Value());
  console.SetField(4, "Hidden", 7);
  console.Open();
  console.Drag(0, kStation, 5, kNotes);
  const std::string copy = console.Copy();
  console.Paste(QString::fromStdString(copy));
  EXPECT_THAT(console.reporter.reports, IsEmpty());
  EXPECT_THAT(console.said, IsEmpty());
  const db::KeepPosition keep(*console.stations);
  ASSERT_TRUE(console.stations->Seek(3).ok());
  jet::Value label;
  ASSERT_TRUE(console.stations->Get("Label", &label).ok());
  EXPECT_TRUE(label.IsNull());
  EXPECT_EQ(console.Number(4, "Hidden"), 7);
}

TEST(AlphasPaste, IsRefusedAsAWholeWithTheCellNamed) {
  struct Case {
    int row;
    int column;
    const char* text;
    const char* reason;
  };
  const Case cases[] = {
      {0, kLabel, "MIC\nMIC 45678",
       "Station 2, Station Label: The text is longer than 8 characters."},
      {0, kSystemInput, "a\t123456789012345678901",
       "Station 1, System Output: The text is longer than 20 characters."},
      {3, kLabel, "a\tЖ",
       "Station 4, Input Label: “Ж” is not in code page 1252, which the database is written in."},
      {3, kLabel, "a\nLouÿs",
       "Station 5, Station Label: A label cannot hold “ÿ”: its code ends a message to the "
       "switcher."},
      {3, kLabel, "\"a\nb\"",
       "Station 4, Station Label: The text holds a line break, a tab or another control "
       "character."},
      {0, kInput, "a\tMaybe", "Station 1, Hidden: Only No, Yes, 0 and 1 can stand here."},
      {0, kStation, "1\tMIC\n3\tMIC",
       "Station 2, Station: The number of a station cannot be changed."},
      {126, kLabel, "a\nb\nc",
       "The block reaches beyond the last row: there is room for 2 from here."},
      {5, kNotes, "a\tb", "Station 6: The block reaches beyond the last column."},
      {5, kNotes, "", "There is no text to paste."},
  };
  LabelsConsole console;
  console.Open();
  for (const Case& each : cases) {
    console.reporter.reports.clear();
    console.Click(each.row, each.column);
    console.Paste(QString::fromUtf8(each.text));
    EXPECT_THAT(
        console.reporter.reports,
        ElementsAre("exclamation|Control Error|Nothing was pasted.\n" + std::string(each.reason)));
  }
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001");
  EXPECT_EQ(console.Text(4, "Label"), "Sta. 004");
  EXPECT_EQ(console.Text(127, "Label"), "Ext. 063");
  EXPECT_THAT(console.said, IsEmpty());
}

TEST(AlphasPaste, AllRowsOrNone) {
  LabelsConsole console;
  console.Open();
  // Another program part has taken a record away since.
  {
    const db::KeepPosition keep(*console.stations);
    ASSERT_TRUE(console.stations->Seek(3).ok());
    ASSERT_TRUE(console.stations->Delete().ok());
  }
  console.Click(0, kLabel);
  console.Paste(QStringLiteral("A\nB\nC\nD"));
  ASSERT_EQ(console.reporter.reports.size(), 1U);
  EXPECT_THAT(console.reporter.reports[0],
              HasSubstr("critical|Control Error|Error Storing Station Labels\r\rError # 3021"));
  EXPECT_EQ(console.Text(1, "Label"), "Sta. 001");
  EXPECT_EQ(console.Text(2, "Label"), "Sta. 002");
  EXPECT_EQ(console.Cell(0, kLabel), QStringLiteral("Sta. 001")) << "nothing is drawn";
  EXPECT_THAT(console.said, IsEmpty());
  console.Paste(QStringLiteral("A\nB"));
  EXPECT_EQ(console.Text(1, "Label"), "A") << "the database still takes changes";
  EXPECT_EQ(console.reporter.reports.size(), 1U);
}

TEST(AlphasPaste, StoresTheEditedRowFirst) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Type("A");
  console.Click(0, kInput);
  console.Paste(QStringLiteral("IN\nIN"));
  EXPECT_EQ(console.Text(1, "Label"), "A");
  EXPECT_EQ(console.Text(1, "InLabel"), "IN");
  EXPECT_EQ(console.Text(2, "InLabel"), "IN");
}

TEST(AlphasPaste, InAnEditorItIsTheEditors) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Press(Qt::Key_F2);
  console.Paste(QStringLiteral("123456789"));
  EXPECT_EQ(qobject_cast<QLineEdit*>(console.Editor())->text(), QStringLiteral("Sta. 001"))
      << "not cut to eight";
  console.Paste(QStringLiteral("MIC"));
  console.Press(Qt::Key_Return);
  EXPECT_EQ(console.Text(1, "Label"), "MIC");
}

TEST(AlphasPaste, NotesSayWhatDoesNotTravelWell) {
  LabelsConsole console;
  console.Open();
  console.Click(0, kLabel);
  console.Paste(QStringLiteral("MIC\nMÜLLER"));
  EXPECT_THAT(
      console.said,
      ElementsAre("edited 1 1", "edited 1 2",
                  "note Station 2: “Ü” does not travel well on a line of 7-bit data", "labels"));
}

}  // namespace
