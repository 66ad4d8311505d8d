// SPDX-License-Identifier: MIT

#include "app/shell/command_letters.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace app {
namespace {

class CommandLettersTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* const layout = new QVBoxLayout(&window_);
    layout->addWidget(field_);
    layout->addWidget(copy_);
    window_.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    field_->setFocus();
  }

  QDialog window_;
  QLineEdit* field_ = new QLineEdit;
  QPushButton* copy_ = new QPushButton(QStringLiteral("Cop&y"));
  CommandLetters letters_;
};

TEST_F(CommandLettersTest, OneWhoseButtonIsGreyIsNotTyped) {
  copy_->setEnabled(false);
  QTest::keyClick(field_, Qt::Key_Y, Qt::AltModifier);
  EXPECT_EQ(field_->text(), QString());
}

TEST_F(CommandLettersTest, OneWhoseButtonIsNotPressesIt) {
  QSignalSpy pressed(copy_, &QPushButton::clicked);
  QTest::keyClick(field_, Qt::Key_Y, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !pressed.isEmpty(); }));
  EXPECT_EQ(field_->text(), QString());
}

TEST_F(CommandLettersTest, WhatIsTypedIsTyped) {
  QTest::keyClicks(field_, QStringLiteral("Yes 1"));
  QTest::keyClick(field_, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier);  // as some keyboards
  EXPECT_EQ(field_->text(), QStringLiteral("Yes 1@"));
}

}  // namespace
}  // namespace app
