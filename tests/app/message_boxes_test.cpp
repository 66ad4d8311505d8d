// SPDX-License-Identifier: MIT

#include "app/shell/message_boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include "tests/views/gui_support.h"

namespace app {
namespace {

using Icon = model::ErrorReporter::Icon;

class MessageBoxesTest : public testing::Test {
 protected:
  MessageBoxesTest() { window_.show(); }

  // The boxes that show now.
  static QList<QMessageBox*> Showing() {
    QCoreApplication::sendPostedEvents();
    QList<QMessageBox*> boxes;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      auto* const box = qobject_cast<QMessageBox*>(window);
      if (box != nullptr && box->isVisible()) boxes.append(box);
    }
    return boxes;
  }

  static void Press(Qt::Key key) {
    const auto boxes = Showing();
    ASSERT_EQ(boxes.size(), 1);
    QTest::keyClick(boxes[0], key);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  QWidget window_;
  MessageBoxes boxes_;
};

TEST_F(MessageBoxesTest, ShowsTitleTextAndIconAsReported) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Critical, "Comm Error", "first\rsecond\nthird");
  const auto boxes = Showing();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0]->windowTitle(), QStringLiteral("Comm Error"));
  EXPECT_EQ(boxes[0]->text(), QStringLiteral("first\rsecond\nthird"));
  EXPECT_EQ(boxes[0]->icon(), QMessageBox::Critical);
  EXPECT_EQ(boxes[0]->windowModality(), Qt::WindowModal);
  EXPECT_EQ(boxes[0]->parentWidget(), &window_);
  EXPECT_EQ(boxes[0]->informativeText(), QStringLiteral("F1 explains it"));
}

TEST_F(MessageBoxesTest, TheCountAndTheKeyStandUnderTheText) {
  boxes_.ShowOver(&window_);
  for (int i = 0; i < 3; ++i) boxes_.Show(Icon::Critical, "Comm Error", "1");
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("1"));
  EXPECT_EQ(Showing()[0]->informativeText(), QStringLiteral("Reported 3 times\nF1 explains it"));
}

TEST_F(MessageBoxesTest, CarriageReturnAndLineFeedBothBreakTheLine) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Critical, "t", "x");
  const int oneLine = test::Find<QLabel>(*Showing()[0], "qt_msgbox_label").height();
  Press(Qt::Key_Return);
  boxes_.Show(Icon::Critical, "t", "x\r\rx\nx");
  const int fourLines = test::Find<QLabel>(*Showing()[0], "qt_msgbox_label").sizeHint().height();
  EXPECT_GE(fourLines, 3 * oneLine);
}

TEST_F(MessageBoxesTest, MarkupIsTextLikeAnyOther) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Exclamation, "t", "<b>bold</b>");
  EXPECT_EQ(Showing()[0]->textFormat(), Qt::PlainText);
}

TEST_F(MessageBoxesTest, TheReporterGoesOnAtOnce) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Critical, "a", "1");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_FALSE(boxes_.IsEmpty());
}

TEST_F(MessageBoxesTest, OneAtATimeInTheirOrder) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Critical, "a", "1");
  boxes_.Show(Icon::Critical, "b", "2");
  QSignalSpy emptied(&boxes_, &MessageBoxes::Emptied);
  ASSERT_EQ(Showing().size(), 1);
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("1"));
  Press(Qt::Key_Return);
  ASSERT_EQ(Showing().size(), 1);
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("2"));
  EXPECT_EQ(emptied.count(), 0);
  Press(Qt::Key_Escape);
  EXPECT_EQ(Showing().size(), 0);
  EXPECT_EQ(emptied.count(), 1);
  EXPECT_TRUE(boxes_.IsEmpty());
}

TEST_F(MessageBoxesTest, EqualReportsFoldIntoTheOneThatShows) {
  boxes_.ShowOver(&window_);
  for (int i = 0; i < 3; ++i) boxes_.Show(Icon::Critical, "a", "1");
  ASSERT_EQ(Showing().size(), 1);
  for (int i = 0; i < 9; ++i) boxes_.Show(Icon::Critical, "a", "1");
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("1"));
  EXPECT_EQ(Showing()[0]->informativeText(), QStringLiteral("Reported 12 times"));
  Press(Qt::Key_Return);
  EXPECT_TRUE(boxes_.IsEmpty());
}

TEST_F(MessageBoxesTest, EqualReportsFoldIntoOneThatWaits) {
  boxes_.ShowOver(&window_);
  boxes_.Show(Icon::Critical, "a", "1");
  boxes_.Show(Icon::Critical, "a", "2");
  boxes_.Show(Icon::Critical, "b", "1");  // another title: another report
  boxes_.Show(Icon::Critical, "a", "2");
  EXPECT_EQ(Showing()[0]->informativeText(), QString());
  Press(Qt::Key_Return);
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("2"));
  EXPECT_EQ(Showing()[0]->informativeText(), QStringLiteral("Reported 2 times"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Showing()[0]->windowTitle(), QStringLiteral("b"));
  EXPECT_EQ(Showing()[0]->informativeText(), QString());
}

TEST_F(MessageBoxesTest, AnOfferIsAButtonThatClosesTheBoxAndActs) {
  boxes_.ShowOver(&window_);
  int acted = 0;
  const auto show = [&] {
    boxes_.ShowOffering(
        Icon::Critical, "a", "1",
        {{.name = QStringLiteral("aidOffer"), .caption = QStringLiteral("Do It"), .action = [&] {
            ++acted;
          }}});
    return Showing().value(0);
  };
  QMessageBox* box = show();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), QStringLiteral("1"));
  EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::Ok));
  Press(Qt::Key_Return);
  EXPECT_TRUE(boxes_.IsEmpty());
  EXPECT_EQ(acted, 0);
  box = show();
  auto* const offer = &test::Find<QPushButton>(*box, "aidOffer");
  EXPECT_EQ(offer->text(), QStringLiteral("Do It"));
  offer->click();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(acted, 1);
  EXPECT_TRUE(boxes_.IsEmpty());
}

TEST_F(MessageBoxesTest, ABoxGoesAwayWithTheQueue) {
  {
    MessageBoxes other;
    other.ShowOver(&window_);
    other.Show(Icon::Critical, "a", "1");
    EXPECT_EQ(Showing().size(), 1);
  }
  EXPECT_EQ(Showing().size(), 0);
}

TEST_F(MessageBoxesTest, ReportsWaitForTheWindow) {
  boxes_.Show(Icon::Critical, "a", "1");
  EXPECT_EQ(Showing().size(), 0);
  boxes_.ShowOver(&window_);
  EXPECT_EQ(Showing().size(), 1);
}

TEST_F(MessageBoxesTest, AReportDuringADialogStandsOverIt) {
  boxes_.ShowOver(&window_);
  QDialog dialog(&window_);
  dialog.open();
  boxes_.Show(Icon::Critical, "a", "1");
  EXPECT_EQ(Showing()[0]->parentWidget(), &dialog);
}

TEST_F(MessageBoxesTest, ABoxThatGoesWithItsDialogIsShownAgain) {
  boxes_.ShowOver(&window_);
  auto* const dialog = new QDialog(&window_);
  dialog->open();
  boxes_.Show(Icon::Critical, "a", "1");
  boxes_.Show(Icon::Critical, "b", "2");
  ASSERT_EQ(Showing().size(), 1);
  delete dialog;
  ASSERT_EQ(Showing().size(), 1);
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("1"));
  EXPECT_EQ(Showing()[0]->parentWidget(), &window_);
  Press(Qt::Key_Return);
  EXPECT_EQ(Showing()[0]->text(), QStringLiteral("2"));
  Press(Qt::Key_Return);
  EXPECT_EQ(Showing().size(), 0);
  EXPECT_TRUE(boxes_.IsEmpty());
}

}  // namespace
}  // namespace app
