// SPDX-License-Identifier: MIT
//
// An unknown code that holds up all receiving, and the way past it.

#include "app/shell/blocked_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "app/shell/main_window.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

class BlockedLineTest : public testing::Test {
 protected:
  BlockedLineTest() {
    window_.resize(433, 433);
    window_.show();
  }

  QAction* Command() {
    return window_.findChild<QAction*>(QStringLiteral("aidDiscardByte"),
                                       Qt::FindDirectChildrenOnly);
  }
  QString Hint() {
    return window_.Hints().isHidden() ? QString()
                                      : test::Find<QLabel>(window_.Hints(), "aidHintText").text();
  }
  QToolButton* Button() {
    return window_.Hints().findChild<QToolButton*>(QStringLiteral("aidDiscardByte"));
  }

  CommandTable commands_;
  MainWindow window_{commands_};
};

TEST_F(BlockedLineTest, TheHintNamesTheCodeAndOffersToDiscardIt) {
  ASSERT_NE(Command(), nullptr);
  EXPECT_FALSE(Command()->isEnabled());
  EXPECT_FALSE(Command()->isVisible());
  EXPECT_EQ(Hint(), QString());

  window_.ShowBlockedCode(0xCD);
  EXPECT_EQ(Hint(), QStringLiteral("The switcher sent the unknown code 0xCD: nothing behind it is "
                                   "read until it is discarded or the line is opened anew."));
  EXPECT_TRUE(Command()->isEnabled());
  EXPECT_EQ(Command()->text(), QStringLiteral("&Discard Byte 0xCD"));
  ASSERT_NE(Button(), nullptr);
  EXPECT_TRUE(Button()->isVisible());
  EXPECT_EQ(Button()->text(), QStringLiteral("Discard Byte 0xCD"));
  QCoreApplication::processEvents();
  EXPECT_GE(Button()->width(), Button()->sizeHint().width()) << "also in the smallest window";

  QSignalSpy pressed(Command(), &QAction::triggered);
  QTest::mouseClick(Button(), Qt::LeftButton);
  EXPECT_EQ(pressed.count(), 1);

  window_.ShowBlockedCode(std::nullopt);
  EXPECT_EQ(Hint(), QString());
  EXPECT_FALSE(Command()->isEnabled());
}

TEST_F(BlockedLineTest, TheMenuHasTheCommandWhileThereIsSomethingToDiscard) {
  const auto* const file = test::Find<QAction>(window_, "ID_File").menu();
  ASSERT_TRUE(file->actions().contains(Command()));
  EXPECT_FALSE(Command()->isVisible());
  window_.ShowBlockedCode(0xE0);
  EXPECT_TRUE(Command()->isVisible());
}

TEST_F(BlockedLineTest, AHintThatWasClosedComesBackWithTheNextCode) {
  window_.ShowBlockedCode(0xCD);
  QTest::mouseClick(&test::Find<QToolButton>(window_.Hints(), "aidHintClose"), Qt::LeftButton);
  EXPECT_EQ(Hint(), QString());
  EXPECT_TRUE(Command()->isVisible()) << "the command is still to be had in the menu";
  window_.ShowBlockedCode(std::nullopt);
  window_.ShowBlockedCode(0xFF);
  EXPECT_THAT(Hint().toStdString(), testing::HasSubstr("0xFF"));
}

}  // namespace
}  // namespace app
