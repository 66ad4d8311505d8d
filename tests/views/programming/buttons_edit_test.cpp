// SPDX-License-Identifier: MIT
//
// What the programming view stores, and what it makes of databases that are not as they should
// be.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::ButtonsConsole;
using test::Flags;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kInactiveNote[] =
    "note Button 1 of station 1 has no target and is stored as inactive";

// The view on the page that edits the selected button.
class EditPage : public testing::Test {
 protected:
  void Open() {
    console_.Open();
    console_.GoToTab(5);
  }

  QLabel& Note() { return console_.Find<QLabel>(QStringLiteral("aidInactiveNote")); }

  ButtonsConsole console_;
};

TEST_F(EditPage, ATickIsStoredAtOnce) {
  Open();
  console_.ClickBox("ckStationSel", 4);
  EXPECT_EQ(console_.Text(1, "B1 Prog"),
            "1000100000000000000000000000000000000000000000000000000000000000");
  EXPECT_EQ(console_.Number(1, "B1 First"), 1);
  console_.ClickBox("ckStationSel", 0);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), Flags({5}));
  EXPECT_EQ(console_.Number(1, "B1 First"), 5);
  EXPECT_EQ(console_.Caption(1), "Sta. 005");
  console_.ClickBox("ckStationSel", 63);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), Flags({5, 64}));
  EXPECT_EQ(console_.Number(1, "B1 Type"), 0);
  EXPECT_EQ(console_.CurrentStation(), 1);
  EXPECT_THAT(console_.told,
              ElementsAre("edited buttons 1", "edited buttons 1", "edited buttons 1"));
}

TEST_F(EditPage, TheLastTargetTakenMakesTheButtonInactiveAtOnce) {
  Open();
  console_.ClickBox("ckStationSel", 0);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), Flags({}));
  EXPECT_EQ(console_.Number(1, "B1 First"), 1);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_EQ(console_.Caption(1), "NONE");
  EXPECT_THAT(console_.told, ElementsAre("edited buttons 1", kInactiveNote));
  // The rest follows at the next refresh; the note says so meanwhile.
  EXPECT_EQ(console_.Type(1), "TALK");
  EXPECT_THAT(console_.Options(), ElementsAre(0));
  EXPECT_EQ(console_.TargetsCaption(), "Station(s) To Be Called Upon Button Press");
  EXPECT_TRUE(Note().isVisible());
  EXPECT_EQ(Note().text(), QStringLiteral("Stored as inactive"));
  EXPECT_EQ(Note().toolTip(),
            QStringLiteral("Button 1 has no target left, so it is stored as inactive, whatever is "
                           "shown here. Choose its operation again when it has a target."));
  console_.view->UpdateButtonTypes();
  EXPECT_EQ(console_.Type(1), "NULL");
  EXPECT_TRUE(Note().isVisible()) << "the options are as they were";
}

TEST_F(EditPage, TheNoteIsInSightInANarrowView) {
  Open();
  console_.subWindow->resize(433, 433);
  console_.ClickBox("ckStationSel", 0);
  QCoreApplication::sendPostedEvents();
  const QWidget& viewport =
      *console_.view->findChild<QTabWidget*>()->currentWidget()->findChild<QWidget*>(
          QStringLiteral("qt_scrollarea_viewport"));
  ASSERT_TRUE(Note().isVisible());
  EXPECT_GE(Note().width(), Note().sizeHint().width());
  EXPECT_TRUE(viewport.rect().contains(QRect(Note().mapTo(&viewport, QPoint()), Note().size())));
}

TEST_F(EditPage, AnotherTabRefreshesNothingOfAButtonThatBecameInactive) {
  Open();
  console_.ClickBox("ckStationSel", 0);
  console_.GoToTab(1);
  EXPECT_EQ(console_.Type(1), "TALK");
  EXPECT_EQ(console_.Caption(1), "NONE");
  console_.GoToTab(5);
  EXPECT_EQ(console_.Type(1), "TALK");
  EXPECT_THAT(console_.Options(), ElementsAre(0));
  EXPECT_EQ(console_.TargetsCaption(), "Station(s) To Be Called Upon Button Press");
  EXPECT_TRUE(Note().isVisible());
}

// What is selected then is shown as it is stored; the one that is left waits for a refresh.
TEST_F(EditPage, AnotherButtonRefreshesNothingOfOneThatBecameInactive) {
  Open();
  console_.ClickBox("ckStationSel", 0);
  console_.PickButton(2);
  EXPECT_EQ(console_.Type(1), "TALK");
  EXPECT_EQ(console_.Type(2), "TALK");
  EXPECT_FALSE(Note().isVisible()) << "button 2 is shown as it is stored";
  console_.ClickBox("ckStationSel", 1);
  EXPECT_TRUE(Note().isVisible());
  console_.GoToTab(1);
  console_.Press("cmdButton_2");
  EXPECT_EQ(console_.Type(2), "TALK");
  EXPECT_EQ(console_.Number(1, "B2 Type"), 254);
  EXPECT_EQ(console_.Type(3), "TALK");
  console_.PickButton(1);
  EXPECT_EQ(console_.Type(1), "NULL");
  EXPECT_THAT(console_.Options(), ElementsAre(254));
  EXPECT_EQ(console_.TargetsCaption(), "Button Specified Inactive");
  EXPECT_FALSE(Note().isVisible());
}

TEST_F(EditPage, NavigationShowsAButtonThatBecameInactiveAsItIsStored) {
  Open();
  console_.ClickBox("ckStationSel", 0);
  console_.Press("cmdNext");
  EXPECT_FALSE(Note().isVisible());
  EXPECT_THAT(console_.Options(), ElementsAre(0));
  console_.Press("cmdPrev");
  EXPECT_EQ(console_.Type(1), "NULL");
  EXPECT_THAT(console_.Options(), ElementsAre(254));
  EXPECT_FALSE(Note().isVisible());
}

TEST_F(EditPage, AButtonMadeInactiveByAnotherTabHasTheNoteToo) {
  console_.SetField(1, "B1 Prog", Flags({}));
  Open();  // by way of a page of buttons
  EXPECT_THAT(console_.Options(), ElementsAre(0));
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_TRUE(Note().isVisible());
  console_.ChooseOption(1);
  EXPECT_FALSE(Note().isVisible());
  console_.GoToTab(6);
  console_.GoToTab(5);
  EXPECT_TRUE(Note().isVisible());
}

TEST_F(EditPage, ATargetInPlaceOfTheLastOneNeedsItsOperationAgain) {
  Open();
  console_.ClickBox("ckStationSel", 0);
  console_.ClickBox("ckStationSel", 4);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), Flags({5}));
  EXPECT_EQ(console_.Number(1, "B1 First"), 5);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_THAT(console_.Options(), ElementsAre(0));
  EXPECT_TRUE(Note().isVisible()) << "until its operation is chosen";
  console_.ChooseOption(0);
  EXPECT_FALSE(Note().isVisible());
  EXPECT_EQ(console_.Number(1, "B1 Type"), 0);
  EXPECT_EQ(console_.Type(1), "TALK");
  EXPECT_EQ(console_.Caption(1), "Sta. 005");
}

TEST_F(EditPage, AnExternalTargetIsCaptionedWithTheLabelBehindTheStations) {
  console_.SetField(69, "Label", "Truck 5");
  Open();
  console_.ChooseOption(3);
  console_.ClickBox("ckStationSel", 4);
  console_.ClickBox("ckStationSel", 0);
  EXPECT_EQ(console_.Number(1, "B1 First"), 5);
  EXPECT_EQ(console_.Caption(1), "Truck 5");
}

TEST_F(EditPage, ATargetWithoutARecordIsCaptionedNone) {
  console_.GoToStation(64);
  while (!console_.stations->Eof()) {
    ASSERT_TRUE(console_.stations->MoveNext().ok());
    if (!console_.stations->Eof()) {
      ASSERT_TRUE(console_.stations->Delete().ok());
    }
  }
  console_.GoToStation(1);
  Open();
  console_.ChooseOption(3);
  EXPECT_EQ(console_.Caption(1), "NONE");
  console_.ClickBox("ckStationSel", 1);
  EXPECT_EQ(console_.Caption(1), "NONE");
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(EditPage, ATypeIsStoredAtOnceAndOnlyForTheSelectedButton) {
  Open();
  console_.PickButton(7);
  console_.ChooseOption(255);
  EXPECT_EQ(console_.Number(1, "B7 Type"), 255);
  EXPECT_EQ(console_.Type(7), "GROUP");
  for (const char* const field : {"B1 Type", "B6 Type", "B8 Type", "B32 Type"}) {
    EXPECT_EQ(console_.Number(1, field), 0) << field;
  }
  EXPECT_EQ(console_.Number(2, "B7 Type"), 0);
  EXPECT_THAT(console_.told, ElementsAre("edited buttons 1"));
  console_.ChooseOption(255);
  EXPECT_THAT(console_.told, ElementsAre("edited buttons 1")) << "nothing is new";
}

TEST_F(EditPage, AButtonWithoutTargetsIsStoredInactiveWhenTheStationChanges) {
  console_.SetField(1, "B1 Prog", Flags({}));
  console_.SetField(1, "B1 Type", 1);
  console_.SetField(1, "B1 First", 9);
  Open();
  console_.told.clear();
  console_.SetField(1, "B1 Type", 1);
  console_.Press("cmdNext");
  EXPECT_EQ(console_.CurrentStation(), 2);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_EQ(console_.Number(1, "B1 First"), 1);
  EXPECT_EQ(console_.Number(2, "B1 Type"), 0);
  EXPECT_THAT(console_.told, ElementsAre("edited buttons 1", kInactiveNote));
}

TEST_F(EditPage, TheSameWhenTheTabChanges) {
  console_.SetField(1, "B1 Prog", "");
  console_.Open();
  console_.GoToTab(6);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_EQ(console_.Number(1, "B1 First"), 1);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), "") << "only what is said";
  EXPECT_EQ(console_.Type(1), "TALK") << "until the next refresh";
  EXPECT_THAT(console_.told, ElementsAre("edited buttons 1", kInactiveNote));
}

TEST_F(EditPage, TheSameWhenAnotherButtonIsSelected) {
  console_.SetField(1, "B2 Prog", Flags({}));
  Open();
  console_.PickButton(2);
  EXPECT_EQ(console_.Number(1, "B2 Type"), 0) << "it is only shown";
  console_.ChooseOption(1);
  EXPECT_EQ(console_.Number(1, "B2 Type"), 1);
  console_.PickButton(3);
  EXPECT_EQ(console_.Number(1, "B2 Type"), 254);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 0);
  EXPECT_EQ(console_.Number(1, "B3 Type"), 0);
}

TEST_F(EditPage, EveryCommandOfTheNavigationAppliesTheRuleFirst) {
  Open();
  for (const char* const command :
       {"cmdFirst", "cmdPrev", "cmdBack10", "cmdFwd10", "cmdNext", "cmdLast"}) {
    console_.GoToStation(30);
    console_.SetField(30, "B1 Prog", Flags({}));
    console_.SetField(30, "B1 Type", 2);
    console_.Press(command);
    EXPECT_EQ(console_.Number(30, "B1 Type"), 254) << command;
    EXPECT_NE(console_.CurrentStation(), 30) << command;
  }
}

TEST_F(EditPage, RelaysAreStoredAtOnce) {
  console_.Open();
  console_.GoToTab(6);
  console_.ClickBox("ckRelaySel", 8);
  EXPECT_EQ(console_.Text(1, "Relays"), Flags({9}));
  console_.ClickBox("ckRelaySel", 63);
  EXPECT_EQ(console_.Text(1, "Relays"), Flags({9, 64}));
  console_.ClickBox("ckRelaySel", 8);
  EXPECT_EQ(console_.Text(1, "Relays"), Flags({64}));
  EXPECT_EQ(console_.Text(2, "Relays"), Flags({}));
  EXPECT_THAT(console_.told, Each("edited relays 1"));
  EXPECT_THAT(console_.told, SizeIs(3));
}

TEST_F(EditPage, FlagStringsOfAnyLengthAreShownAndStoredWellFormed) {
  console_.SetField(1, "B1 Prog", "0x1");
  console_.SetField(1, "B2 Prog", Flags({2}) + "1?");
  console_.SetField(1, "B3 Prog", jet::Value());
  console_.SetField(1, "Relays", jet::Value());
  Open();
  EXPECT_THAT(console_.Ticked("ckStationSel"), ElementsAre(2));
  console_.ClickBox("ckStationSel", 3);
  EXPECT_EQ(console_.Text(1, "B1 Prog"), Flags({3, 4}));
  console_.PickButton(2);
  EXPECT_THAT(console_.Ticked("ckStationSel"), ElementsAre(1));
  console_.ClickBox("ckStationSel", 0);
  EXPECT_EQ(console_.Text(1, "B2 Prog"), Flags({1, 2}) + "1?");
  console_.PickButton(3);
  EXPECT_THAT(console_.Ticked("ckStationSel"), IsEmpty());
  console_.ClickBox("ckStationSel", 9);
  EXPECT_EQ(console_.Text(1, "B3 Prog"), Flags({10}));
  console_.GoToTab(6);
  EXPECT_THAT(console_.Ticked("ckRelaySel"), IsEmpty());
  console_.ClickBox("ckRelaySel", 1);
  EXPECT_EQ(console_.Text(1, "Relays"), Flags({2}));
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(EditPage, ATypeOutsideTheTableStaysUntilAnotherIsChosen) {
  console_.SetField(1, "B1 Type", 77);
  console_.SetField(2, "B1 Type", -4);
  Open();
  EXPECT_THAT(console_.Options(), IsEmpty());
  EXPECT_EQ(console_.Type(1), "NULL");
  EXPECT_EQ(console_.TypeColour(1), QColor(0x80, 0x80, 0x80));
  console_.Press("cmdNext");
  EXPECT_THAT(console_.Options(), IsEmpty());
  EXPECT_EQ(console_.TargetsCaption(), "Button Specified Inactive");
  EXPECT_EQ(console_.Caption(1), "INACTIVE");
  EXPECT_EQ(console_.Find<QCheckBox>("ckStationSel", 0).text(), QLatin1String("Chan 01"));
  console_.ClickBox("ckStationSel", 1);
  EXPECT_EQ(console_.Number(2, "B1 Type"), -4);
  console_.Press("cmdPrev");
  EXPECT_EQ(console_.Number(1, "B1 Type"), 77);
  EXPECT_EQ(console_.Number(2, "B1 Type"), -4);
  console_.ChooseOption(0);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 0);
}

TEST_F(EditPage, NullFieldsAreShownAsNothing) {
  for (const char* const field : {"Label", "InLabel", "B1 Type", "B1 First", "B1 Prog", "Relays"}) {
    console_.SetField(2, field, jet::Value());
  }
  console_.GoToStation(2);
  console_.Open();
  EXPECT_EQ(console_.StationText(), "||2");
  EXPECT_EQ(console_.Caption(1), "NONE");
  EXPECT_EQ(console_.Caption(2), "NONE") << "of a station without a label";
  EXPECT_THAT(console_.Ticked("ckStationSel"), IsEmpty());
  EXPECT_EQ(console_.Find<QCheckBox>("ckStationSel", 1).text(), QLatin1String("Sta. 002"));
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
  console_.Press("cmdNext");
  EXPECT_EQ(console_.Number(2, "B1 Type"), 254);
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST(ButtonsWithoutStations, AreShownEmptyWithOneReportEach) {
  ButtonsConsole console;
  while (console.stations->HasRecord()) {
    ASSERT_TRUE(console.stations->Delete().ok());
    ASSERT_TRUE(console.stations->MoveNext().ok());
  }
  console.Open();
  EXPECT_THAT(console.reporter.reports,
              ElementsAre(HasSubstr("critical|Control Error|Error Reading Station Record\r\rError "
                                    "# 3021 - ")));
  EXPECT_EQ(console.StationText(), "||");
  EXPECT_EQ(console.Caption(1), "NONE");
  EXPECT_EQ(console.Type(1), "NULL");
  EXPECT_THAT(console.Options(), IsEmpty());
  console.reporter.reports.clear();
  console.GoToTab(5);
  console.reporter.reports.clear();
  console.ClickBox("ckStationSel", 5);
  EXPECT_THAT(console.reporter.reports, ElementsAre(HasSubstr("Error Storing Button Programming")));
  EXPECT_THAT(console.Ticked("ckStationSel"), IsEmpty()) << "it was not stored";
  console.reporter.reports.clear();
  console.ChooseOption(1);
  EXPECT_THAT(console.reporter.reports, ElementsAre(HasSubstr("Error Storing Button Programming")));
  EXPECT_THAT(console.Options(), IsEmpty());
  for (const char* const command : {"cmdFirst", "cmdNext", "cmdLast"}) {
    console.reporter.reports.clear();
    console.Press(command);
    EXPECT_THAT(console.reporter.reports, SizeIs(1)) << command;
  }
  console.reporter.reports.clear();
  console.ClickTool("ID_SendSingleStation");
  EXPECT_THAT(console.reporter.reports, SizeIs(1));
  EXPECT_THAT(console.tables.traffic, IsEmpty());
  EXPECT_THAT(console.told, IsEmpty());
}

TEST(ButtonsWithoutDatabase, AreShownEmptyWithOneReportEach) {
  ButtonsConsole console;
  console.databaseIsOpen = false;
  ButtonsView& view = console.Open();
  EXPECT_THAT(console.reporter.reports, ElementsAre(HasSubstr("Control Error")));
  console.reporter.reports.clear();
  for (int i = 0; i < 30; ++i) view.UpdateStation();
  EXPECT_THAT(console.reporter.reports, IsEmpty()) << "it was said when the view was opened";
  console.GoToTab(6);
  console.reporter.reports.clear();
  console.ClickBox("ckRelaySel", 5);
  EXPECT_THAT(console.reporter.reports, ElementsAre(HasSubstr("Error Storing Relay Assignment")));
  EXPECT_THAT(console.Ticked("ckRelaySel"), IsEmpty());
  console.reporter.reports.clear();
  console.Press("cmdFwd10");
  EXPECT_THAT(console.reporter.reports, SizeIs(1));
  console.GoToTab(1);
  console.reporter.reports.clear();
  console.Press("cmdButton_4");
  EXPECT_EQ(console.Tab(), 5);
  EXPECT_THAT(console.reporter.reports, SizeIs(1)) << "selected, and shown on another page";
  console.databaseIsOpen = true;
  console.reporter.reports.clear();
  view.UpdateStation();
  EXPECT_EQ(console.StationText(), "Sta. 001|Inpt 001|1");
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

TEST(ButtonsOnEightRecords, HaveNumbersForTheOthers) {
  ButtonsConsole console;
  console.model.StationCount = 8;
  console.GoToStation(8);
  while (!console.stations->Eof()) {
    ASSERT_TRUE(console.stations->MoveNext().ok());
    if (!console.stations->Eof()) {
      ASSERT_TRUE(console.stations->Delete().ok());
    }
  }
  console.GoToStation(1);
  console.Open();
  EXPECT_EQ(console.Caption(8), "Sta. 008");
  EXPECT_EQ(console.Caption(9), "NONE");
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 7).text(), QLatin1String("Sta. 008"));
  EXPECT_EQ(console.Find<QCheckBox>("ckStationSel", 63).text(), QLatin1String("Sta. 064"));
  console.Press("cmdFwd10");
  EXPECT_EQ(console.CurrentStation(), 8);
  EXPECT_THAT(console.reporter.reports, IsEmpty());
}

}  // namespace
}  // namespace views
