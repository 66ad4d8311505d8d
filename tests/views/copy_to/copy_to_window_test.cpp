// SPDX-License-Identifier: MIT

#include "views/copy_to/copy_to_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <string>
#include <vector>

#include "tests/support/recording_changes.h"
#include "tests/support/small_database.h"
#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::Flags;
using testing::ElementsAre;
using testing::IsEmpty;

// The window as it is asked for in the programming view, at station 1 of 64.
class CopyToWindowTest : public testing::Test {
 protected:
  CopyToWindowTest() {
    for (const int station : {1, 7}) {
      console_.SetField(station, "B2 Type", 0);
      console_.SetField(station, "B2 First", 1);
      console_.SetField(station, "B2 Prog", Flags({1, 5}));
    }
    console_.SetField(30, "Label", "PANEL A");
    console_.SetField(31, "Label", "PANEL B");
    console_.Open();
  }

  QDialog& Ask() {
    console_.Find<QAction>(QStringLiteral("aidCopyToStations")).trigger();
    window_ = test::ShownDialogs(*console_.window, "frmCopyTo").value(0);
    if (window_ == nullptr) throw std::runtime_error("there is no frmCopyTo");

    return *window_;
  }

  template <typename Part = QWidget>
  Part& Find(const char* name) const {
    return test::Find<Part>(*window_, name);
  }
  QTreeWidgetItem& Row(int station) const {
    return *Find<QTreeWidget>("lstStations")
                .findItems(QString::number(station), Qt::MatchExactly)
                .front();
  }
  void ClickBox(int station, Qt::KeyboardModifiers modifiers) {
    auto& list = Find<QTreeWidget>("lstStations");
    list.scrollToItem(&Row(station));
    const QRect row = list.visualItemRect(&Row(station));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers,
                      QPoint(row.left() + 10, row.center().y()));
  }
  void Tick(int station) { Row(station).setCheckState(0, Qt::Checked); }
  std::string Remark(int station) const { return Row(station).text(2).toStdString(); }
  std::string Count() const { return Find<QLabel>("aidCopyCount").text().toStdString(); }
  void Press(const char* name) { QTest::mouseClick(&Find(name), Qt::LeftButton); }

  test::ButtonsConsole console_;
  test::RecordingChanges heard_{console_.changes};
  QDialog* window_ = nullptr;
};

TEST_F(CopyToWindowTest, SaysBeforehandWhatEachStationGetsAndHowManyChange) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("Copy To Stations"));
  EXPECT_TRUE(Find<QRadioButton>("optCopyButton").isChecked());
  EXPECT_EQ(Find<QRadioButton>("optCopyButton").text(), QStringLiteral("This &button: 2"));
  EXPECT_EQ(Find<QTreeWidget>("lstStations").topLevelItemCount(), 63) << "all but the station";
  EXPECT_EQ(Remark(3), "TALK 2 → TALK 1, 5");
  EXPECT_EQ(Remark(7), "has it already");
  EXPECT_EQ(Count(), "Tick the stations that are to get it");
  EXPECT_FALSE(Find("cmdOkCopy").isEnabled());
  Tick(7);
  EXPECT_EQ(Count(), "1 station, 0 change, 1 have it already");
  EXPECT_FALSE(Find("cmdOkCopy").isEnabled()) << "there is nothing to do";
  Tick(3);
  Tick(4);
  EXPECT_EQ(Count(), "3 stations, 2 change, 1 have it already");
  EXPECT_THAT(heard_.seen, IsEmpty()) << "nothing is stored before it is asked for";
}

TEST_F(CopyToWindowTest, IsOneActStoredAndSendsNothing) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  for (const int station : {3, 4, 7}) Tick(station);
  Press("cmdOkCopy");
  EXPECT_EQ(heard_.times, 1);
  EXPECT_THAT(heard_.Take(), ElementsAre("operator 3: B2 Prog " + Flags({2}) + " > " +
                                             Flags({1, 5}) + ", B2 First 2 > 1",
                                         "operator 4: B2 Prog " + Flags({2}) + " > " +
                                             Flags({1, 5}) + ", B2 First 2 > 1"));
  EXPECT_EQ(console_.Text(3, "B2 Prog"), Flags({1, 5}));
  EXPECT_THAT(console_.told, testing::Not(testing::Contains(testing::StartsWith("sent"))));
  EXPECT_THAT(console_.told,
              testing::Contains("note Button 2 of station 1 copied: 2 of 3 stations changed"));
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmCopyTo"), IsEmpty());
  EXPECT_EQ(console_.CurrentStation(), 1);
}

TEST_F(CopyToWindowTest, ThePageInSightIsWhatIsProposedThere) {
  console_.GoToTab(2);
  Ask();
  EXPECT_TRUE(Find<QRadioButton>("optCopyPage").isChecked());
  EXPECT_EQ(Find<QRadioButton>("optCopyPage").text(),
            QStringLiteral("This &page: buttons 17 to 32"));
  EXPECT_EQ(Remark(3), "has it already");
  console_.SetField(1, "B17 Prog", Flags({9}));
  Find<QRadioButton>("optCopyAll").click();
  EXPECT_EQ(Remark(3), "2 buttons change");
}

TEST_F(CopyToWindowTest, OnAPageThatNoStationHasTheSelectedButtonIsProposed) {
  console_.GoToTab(5);
  console_.PickButton(20);
  console_.GoToTab(3);
  Ask();
  EXPECT_TRUE(Find<QRadioButton>("optCopyButton").isChecked());
  EXPECT_EQ(Find<QRadioButton>("optCopyButton").text(), QStringLiteral("This &button: 20"));
  EXPECT_EQ(Find<QRadioButton>("optCopyPage").text(),
            QStringLiteral("This &page: buttons 17 to 32"));
}

TEST_F(CopyToWindowTest, RelaysAreProposedOnTheirPage) {
  console_.SetField(1, "Relays", Flags({3}));
  console_.GoToTab(6);
  Ask();
  EXPECT_TRUE(Find<QRadioButton>("optCopyRelays").isChecked());
  EXPECT_FALSE(Find("ckOwnStation").isEnabled());
  EXPECT_EQ(Remark(3), "none → 3");
  Tick(3);
  Press("cmdOkCopy");
  EXPECT_EQ(console_.Text(3, "Relays"), Flags({3}));
}

TEST_F(CopyToWindowTest, WhatPointsAtTheStationPointsAtTheCopysOwnOnDemand) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  Find<QCheckBox>("ckOwnStation").click();
  EXPECT_EQ(Remark(3), "TALK 2 → TALK 3, 5");
  Tick(3);
  Press("cmdOkCopy");
  EXPECT_EQ(console_.Text(3, "B2 Prog"), Flags({3, 5}));
  EXPECT_EQ(console_.Number(3, "B2 First"), 3);
}

TEST_F(CopyToWindowTest, FoundStationsAreTickedTogetherByKeysAlone) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  EXPECT_EQ(window_->focusWidget()->objectName().toStdString(), "txtFindCopy");
  QTest::keyClicks(window_->focusWidget(), QStringLiteral("panel"));
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(window_->isVisible()) << "the list was gone to";
  QTest::keyClick(window_->focusWidget(), Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(window_->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(Find<QLabel>("aidPickedCount").text(), QStringLiteral("2 of 63 ticked, 2 shown"));
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(console_.Text(30, "B2 Prog"), Flags({1, 5}));
  EXPECT_EQ(console_.Text(31, "B2 Prog"), Flags({1, 5}));
  EXPECT_EQ(console_.Text(29, "B2 Prog"), Flags({2}));
}

// Between them is what the mouse did not touch.
TEST_F(CopyToWindowTest, AClickOnABoxWithShiftTicksAllRowsUpToIt) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  ClickBox(21, Qt::NoModifier);
  EXPECT_EQ(Count(), "1 station, 1 change, 0 have it already");
  ClickBox(40, Qt::ShiftModifier);
  EXPECT_EQ(Count(), "20 stations, 20 change, 0 have it already");
  ClickBox(31, Qt::ShiftModifier);
  EXPECT_EQ(Row(31).checkState(0), Qt::Unchecked);
  Press("aidTickNone");
  ClickBox(50, Qt::ShiftModifier);
  EXPECT_EQ(Count(), "1 station, 1 change, 0 have it already") << "no longer from station 31";
}

TEST_F(CopyToWindowTest, WithShiftTheFirstBoxIsTickedAlone) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  ClickBox(21, Qt::ShiftModifier);
  EXPECT_EQ(Count(), "1 station, 1 change, 0 have it already");
}

// A row was selected with Shift; then a screen reader ticks a box.
TEST_F(CopyToWindowTest, ShiftCountsForTheClickThatItWasHeldAtAlone) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  ClickBox(21, Qt::NoModifier);
  auto& list = Find<QTreeWidget>("lstStations");
  const QRect row = list.visualItemRect(&Row(21));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                    QPoint(row.right() - 5, row.center().y()));
  Row(40).setCheckState(0, Qt::Checked);
  EXPECT_EQ(Count(), "2 stations, 2 change, 0 have it already");
}

TEST_F(CopyToWindowTest, TheButtonsTickWhatIsShownAndTheRestKeepsItsTick) {
  Ask();
  Tick(3);
  Find<QLineEdit>("txtFindCopy").setText(QStringLiteral("PANEL"));
  Press("aidTickAll");
  EXPECT_EQ(Find<QLabel>("aidPickedCount").text(), QStringLiteral("3 of 63 ticked, 2 shown"));
  Press("aidTickNone");
  EXPECT_EQ(Find<QLabel>("aidPickedCount").text(), QStringLiteral("1 of 63 ticked, 2 shown"));
  Find<QLineEdit>("txtFindCopy").setText(QStringLiteral("NOBODY"));
  EXPECT_EQ(Find<QLabel>("aidPickedCount").text(),
            QStringLiteral("No station has this number or label"));
  EXPECT_FALSE(Find("aidTickAll").isEnabled());
}

TEST_F(CopyToWindowTest, CancelAndEscapeStoreNothing) {
  Ask();
  Tick(3);
  Press("cmdCancelCopy");
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmCopyTo"), IsEmpty());
  Ask();
  Tick(3);
  QTest::keyClick(window_, Qt::Key_Escape);
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmCopyTo"), IsEmpty());
  EXPECT_THAT(heard_.seen, IsEmpty());
}

// The switcher may send its tables while the window is open.
TEST_F(CopyToWindowTest, NothingIsStoredThatWasNotShown) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  Tick(3);
  console_.SetField(1, "B2 Prog", Flags({9}));
  Press("cmdOkCopy");
  EXPECT_THAT(heard_.seen, IsEmpty());
  EXPECT_EQ(console_.Text(3, "B2 Prog"), Flags({2}));
  EXPECT_EQ(Remark(3), "TALK 2 → TALK 9");
  EXPECT_EQ(Count(), "The stations were changed meanwhile: see what they get now");
  Press("cmdOkCopy");
  EXPECT_EQ(console_.Text(3, "B2 Prog"), Flags({9}));
  EXPECT_EQ(console_.Number(3, "B2 First"), 9);
}

TEST_F(CopyToWindowTest, WhatChangedAtAStationThatIsNotTickedIsInNobodysWay) {
  console_.Find<QWidget>(QStringLiteral("cmdButton_1")).setFocus();
  Ask();
  Tick(3);
  console_.SetField(8, "B2 Type", 3);
  Press("cmdOkCopy");
  EXPECT_EQ(console_.Text(3, "B2 Prog"), Flags({1, 5}));
}

TEST_F(CopyToWindowTest, WhatCannotBeReadIsSaidAndCopiesNothing) {
  test::SmallDatabase without(test::StationsWithout("Relays"));
  for (const int station : {1, 2, 3}) {
    without.AddStation(station, {{"B1 Type", 0}, {"B1 First", 1}, {"B1 Prog", "1"}});
  }
  Services services = console_.Services();
  services.stations = [&without] { return without.Files().Stations(); };
  CopyToWindow window(services, {.station = 1});
  window_ = &window;
  window.show();
  Tick(3);
  EXPECT_EQ(Remark(2), "has it already");
  EXPECT_EQ(Count(), "1 station, 0 change, 1 have it already");
  Find<QRadioButton>("optCopyRelays").click();
  EXPECT_THAT(console_.reporter.reports, testing::SizeIs(1));
  EXPECT_EQ(Remark(2), "");
  EXPECT_EQ(Remark(3), "");
  EXPECT_EQ(Count(), "What is to be copied cannot be read");
  EXPECT_FALSE(Find("cmdOkCopy").isEnabled());
  Find<QRadioButton>("optCopyButton").click();
  EXPECT_EQ(Remark(2), "has it already");
  EXPECT_EQ(Count(), "1 station, 0 change, 1 have it already");
}

TEST_F(CopyToWindowTest, ATickWaitsWhileNoButtonCanPointAtTheStation) {
  Ask();
  Tick(3);
  Tick(4);
  auto& picker = *window_->findChild<StationPicker*>();
  std::vector<StationPicker::Remark> remarks(63);
  remarks[1] = {.text = QStringLiteral("no button can point at it"), .isObstacle = true};
  picker.SetRemarks(remarks);
  EXPECT_THAT(picker.Ticked(), ElementsAre(4));
  EXPECT_EQ(Find<QLabel>("aidPickedCount").text(),
            QStringLiteral("1 of 63 ticked, and 1 that cannot get it"));
  picker.SetRemarks(std::vector<StationPicker::Remark>(63));
  EXPECT_THAT(picker.Ticked(), ElementsAre(3, 4));
  picker.SetRemarks(remarks);
  Press("aidTickNone");
  picker.SetRemarks(std::vector<StationPicker::Remark>(63));
  EXPECT_THAT(picker.Ticked(), IsEmpty());
}

TEST_F(CopyToWindowTest, ARemarkThatLooksLikeMarkupIsShownAsItIs) {
  Ask();
  std::vector<StationPicker::Remark> remarks(63);
  remarks[0].text = QStringLiteral("TALK <b>A</b>");
  window_->findChild<StationPicker*>()->SetRemarks(remarks);
  EXPECT_EQ(Row(2).toolTip(2), QStringLiteral("<pre>TALK &lt;b&gt;A&lt;/b&gt;</pre>"));
}

TEST_F(CopyToWindowTest, WhatIsSaidAnewIsCountedOnce) {
  Ask();
  auto& picker = *window_->findChild<StationPicker*>();
  const QSignalSpy counted(&picker, &StationPicker::TicksChanged);
  Find<QRadioButton>("optCopyAll").click();
  EXPECT_EQ(counted.count(), 1);
}

TEST_F(CopyToWindowTest, WhileTheConsoleIsLockedItIsRefused) {
  console_.locks.LockConsole(true);
  console_.Find<QAction>(QStringLiteral("aidCopyToStations")).trigger();
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmCopyTo"), IsEmpty());
  EXPECT_THAT(console_.reporter.reports, testing::SizeIs(1));
}

TEST_F(CopyToWindowTest, WithoutADatabaseThereIsNothingToCopy) {
  console_.databaseIsOpen = false;
  console_.Find<QAction>(QStringLiteral("aidCopyToStations")).trigger();
  EXPECT_THAT(test::ShownDialogs(*console_.window, "frmCopyTo"), IsEmpty());
}

}  // namespace
}  // namespace views
