// SPDX-License-Identifier: MIT

#include "views/programming/operation_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>
#include <vector>

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The options in an active window, between two fields that take the focus.
class Options : public testing::Test {
 protected:
  Options() {
    auto* const column = new QVBoxLayout(&window_);
    before_.setFocusPolicy(Qt::StrongFocus);
    after_.setFocusPolicy(Qt::StrongFocus);
    column->addWidget(&before_);
    column->addWidget(&frame_);
    column->addWidget(&after_);
    QObject::connect(&frame_, &OperationOptions::Chosen, &frame_,
                     [this](int code) { chosen_.push_back(code); });
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QRadioButton& Option(int code) {
    return *frame_.findChild<QRadioButton*>(QStringLiteral("optButType_%1").arg(code));
  }
  std::vector<int> Selected() {
    std::vector<int> codes;
    for (const int code : {0, 1, 2, 3, 254, 255}) {
      if (Option(code).isChecked()) codes.push_back(code);
    }
    return codes;
  }

  QWidget window_;
  QWidget before_{&window_};
  OperationOptions frame_{QStringLiteral("fmButType"), QStringLiteral("optButType"), &window_};
  QWidget after_{&window_};
  std::vector<int> chosen_;
};

TEST_F(Options, AreNamedByTheirCodesAndCaptioned) {
  EXPECT_EQ(frame_.objectName(), QLatin1String("fmButType"));
  EXPECT_EQ(frame_.title(), QLatin1String("Operation"));
  EXPECT_EQ(frame_.findChildren<QRadioButton*>().size(), 6);
  EXPECT_EQ(Option(0).text(), QLatin1String("Talk"));
  EXPECT_EQ(Option(1).text(), QLatin1String("Listen"));
  EXPECT_EQ(Option(2).text(), QLatin1String("P-Listen"));
  EXPECT_EQ(Option(3).text(), QLatin1String("External"));
  EXPECT_EQ(Option(254).text(), QLatin1String("Inactive"));
  EXPECT_EQ(Option(255).text(), QLatin1String("Group"));
}

TEST_F(Options, SelectSelectsWithoutAWord) {
  EXPECT_THAT(Selected(), IsEmpty());
  for (const int code : {0, 1, 2, 3, 254, 255}) {
    frame_.Select(code);
    EXPECT_THAT(Selected(), ElementsAre(code));
  }
  for (const int code : {4, 253, 256, -1}) {
    frame_.Select(1);
    frame_.Select(code);
    EXPECT_THAT(Selected(), IsEmpty()) << code;
  }
  EXPECT_THAT(chosen_, IsEmpty());
}

TEST_F(Options, AClickChoosesOnceAlsoWhatIsSelected) {
  frame_.Select(0);
  QTest::mouseClick(&Option(255), Qt::LeftButton);
  EXPECT_THAT(chosen_, ElementsAre(255));
  EXPECT_THAT(Selected(), ElementsAre(255));
  QTest::mouseClick(&Option(255), Qt::LeftButton);
  EXPECT_THAT(chosen_, ElementsAre(255, 255));
  frame_.Select(-1);
  QTest::mouseClick(&Option(255), Qt::LeftButton);
  EXPECT_THAT(chosen_, ElementsAre(255, 255, 255));
}

TEST_F(Options, AScreenReadersTickChoosesToo) {
  frame_.Select(0);
  Option(3).toggle();
  EXPECT_THAT(chosen_, ElementsAre(3));
}

TEST_F(Options, KeysChooseAndNoneIsATrap) {
  frame_.Select(0);
  before_.setFocus();
  QTest::keyClick(&before_, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &Option(0));
  QTest::keyClick(&Option(0), Qt::Key_Right);
  EXPECT_EQ(QApplication::focusWidget(), &Option(1));
  EXPECT_THAT(chosen_, ElementsAre(1));
  QTest::keyClick(&Option(1), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &after_);
}

// What is selected by itself has not been clicked.
TEST_F(Options, TabReachesTheSelectedOne) {
  frame_.Select(0);
  frame_.Select(254);
  after_.setFocus();
  QTest::keyClick(&after_, Qt::Key_Backtab);
  EXPECT_EQ(QApplication::focusWidget(), &Option(254));
  QTest::keyClick(&Option(254), Qt::Key_Right);
  EXPECT_THAT(chosen_, ElementsAre(255));
}

TEST_F(Options, AreReachedByKeyAlsoWhileNoneIsSelected) {
  frame_.Select(0);
  QTest::mouseClick(&Option(1), Qt::LeftButton);
  chosen_.clear();
  frame_.Select(77);
  for (int round = 0; round < 2; ++round) {
    before_.setFocus();
    QTest::keyClick(&before_, Qt::Key_Tab);
    ASSERT_TRUE(frame_.isAncestorOf(QApplication::focusWidget())) << "round " << round;
    EXPECT_THAT(chosen_, IsEmpty());
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_THAT(chosen_, ElementsAre(0));
}

}  // namespace
}  // namespace views
