// SPDX-License-Identifier: MIT

#include "views/programming/target_boxes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <string>
#include <utility>
#include <vector>

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// The boxes in an active window, between two fields that take the focus.
class Boxes : public testing::Test {
 protected:
  Boxes() {
    auto* const column = new QVBoxLayout(&window_);
    before_.setFocusPolicy(Qt::StrongFocus);
    after_.setFocusPolicy(Qt::StrongFocus);
    column->addWidget(&before_);
    column->addWidget(&frame_);
    column->addWidget(&after_);
    std::vector<std::string> captions;
    for (int i = 1; i <= 64; ++i) captions.push_back("Label " + std::to_string(i));
    frame_.SetCaptions(captions);
    QObject::connect(&frame_, &TargetBoxes::Toggled, &frame_,
                     [this](int index, bool checked) { toggled_.emplace_back(index, checked); });
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QCheckBox& Box(int index) {
    return *frame_.findChild<QCheckBox*>(QStringLiteral("ckStationSel_%1").arg(index));
  }
  std::vector<int> Ticked() {
    std::vector<int> indexes;
    for (int i = 0; i < 64; ++i) {
      if (Box(i).isChecked()) indexes.push_back(i);
    }
    return indexes;
  }
  QString Count() {
    return frame_.findChild<QLabel*>(QStringLiteral("aidfrStationsCount"))->text();
  }
  static void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

  QWidget window_;
  QWidget before_{&window_};
  TargetBoxes frame_{QStringLiteral("frStations"), QStringLiteral("ckStationSel"), 64, &window_};
  QWidget after_{&window_};
  std::vector<std::pair<int, bool>> toggled_;
};

TEST_F(Boxes, TheTitleDoesNotLookFocused) {
  const auto title = [this] {
    return frame_.grab(QRect(0, 0, frame_.width(), Box(0).y())).toImage();
  };
  frame_.setTitle(QStringLiteral("Stations"));
  before_.setFocus(Qt::TabFocusReason);
  const QImage before = title();
  Press(Qt::Key_Tab);
  ASSERT_TRUE(Box(0).hasFocus());
  EXPECT_EQ(title(), before);
}

TEST_F(Boxes, StandInRowsOfEight) {
  EXPECT_EQ(frame_.objectName(), QLatin1String("frStations"));
  EXPECT_EQ(frame_.Count(), 64);
  EXPECT_EQ(frame_.findChildren<QCheckBox*>().size(), 64);
  for (int i = 0; i < 64; ++i) {
    EXPECT_EQ(Box(i).x(), Box(i % 8).x()) << i;
    EXPECT_EQ(Box(i).y(), Box(i - i % 8).y()) << i;
    EXPECT_GE(Box(i).height(), 20) << i;
  }
  EXPECT_LT(Box(0).x(), Box(7).x());
  EXPECT_LT(Box(7).y(), Box(8).y());
}

TEST_F(Boxes, CaptionsAreShownAsTheyAre) {
  frame_.SetCaptions({"A&B", "",
                      "S\xC3\x9C"
                      "D"});
  EXPECT_EQ(Box(0).text(), QLatin1String("A&&B"));
  EXPECT_EQ(Box(1).text(), QString());
  EXPECT_EQ(Box(2).text(), QString::fromUtf8("S\xC3\x9C"
                                             "D"));
  EXPECT_EQ(Box(3).text(), QLatin1String("Label 4"));
  frame_.SetCaptions(std::vector<std::string>(80, "X"));
  EXPECT_EQ(Box(63).text(), QLatin1String("X"));
}

TEST_F(Boxes, WideCharactersFit) {
  frame_.resize(700, frame_.height());
  const auto widths = [this](int index) {
    const int caption = Box(index).fontMetrics().horizontalAdvance(Box(index).text());
    const int indicator = Box(index).style()->pixelMetric(QStyle::PM_IndicatorWidth);
    return std::pair(caption + indicator, Box(index).width());
  };
  const auto [letters, roomBefore] = widths(6);
  ASSERT_LT(letters, roomBefore);
  const QFont font = Box(0).font();
  const QString signs(8, QChar(0x4DC0));  // of six lines
  const QFontMetrics metrics(font);
  ASSERT_GT(metrics.horizontalAdvance(signs), roomBefore);
  frame_.SetCaptions({signs.toStdString()});
  const auto [wide, room] = widths(0);
  EXPECT_LE(wide, room);
  EXPECT_LT(Box(0).font().pointSizeF(), font.pointSizeF());
  EXPECT_EQ(Box(6).font(), Box(0).font()) << "all look the same";
  frame_.SetCaptions({"Label 1"});
  EXPECT_EQ(Box(0).font(), font);
}

TEST_F(Boxes, FlagsTickWithoutAWord) {
  frame_.SetFlags("101" + std::string(60, '0') + "1" + "1111");
  EXPECT_THAT(Ticked(), ElementsAre(0, 2, 63));
  EXPECT_EQ(Count(), QLatin1String("3 of 64"));
  frame_.SetFlags("0x1 2");
  EXPECT_THAT(Ticked(), ElementsAre(2));
  EXPECT_EQ(Count(), QLatin1String("1 of 64"));
  frame_.SetFlags("");
  EXPECT_THAT(Ticked(), IsEmpty());
  EXPECT_EQ(Count(), QLatin1String("0 of 64"));
  EXPECT_THAT(toggled_, IsEmpty());
}

TEST_F(Boxes, ClicksAreTold) {
  frame_.SetFlags("01");
  QTest::mouseClick(&Box(5), Qt::LeftButton, Qt::NoModifier, QPoint(8, Box(5).height() / 2));
  QTest::mouseClick(&Box(1), Qt::LeftButton, Qt::NoModifier, QPoint(8, Box(1).height() / 2));
  EXPECT_THAT(toggled_, ElementsAre(Pair(5, true), Pair(1, false)));
  EXPECT_EQ(Count(), QLatin1String("1 of 64"));
}

TEST_F(Boxes, TheCountStandsInTheCornerOfTheFrame) {
  auto& count = *frame_.findChild<QLabel*>(QStringLiteral("aidfrStationsCount"));
  frame_.SetFlags(std::string(64, '1'));
  EXPECT_EQ(count.text(), QLatin1String("64 of 64"));
  EXPECT_LE(count.geometry().right(), frame_.width());
  EXPECT_GT(count.x(), frame_.width() / 2);
  EXPECT_LT(count.geometry().center().y(), Box(0).y());
  window_.resize(window_.width() + 100, window_.height());
  EXPECT_GT(count.geometry().right(), frame_.width() - 10);
}

TEST_F(Boxes, KeysGoFromBoxToBox) {
  before_.setFocus();
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &Box(0));
  for (const auto& [key, index] : std::vector<std::pair<Qt::Key, int>>{{Qt::Key_Left, 0},
                                                                       {Qt::Key_Up, 0},
                                                                       {Qt::Key_Right, 1},
                                                                       {Qt::Key_Down, 9},
                                                                       {Qt::Key_End, 15},
                                                                       {Qt::Key_Right, 15},
                                                                       {Qt::Key_Home, 8},
                                                                       {Qt::Key_Up, 0},
                                                                       {Qt::Key_End, 7},
                                                                       {Qt::Key_Down, 15}}) {
    Press(key);
    EXPECT_EQ(QApplication::focusWidget(), &Box(index)) << key;
  }
  for (int i = 0; i < 10; ++i) Press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &Box(63));
  EXPECT_THAT(toggled_, IsEmpty());
  Press(Qt::Key_Space);
  EXPECT_THAT(toggled_, ElementsAre(Pair(63, true)));
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &after_);
  Press(Qt::Key_Backtab);
  EXPECT_EQ(QApplication::focusWidget(), &Box(63)) << "the box used last";
}

TEST_F(Boxes, WithShiftAnArrowTakesTheTickAlong) {
  Box(8).setFocus();
  Press(Qt::Key_Space);
  for (int i = 0; i < 5; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right, Qt::ShiftModifier);
  }
  EXPECT_THAT(Ticked(), ElementsAre(8, 9, 10, 11, 12, 13));
  EXPECT_THAT(toggled_, ElementsAre(Pair(8, true), Pair(9, true), Pair(10, true), Pair(11, true),
                                    Pair(12, true), Pair(13, true)));
  toggled_.clear();
  Press(Qt::Key_Right);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_THAT(toggled_, ElementsAre(Pair(13, false))) << "or that there is none";
  toggled_.clear();
  Press(Qt::Key_Home);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_THAT(toggled_, IsEmpty()) << "there is no other box on this side";
}

// They would skip what lies between.
TEST_F(Boxes, WithShiftTheKeysToTheEndsTakeNothingAlong) {
  Box(10).setFocus();
  Press(Qt::Key_Space);
  toggled_.clear();
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End}) {
    QTest::keyClick(QApplication::focusWidget(), key, Qt::ShiftModifier);
    EXPECT_TRUE(Box(10).hasFocus()) << key;
    EXPECT_THAT(toggled_, IsEmpty()) << key;
  }
  EXPECT_THAT(Ticked(), ElementsAre(10));
}

TEST_F(Boxes, SayWhichTheyAre) {
  frame_.SetSpokenName(QStringLiteral("Target %1 of button 5"));
  EXPECT_EQ(Box(6).accessibleName(), QLatin1String("Target 7 of button 5: Label 7"));
  frame_.SetCaptions({"A&B"});
  EXPECT_EQ(Box(0).accessibleName(), QLatin1String("Target 1 of button 5: A&B"));
}

}  // namespace
}  // namespace views
