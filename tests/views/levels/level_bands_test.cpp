// SPDX-License-Identifier: MIT
//
// The four bands of sliders: what shows, what scrolls them, where the keys lead.

#include <gtest/gtest.h>

#include <QApplication>
#include <QWheelEvent>

#include "tests/views/levels/levels_console.h"

namespace test {
namespace {

class LevelBandsTest : public testing::Test {
 protected:
  LevelBandsTest() { console_.Open(); }

  // Turns the wheel over a widget; 120 is one notch away from the operator.  Only what comes
  // from outside is passed on to the parents of who does not want it.
  static void Wheel(QWidget& widget, int angle) {
    const QPointF at = QRectF(widget.rect()).center();
    QWheelEvent event(at, widget.mapToGlobal(at), QPoint(), QPoint(0, angle), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&widget, &event);
  }

  // Whether the whole slider shows.
  bool Shows(int index) {
    QSlider& slider = console_.Slider(index);
    return slider.visibleRegion().boundingRect() == slider.rect();
  }
  int PanelTop() { return console_.Find<QWidget>(QStringLiteral("pctSliders")).y(); }
  static std::string Focus() {
    QWidget* const widget = QApplication::focusWidget();
    return widget == nullptr ? "nothing" : widget->objectName().toStdString();
  }

  LevelsConsole console_;
};

TEST_F(LevelBandsTest, EachStepOfTheScrollBarShowsTheNextBand) {
  EXPECT_EQ(console_.Scroll().minimum(), 0);
  EXPECT_EQ(console_.Scroll().maximum(), 2);
  EXPECT_EQ(PanelTop(), -3);
  for (const int top : {-3, -179, -355}) {
    const int step = -top / 176;
    console_.Scroll().setValue(step);
    EXPECT_EQ(PanelTop(), top);
    for (int index = 0; index < 64; ++index) {
      const int band = index / 16;
      EXPECT_EQ(Shows(index), band == step || band == step + 1) << "slider " << index;
    }
  }
}

TEST_F(LevelBandsTest, ALargerWindowShowsMoreBandsUpToAllFour) {
  QWidget& dialog = *console_.dialog;
  const QSize least = dialog.size();
  EXPECT_EQ(dialog.minimumSize(), least) << "two bands, as ever";
  dialog.resize(least.width() + 300, least.height() + 176);
  EXPECT_EQ(dialog.width(), least.width());
  EXPECT_EQ(console_.Scroll().maximum(), 1);
  EXPECT_TRUE(Shows(47));
  console_.Scroll().setValue(1);
  EXPECT_EQ(PanelTop(), -179);
  EXPECT_TRUE(Shows(63));
  dialog.resize(least.width(), 4000);
  EXPECT_EQ(dialog.height(), least.height() + 2 * 176);
  EXPECT_EQ(console_.Scroll().maximum(), 0);
  EXPECT_EQ(PanelTop(), -3);
  for (int index = 0; index < 64; ++index) EXPECT_TRUE(Shows(index)) << index;
  dialog.resize(least);
  EXPECT_EQ(console_.Scroll().maximum(), 2);
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(LevelBandsTest, TheWheelScrollsTheBandsAndNeverASlider) {
  console_.Slider(20).setFocus();
  Wheel(console_.Slider(20), -120);
  EXPECT_EQ(console_.Scroll().value(), 1);
  Wheel(console_.Scroll(), -120);
  EXPECT_EQ(console_.Scroll().value(), 2);
  Wheel(console_.Slider(40), -120);
  EXPECT_EQ(console_.Scroll().value(), 2);
  Wheel(console_.Find<QLabel>(QStringLiteral("lblLevel_40")), 120);
  EXPECT_EQ(console_.Scroll().value(), 1);
  EXPECT_EQ(console_.port.TakeWritten(), "");
  for (int index = 0; index < 64; ++index) EXPECT_EQ(console_.Slider(index).value(), 63);
}

TEST_F(LevelBandsTest, SmallTurnsAddUpToABand) {
  for (int turn = 0; turn < 3; ++turn) Wheel(console_.Slider(0), -30);
  EXPECT_EQ(console_.Scroll().value(), 0);
  Wheel(console_.Slider(0), -30);
  EXPECT_EQ(console_.Scroll().value(), 1);
  // Turned back it acts from where it is.
  Wheel(console_.Slider(0), -90);
  Wheel(console_.Slider(0), 120);
  EXPECT_EQ(console_.Scroll().value(), 0);
}

TEST_F(LevelBandsTest, NothingMovesUntilASliderIsChosen) {
  EXPECT_EQ(Focus(), "cmdClose");
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right}) {
    QTest::keyClick(QApplication::focusWidget(), key);
  }
  EXPECT_EQ(Focus(), "cmdClose");
  EXPECT_EQ(console_.port.TakeWritten(), "");
  // They scroll the bands.
  const auto bandAfter = [this](Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key);
    return console_.Scroll().value();
  };
  EXPECT_EQ(bandAfter(Qt::Key_PageDown), 1);
  EXPECT_EQ(bandAfter(Qt::Key_Down), 2);
  EXPECT_EQ(bandAfter(Qt::Key_PageUp), 1);
  EXPECT_EQ(bandAfter(Qt::Key_Up), 0);
}

TEST_F(LevelBandsTest, TabWalksThroughAllSlidersAndBringsEachIntoView) {
  for (int index = 0; index < 64; ++index) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(Focus(), "Slider1_" + std::to_string(index));
    EXPECT_TRUE(Shows(index)) << index;
  }
  EXPECT_EQ(console_.Scroll().value(), 2);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Focus(), "cmdClose");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Slider1_0");
  EXPECT_TRUE(Shows(0));
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(LevelBandsTest, ControlAndAnArrowGoToTheNeighbour) {
  console_.Slider(0).setFocus();
  const auto go = [](Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier);
    return Focus();
  };
  EXPECT_EQ(go(Qt::Key_Left), "Slider1_0");
  EXPECT_EQ(go(Qt::Key_Up), "Slider1_0");
  EXPECT_EQ(go(Qt::Key_Right), "Slider1_1");
  EXPECT_EQ(go(Qt::Key_Down), "Slider1_17");
  EXPECT_EQ(go(Qt::Key_Down), "Slider1_33");
  EXPECT_TRUE(Shows(33));
  EXPECT_EQ(go(Qt::Key_Down), "Slider1_49");
  EXPECT_EQ(go(Qt::Key_Down), "Slider1_49");
  EXPECT_EQ(go(Qt::Key_Up), "Slider1_33");
  EXPECT_EQ(go(Qt::Key_Left), "Slider1_32");
  EXPECT_EQ(console_.port.TakeWritten(), "");
}

TEST_F(LevelBandsTest, ASliderThatIsMovedOutOfSightComesIntoView) {
  console_.Slider(3).setFocus();
  Wheel(console_.Slider(3), -240);
  EXPECT_FALSE(Shows(3));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
  EXPECT_TRUE(Shows(3));
  EXPECT_EQ(console_.port.TakeWritten(), "E3 03 41 44 FF");
}

TEST_F(LevelBandsTest, TheBandsKeepTheirHeightInALargeFont) {
  QFont large = console_.dialog->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  console_.dialog->setFont(large);
  QCoreApplication::sendPostedEvents();
  for (const int index : {0, 16, 32, 48}) {
    QSlider& slider = console_.Slider(index);
    EXPECT_EQ(slider.mapTo(console_.dialog, QPoint()).y() -
                  console_.Slider(0).mapTo(console_.dialog, QPoint()).y(),
              index / 16 * 176);
    EXPECT_GE(slider.height(), 60);
  }
  EXPECT_EQ(console_.Label("lblInptName", 5), "Inpt 006");
}

}  // namespace
}  // namespace test
