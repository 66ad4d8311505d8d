// SPDX-License-Identifier: MIT

#include "views/tally/tally_dialog.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QGroupBox>
#include <QImage>
#include <QPushButton>
#include <QTest>
#include <map>

#include "tests/views/gui_support.h"

namespace views {
namespace {

class TallyDialogTest : public testing::Test {
 protected:
  void Open(const QDateTime& lastReport = QDateTime()) {
    dialog_ = std::make_unique<TallyDialog>(model_, lastReport);
    dialog_->open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }

  template <typename Widget = QWidget>
  Widget& Find(const QString& name) {
    return test::Find<Widget>(*dialog_, name);
  }
  QWidget& LampOf(int point) { return Find(QStringLiteral("shpQdvResponding_%1").arg(point)); }
  QColor Colour(int point) { return LampOf(point).property("color").value<QColor>(); }
  // The colour that is really there: left of the middle, beside dot and slash.
  QColor Painted(int point) { return PixelAt(point, 5, 11); }
  QColor PixelAt(int point, int x, int y) {
    const QPixmap picture = LampOf(point).grab();
    const double ratio = picture.devicePixelRatio();
    return picture.toImage().pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
  }
  std::string Reported() {
    return Find<QLabel>(QStringLiteral("aidLastReport")).text().toStdString();
  }

  const QColor green_{0, 255, 0};
  const QColor darkRed_{192, 0, 0};
  model::SystemModel model_;
  std::unique_ptr<TallyDialog> dialog_;
};

TEST_F(TallyDialogTest, WithoutAReportEveryLampIsDarkRed) {
  Open();
  EXPECT_EQ(dialog_->objectName(), QStringLiteral("frmQdvTally"));
  EXPECT_TRUE(dialog_->isModal());
  for (int point = 1; point <= 64; ++point) {
    EXPECT_EQ(Colour(point), darkRed_) << point;
    EXPECT_EQ(Painted(point), darkRed_) << point;
    EXPECT_EQ(LampOf(point).accessibleName(), QStringLiteral("QDV %1 not responding").arg(point));
  }
  EXPECT_EQ(Reported(), "No report since start");
}

TEST_F(TallyDialogTest, LampsShowTheModelOneForOne) {
  model_.QdvTally[0] = 1;
  model_.QdvTally[11] = 255;
  model_.QdvTally[62] = -1;
  model_.QdvTally[63] = 128;
  Open();
  for (int point = 1; point <= 64; ++point) {
    const bool on = point == 1 || point == 12 || point == 63 || point == 64;
    EXPECT_EQ(Colour(point), on ? green_ : darkRed_) << point;
    EXPECT_EQ(Painted(point), on ? green_ : darkRed_) << point;
  }
  EXPECT_EQ(LampOf(12).accessibleName(), QStringLiteral("QDV 12 responding"));
  EXPECT_EQ(LampOf(12).toolTip(), QStringLiteral("QDV 12 responding"));
  EXPECT_EQ(LampOf(13).accessibleName(), QStringLiteral("QDV 13 not responding"));
}

TEST_F(TallyDialogTest, TheStateCanBeReadWithoutTheColour) {
  model_.QdvTally[0] = 1;
  Open();
  // A black dot in the middle, against a white slash from corner to corner.
  EXPECT_EQ(PixelAt(1, 11, 11), QColor(Qt::black));
  EXPECT_EQ(PixelAt(1, 14, 7), green_);
  EXPECT_EQ(PixelAt(2, 11, 10), QColor(Qt::white));
  EXPECT_EQ(PixelAt(2, 14, 7), QColor(Qt::white));
}

TEST_F(TallyDialogTest, FourFramesHoldSixteenLampsEachWithTheirNumbers) {
  Open();
  for (int frame = 1; frame <= 4; ++frame) {
    auto& box = Find<QGroupBox>(QStringLiteral("frFrame%1").arg(frame));
    EXPECT_EQ(box.title(), QStringLiteral("Frame %1").arg(frame));
    for (int point = 16 * frame - 15; point <= 16 * frame; ++point) {
      EXPECT_EQ(LampOf(point).parentWidget(), &box) << point;
      auto& label = Find<QLabel>(QStringLiteral("lblQdvResponding_%1").arg(point));
      EXPECT_EQ(label.text(), QString::number(point));
      // The number stands under its lamp.
      const QRect lamp = LampOf(point).geometry();
      EXPECT_GE(label.geometry().top(), lamp.bottom()) << point;
      EXPECT_LE(qAbs(label.geometry().center().x() - lamp.center().x()), 1) << point;
    }
  }
  EXPECT_EQ(dialog_->findChild<QWidget*>(QStringLiteral("shpQdvResponding_0")), nullptr);
}

TEST_F(TallyDialogTest, AReportRecoloursTheOpenView) {
  model_.QdvTally[4] = 1;
  Open();
  model_.QdvTally[4] = 0;
  model_.QdvTally[63] = 1;
  dialog_->UpdateTally(QDateTime(QDate::currentDate(), QTime(12, 3, 44)));
  EXPECT_EQ(Colour(5), darkRed_);
  EXPECT_EQ(Painted(5), darkRed_);
  EXPECT_EQ(LampOf(5).accessibleName(), QStringLiteral("QDV 5 not responding"));
  EXPECT_EQ(Painted(64), green_);
  EXPECT_EQ(Reported(), "Last report 12:03:44");
}

TEST_F(TallyDialogTest, AReportFromBeforeTheViewOpenedKeepsItsTime) {
  Open(QDateTime(QDate::currentDate(), QTime(0, 0, 1)));
  EXPECT_EQ(Reported(), "Last report 00:00:01");
}

TEST_F(TallyDialogTest, AnOldReportSaysItsDay) {
  Open(QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59)));
  EXPECT_EQ(Reported(), "Last report 2026-03-01 23:59:59");
}

TEST_F(TallyDialogTest, ClosesByEscapeAndByTheButton) {
  Open();
  QTest::keyClick(dialog_.get(), Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  dialog_->open();
  QTest::mouseClick(&Find<QPushButton>(QStringLiteral("cmdClose")), Qt::LeftButton);
  EXPECT_FALSE(dialog_->isVisible());
}

// Counts the paint events of each widget.
class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++painted[watched->objectName().toStdString()];
    return false;
  }
  std::map<std::string, int> painted;
};

TEST_F(TallyDialogTest, AReportRepaintsOnceTheLampsThatChanged) {
  Open();
  QCoreApplication::sendPostedEvents();
  PaintCounter counter;
  for (int point = 1; point <= 64; ++point) LampOf(point).installEventFilter(&counter);
  model_.QdvTally[7] = model_.QdvTally[8] = 1;
  dialog_->UpdateTally(QDateTime::currentDateTime());
  dialog_->UpdateTally(QDateTime::currentDateTime());
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(counter.painted,
            (std::map<std::string, int>{{"shpQdvResponding_8", 1}, {"shpQdvResponding_9", 1}}));
}

}  // namespace
}  // namespace views
