// SPDX-License-Identifier: MIT

#include "app/network/panel_errors.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QToolButton>

#include "app/shell/main_window.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using namespace std::chrono_literals;
using Icon = model::ErrorReporter::Icon;

class PanelErrorsTest : public testing::Test {
 protected:
  PanelErrorsTest() {
    window_.show();
    boxes_.ShowOver(&window_);
  }

  void Report(const char* text = "Error in Error Processing Take Command\rError # 9 - No end") {
    errors_.Show(Icon::Critical, "Error Processing", text);
    QCoreApplication::processEvents();
  }
  static QMessageBox* Box() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  }
  void Close() {
    ASSERT_NE(Box(), nullptr);
    Box()->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  }
  std::string Hint() const {
    auto* const strip = window_.findChild<HintStrip*>(QStringLiteral("aidHintStrip"));
    return strip->isVisible() ? strip->accessibleName().toStdString() : "";
  }

  CommandTable commands_;
  MainWindow window_{commands_};
  MessageBoxes boxes_;
  PanelErrors::Time now_{1h};
  PanelErrors errors_{boxes_, window_.Hints(), [this] { return now_; }};
};

TEST_F(PanelErrorsTest, AReportIsABox) {
  Report();
  ASSERT_NE(Box(), nullptr);
  EXPECT_EQ(Box()->text(),
            QStringLiteral("Error in Error Processing Take Command\rError # 9 - No end"));
  EXPECT_EQ(Hint(), "");
}

TEST_F(PanelErrorsTest, OneThatWasJustClosedIsCountedInTheHintStrip) {
  Report();
  Close();
  now_ += 9999ms;
  Report();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(
      Hint(),
      "Again since you closed it: Error in Error Processing Take Command, Error # 9 - No end");
  Report();
  Report();
  EXPECT_EQ(Box(), nullptr);
  EXPECT_EQ(Hint(),
            "Again since you closed it, 3 times: Error in Error Processing Take Command, Error # 9 "
            "- No end");
}

TEST_F(PanelErrorsTest, AfterTenSecondsThereIsABoxAgain) {
  Report();
  Close();
  Report();
  now_ += 10s;
  Report();
  EXPECT_NE(Box(), nullptr);
  EXPECT_EQ(Hint(), "") << "the box says it now";
  Close();
  Report();
  EXPECT_EQ(
      Hint(),
      "Again since you closed it: Error in Error Processing Take Command, Error # 9 - No end");
}

TEST_F(PanelErrorsTest, AnotherReportIsABoxAtOnce) {
  Report();
  Close();
  Report("Error in Error Sending Message to IP\rError # 10054 - Gone");
  EXPECT_NE(Box(), nullptr);
}

TEST_F(PanelErrorsTest, EachReportHasACountOfItsOwn) {
  Report("one");
  Close();
  Report("one");
  Report("other");
  Close();
  Report("other");
  EXPECT_EQ(Hint(), "Again since you closed it: other");
  Report("one");
  EXPECT_EQ(Hint(), "Again since you closed it, 2 times: one");
  Report("other");
  EXPECT_EQ(Hint(), "Again since you closed it, 2 times: other");
}

TEST_F(PanelErrorsTest, EmptyLinesOfAReportAreNotInTheHint) {
  Report("Error Sending Take Command\r\rError # 8018 - The serial port is not open");
  Close();
  Report("Error Sending Take Command\r\rError # 8018 - The serial port is not open");
  EXPECT_EQ(Hint(),
            "Again since you closed it: Error Sending Take Command, Error # 8018 - The serial port "
            "is not open");
}

TEST_F(PanelErrorsTest, AClosedHintStaysAwayUntilTheNextBox) {
  Report();
  Close();
  Report();
  test::Find<QToolButton>(window_, "aidHintClose").click();
  Report();
  EXPECT_EQ(Hint(), "");
  now_ += 10s;
  Report();
  Close();
  Report();
  EXPECT_NE(Hint(), "");
}

}  // namespace
}  // namespace app
