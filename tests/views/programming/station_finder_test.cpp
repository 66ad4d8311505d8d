// SPDX-License-Identifier: MIT
//
// The box that goes to a station, and the tips of the buttons.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

#include "tests/views/programming/buttons_console.h"

namespace views {
namespace {

using test::ButtonsConsole;
using test::Flags;
using testing::Contains;

class StationFinderTest : public testing::Test {
 protected:
  StationFinderTest() {
    console_.SetField(37, "Label", "OB VAN");
    console_.SetField(12, "Label", "37 LEFT");
    console_.Open();
  }

  QComboBox& Box() { return console_.Find<QComboBox>(QStringLiteral("aidStation")); }
  std::string Text() { return Box().currentText().toStdString(); }
  void Type(const char* text) {
    console_.view->ShowFind();
    QTest::keyClicks(&Box(), QLatin1String(text));
  }
  void Enter() { QTest::keyClick(&Box(), Qt::Key_Return); }

  ButtonsConsole console_;
};

TEST_F(StationFinderTest, ShowsTheStationAndFollowsTheNavigation) {
  EXPECT_EQ(Text(), "1  Sta. 001");
  console_.Press("cmdNext");
  EXPECT_EQ(Text(), "2  Sta. 002");
}

TEST_F(StationFinderTest, ANumberIsGoneToByTypingItAndTheFocusGoesBack) {
  console_.GoToTab(5);
  QWidget* const before = &console_.Find<QWidget>(QStringLiteral("ckStationSel_0"));
  before->setFocus();
  Type("37");
  Enter();
  EXPECT_EQ(console_.CurrentStation(), 37) << "not the one with 37 in its label";
  EXPECT_EQ(Text(), "37  OB VAN");
  EXPECT_EQ(console_.StationText(), "OB VAN|Inpt 037|37");
  EXPECT_EQ(QApplication::focusWidget(), before);
}

TEST_F(StationFinderTest, APartOfALabelIsEnough) {
  Type("b v");
  Enter();
  EXPECT_EQ(console_.CurrentStation(), 37);
}

TEST_F(StationFinderTest, WhatIsTypedIsCompletedByNumberAndLabel) {
  Type("37");
  QCompleter& completer = *Box().completer();
  completer.setCompletionPrefix(QStringLiteral("37"));
  QStringList found;
  for (int row = 0; completer.setCurrentRow(row); ++row) found += completer.currentCompletion();
  EXPECT_EQ(found, QStringList({QStringLiteral("12  37 LEFT"), QStringLiteral("37  OB VAN")}));
}

// As all commands of the navigation do.
TEST_F(StationFinderTest, AButtonWithoutATargetIsLeftInactive) {
  console_.SetField(1, "B1 Prog", Flags({}));
  Type("5");
  Enter();
  EXPECT_EQ(console_.CurrentStation(), 5);
  EXPECT_EQ(console_.Number(1, "B1 Type"), 254);
  EXPECT_THAT(console_.told,
              Contains("note Button 1 of station 1 has no target and is stored as inactive"));
}

TEST_F(StationFinderTest, AnItemOfTheListIsGoneTo) {
  Box().setFocus();
  Box().showPopup();
  Box().hidePopup();
  Box().setCurrentIndex(4);
  Q_EMIT Box().activated(4);
  EXPECT_EQ(console_.CurrentStation(), 5);
}

TEST_F(StationFinderTest, TheListShowsAllStationsAtOnce) {
  Box().showPopup();
  auto& list = console_.Find<QAbstractItemView>(QStringLiteral("aidStationList"));
  for (const int row : {0, 36, 63}) {
    const QRect item = list.visualRect(list.model()->index(row, 0));
    EXPECT_TRUE(list.viewport()->rect().contains(item)) << row;
    EXPECT_GE(item.width(), list.sizeHintForColumn(0)) << row;
    EXPECT_GE(item.height(), 20) << "it is clicked";
  }
  QTest::mouseMove(list.viewport(), list.visualRect(list.model()->index(36, 0)).center());
  QTest::qWait(QApplication::doubleClickInterval());  // the release of the opening click is ignored
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                    list.visualRect(list.model()->index(36, 0)).center());
  EXPECT_EQ(console_.CurrentStation(), 37);
}

TEST_F(StationFinderTest, ANumberTypedAnywhereIsAStations) {
  for (const char* const from : {"qt_tabwidget_tabbar", "cmdButton_3", "cmdNext"}) {
    auto& before = console_.Find<QWidget>(QLatin1String(from));
    before.setFocus();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("3"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("7"));
    EXPECT_EQ(Box().lineEdit()->text(), QStringLiteral("37")) << from;
    EXPECT_EQ(console_.CurrentStation(), 1) << "nothing moves before Enter";
    Enter();
    EXPECT_EQ(console_.CurrentStation(), 37) << from;
    EXPECT_EQ(QApplication::focusWidget(), &before);
    console_.Press("cmdFirst");
  }
}

TEST_F(StationFinderTest, SpaceAndShortcutsAreNoStations) {
  auto& key = console_.Find<QWidget>(QStringLiteral("cmdNext"));
  key.setFocus();
  QTest::keyClick(&key, Qt::Key_3, Qt::AltModifier);
  QTest::keyClick(&key, Qt::Key_Space);
  EXPECT_EQ(QApplication::focusWidget(), &key);
  EXPECT_EQ(console_.CurrentStation(), 2);
}

TEST_F(StationFinderTest, EscapeAndLeavingGiveBackWhatStoodThere) {
  Type("37");
  QTest::keyClick(&Box(), Qt::Key_Escape);
  EXPECT_EQ(Text(), "1  Sta. 001");
  Type("37");
  Box().completer()->popup()->hide();  // as a click anywhere does
  console_.Find<QWidget>(QStringLiteral("cmdFirst")).setFocus();
  EXPECT_EQ(Text(), "1  Sta. 001");
  EXPECT_EQ(console_.CurrentStation(), 1);
}

TEST_F(StationFinderTest, WhatNobodyHasIsSaidAndStaysForMending) {
  Type("999");
  Enter();
  EXPECT_EQ(console_.CurrentStation(), 1);
  EXPECT_THAT(console_.told, Contains("note No station has the number or label 999"));
  EXPECT_EQ(Box().lineEdit()->selectedText(), QStringLiteral("999"));
}

TEST_F(StationFinderTest, LabelsThatWereEditedAreFoundByTheirNewText) {
  console_.SetField(9, "Label", "NEWS");
  Type("news");
  Enter();
  EXPECT_EQ(console_.CurrentStation(), 9);
}

TEST_F(StationFinderTest, TheWheelGoesNowhere) {
  QWheelEvent wheel(QPointF(5, 5), Box().mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Box(), &wheel);
  EXPECT_EQ(console_.CurrentStation(), 1);
}

TEST_F(StationFinderTest, ANumberThatNobodyHasGoesNowhere) {
  for (const char* const number : {"0", "00", "7777"}) {
    Type(number);
    Enter();
    EXPECT_EQ(console_.CurrentStation(), 1) << number;
    EXPECT_THAT(console_.told,
                Contains("note No station has the number or label " + std::string(number)));
    Box().completer()->popup()->hide();
  }
}

TEST_F(StationFinderTest, TheLabelAsAWholeIsBeforeItsBeginningAndThatBeforeAPart) {
  console_.SetField(20, "Label", "XCAM 1");
  console_.SetField(21, "Label", "CAM 12");
  console_.SetField(22, "Label", "CAM 1");
  console_.SetField(23, "Label", "555");
  const auto go = [this](const char* text) {
    Type(text);
    Enter();
    return console_.CurrentStation();
  };
  EXPECT_EQ(go("cam 1"), 22);
  EXPECT_EQ(go("cam"), 21);
  EXPECT_EQ(go("xc"), 20);
  EXPECT_EQ(go("555"), 23);
  EXPECT_EQ(go("am 12"), 21);
}

TEST_F(StationFinderTest, TheArrowsOpenTheListAndGoNowhereYet) {
  for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp}) {
    console_.view->ShowFind();
    QTest::keyClick(&Box(), static_cast<Qt::Key>(key));
    EXPECT_EQ(console_.CurrentStation(), 1) << key;
    EXPECT_TRUE(Box().view()->isVisible()) << key;
    Box().hidePopup();
  }
  console_.view->ShowFind();
  QTest::keyClick(&Box(), Qt::Key_Down);
  QTest::keyClick(Box().view(), Qt::Key_Down);
  QTest::keyClick(Box().view(), Qt::Key_Return);
  EXPECT_EQ(console_.CurrentStation(), 2);
}

TEST_F(StationFinderTest, AButtonsTipListsItsTargets) {
  console_.SetField(1, "B2 Type", 255);
  console_.SetField(1, "B2 Prog", Flags({2, 12, 37}));
  auto& button = console_.Find<QWidget>(QStringLiteral("cmdButton_1"));
  QHelpEvent rest(QEvent::ToolTip, QPoint(5, 5), button.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&button, &rest);
  EXPECT_EQ(QToolTip::text(), QStringLiteral("Button 2\nGROUP: Sta. 002, 37 LEFT, OB VAN"));
}

}  // namespace
}  // namespace views
