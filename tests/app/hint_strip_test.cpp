// SPDX-License-Identifier: MIT

#include "app/shell/hint_strip.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolButton>

#include "app/shell/port_access.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

class HintStripTest : public testing::Test {
 protected:
  HintStripTest() { window_.show(); }

  // What the operator reads; empty while there is no strip.
  QString Text() {
    if (strip_->isHidden()) return {};
    return test::Find<QLabel>(*strip_, "aidHintText").text();
  }
  void Close() {
    QTest::mouseClick(&test::Find<QToolButton>(*strip_, "aidHintClose"), Qt::LeftButton);
  }

  QWidget window_;
  HintStrip* strip_ = new HintStrip(&window_);
};

TEST_F(HintStripTest, ShowsTheMostUrgentFirst) {
  EXPECT_EQ(Text(), QString());
  strip_->Give(Hint::Demo, QStringLiteral("demo"));
  EXPECT_EQ(Text(), QStringLiteral("demo"));
  strip_->Give(Hint::PortDenied, QStringLiteral("denied"));
  EXPECT_EQ(Text(), QStringLiteral("denied"));
  strip_->Give(Hint::NoSwitcher, QStringLiteral("none"));
  EXPECT_EQ(Text(), QStringLiteral("denied"));
  strip_->Withdraw(Hint::PortDenied);
  EXPECT_EQ(Text(), QStringLiteral("none"));
  strip_->Withdraw(Hint::NoSwitcher);
  strip_->Withdraw(Hint::Demo);
  EXPECT_EQ(Text(), QString());
}

TEST_F(HintStripTest, ClosedHintsDoNotComeBack) {
  strip_->Give(Hint::NoSwitcher, QStringLiteral("none"));
  strip_->Give(Hint::Demo, QStringLiteral("demo"));
  Close();
  EXPECT_EQ(Text(), QStringLiteral("demo"));
  strip_->Give(Hint::NoSwitcher, QStringLiteral("none, again"));
  EXPECT_EQ(Text(), QStringLiteral("demo"));
  Close();
  EXPECT_EQ(Text(), QString());
}

TEST_F(HintStripTest, AClosedHintThatDidNotHoldMeanwhileComesBack) {
  strip_->Give(Hint::Blocked, QStringLiteral("0xE0"));
  Close();
  strip_->Give(Hint::Blocked, QStringLiteral("0xE0, still"));
  EXPECT_EQ(Text(), QString());
  strip_->Withdraw(Hint::Blocked);
  strip_->Give(Hint::Blocked, QStringLiteral("0xE1"));
  EXPECT_EQ(Text(), QStringLiteral("0xE1"));
}

TEST_F(HintStripTest, AHintMayOfferACommand) {
  QAction command(QStringLiteral("Do It"));
  command.setObjectName(QStringLiteral("aidDoIt"));
  int done = 0;
  QObject::connect(&command, &QAction::triggered, [&] { ++done; });
  strip_->Give(Hint::Demo, QStringLiteral("demo"));
  EXPECT_EQ(strip_->findChild<QToolButton*>(QStringLiteral("aidDoIt")), nullptr);
  strip_->Give(Hint::Blocked, QStringLiteral("blocked"), {&command});
  auto* const button = &test::Find<QToolButton>(*strip_, "aidDoIt");
  EXPECT_TRUE(button->isVisible());
  EXPECT_EQ(button->text(), QStringLiteral("Do It"));
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(done, 1);
  // The other hint does not offer it.
  strip_->Withdraw(Hint::Blocked);
  EXPECT_EQ(Text(), QStringLiteral("demo"));
  EXPECT_FALSE(button->isVisible());
  EXPECT_EQ(strip_->findChild<QToolButton*>(QStringLiteral("aidDoIt")), nullptr);
  strip_->Give(Hint::Blocked, QStringLiteral("blocked"), {&command});
  EXPECT_TRUE(button->isVisible());
}

TEST_F(HintStripTest, AHintMayOfferSeveralCommandsInTheirOrder) {
  QAction first(QStringLiteral("Restore"));
  QAction second(QStringLiteral("Show"));
  first.setObjectName(QStringLiteral("aidFirst"));
  second.setObjectName(QStringLiteral("aidSecond"));
  strip_->Give(Hint::Blocked, QStringLiteral("blocked"), {&second});
  strip_->Give(Hint::UnsavedRun, QStringLiteral("unsaved"), {&first, &second});
  QTest::qWait(0);
  const auto& left = test::Find<QToolButton>(*strip_, "aidFirst");
  const auto& right = test::Find<QToolButton>(*strip_, "aidSecond");
  EXPECT_TRUE(left.isVisible() && right.isVisible());
  EXPECT_LT(left.geometry().right(), right.geometry().left());
  strip_->Withdraw(Hint::UnsavedRun);
  EXPECT_EQ(strip_->findChild<QToolButton*>(QStringLiteral("aidFirst")), nullptr);
  EXPECT_TRUE(test::Find<QToolButton>(*strip_, "aidSecond").isVisible());
}

TEST_F(HintStripTest, KnowsWhatItHas) {
  EXPECT_FALSE(strip_->Has(Hint::NoSwitcher));
  strip_->Give(Hint::NoSwitcher, QStringLiteral("none"));
  strip_->Give(Hint::Blocked, QStringLiteral("0xE0"));
  EXPECT_TRUE(strip_->Has(Hint::NoSwitcher)) << "behind the more urgent one";
  Close();
  EXPECT_FALSE(strip_->Has(Hint::Blocked));
}

TEST_F(HintStripTest, KeysCloseAHintTooWhereverTheFocusIs) {
  auto* const elsewhere = new QWidget(&window_);
  elsewhere->show();
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  elsewhere->setFocus();
  strip_->Give(Hint::Demo, QStringLiteral("demo"));
  QTest::keyClick(elsewhere, Qt::Key_Escape, Qt::ShiftModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return Text().isEmpty(); }));
}

TEST_F(HintStripTest, LongHintsDoNotWidenTheWindow) {
  strip_->Give(Hint::PortDenied, QString(500, QLatin1Char('x')));
  EXPECT_LT(strip_->minimumSizeHint().width(), 100);
}

TEST(PortAccess, DeniedNamesTheGroupToJoin) {
  EXPECT_EQ(DeniedPortText(QStringLiteral("/dev/ttyUSB0"), QStringLiteral("dialout")),
            QStringLiteral("You may not open /dev/ttyUSB0. Have your user added to the group "
                           "“dialout”, log out and log in again."));
  EXPECT_EQ(DeniedPortText(QStringLiteral("/dev/ttyUSB0"), QString()),
            QStringLiteral("You may not open /dev/ttyUSB0: its rights forbid it."));
}

TEST(PortAccess, IsNoMatterForADeviceThatIsMissingOrOpens) {
  EXPECT_FALSE(PortAccessHint(QFileInfo(QStringLiteral("/nowhere/ttyUSB7"))).has_value());
  EXPECT_FALSE(PortAccessHint(QFileInfo(QStringLiteral("/dev/null"))).has_value());
}

}  // namespace
}  // namespace app
