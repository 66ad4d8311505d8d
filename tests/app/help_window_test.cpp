// SPDX-License-Identifier: MIT

#include "app/shell/help_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>

#include "tests/views/gui_support.h"

namespace app {
namespace {

class HelpWindowTest : public testing::Test {
 protected:
  HelpWindowTest() {
    window_.setAttribute(Qt::WA_DeleteOnClose, false);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QString Page() const { return pages_.source().fileName(); }

  void GoTo(const char* link) {
    pages_.setSource(QUrl(QStringLiteral("qrc:/help/") + QLatin1String(link)));
  }

  void Click(const char* name) {
    auto* const tool = &test::Find<QToolButton>(window_, name);
    ASSERT_TRUE(tool->isEnabled()) << name;
    QTest::mouseClick(tool, Qt::LeftButton);
  }

  void Find(const char* text) {
    text_.clear();
    QTest::keyClicks(&text_, QString::fromUtf8(text));
    QTest::keyClick(&text_, Qt::Key_Return);
  }

  QString Selected() const { return pages_.textCursor().selectedText(); }
  QString Said() { return test::Find<QLabel>(window_, "aidHelpSaid").text(); }

  HelpWindow window_;
  QTextBrowser& pages_ = test::Find<QTextBrowser>(window_, "aidHelpPages");
  QLineEdit& text_ = test::Find<QLineEdit>(window_, "aidHelpFind");
};

TEST_F(HelpWindowTest, OpensWithTheContents) {
  EXPECT_EQ(Page(), QStringLiteral("index.html"));
  EXPECT_FALSE(test::Find<QToolButton>(window_, "aidHelpBack").isEnabled());
  EXPECT_FALSE(test::Find<QToolButton>(window_, "aidHelpForward").isEnabled());
}

TEST_F(HelpWindowTest, GoesBackAndForthAndToTheContents) {
  GoTo("map.html");
  GoTo("labels.html");
  Click("aidHelpBack");
  EXPECT_EQ(Page(), QStringLiteral("map.html"));
  Click("aidHelpForward");
  EXPECT_EQ(Page(), QStringLiteral("labels.html"));
  Click("aidHelpContents");
  EXPECT_EQ(Page(), QStringLiteral("index.html"));
  Click("aidHelpBack");
  EXPECT_EQ(Page(), QStringLiteral("labels.html"));
}

TEST_F(HelpWindowTest, ALinkGoesToItsPlace) {
  GoTo("messages.html#hints");
  EXPECT_EQ(Page(), QStringLiteral("messages.html"));
  EXPECT_GT(pages_.verticalScrollBar()->value(), 500);
}

TEST_F(HelpWindowTest, FindsATextOnWhicheverPageItStands) {
  Find("Tile Vertically");
  EXPECT_EQ(Page(), QStringLiteral("commands.html"));
  EXPECT_EQ(Selected(), QStringLiteral("Tile Vertically"));
  // In any case, and from the place before on.
  Find("inhibit not possible");
  EXPECT_EQ(Page(), QStringLiteral("messages.html"));
  EXPECT_EQ(Said(), QString());
}

TEST_F(HelpWindowTest, GoesFromOnePlaceToTheNextAndBack) {
  GoTo("set-up.html");
  Find("tesksim");
  EXPECT_EQ(Page(), QStringLiteral("set-up.html"));
  const int first = pages_.textCursor().position();
  QTest::keyClick(&text_, Qt::Key_Return);
  const int second = pages_.textCursor().position();
  EXPECT_GT(second, first);
  QTest::keyClick(&window_, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(pages_.textCursor().position(), first);
  // Behind the last place on the last page that has it comes the first one.
  for (int presses = 0; presses < 10; ++presses) {
    QTest::keyClick(&text_, Qt::Key_Return);
    ASSERT_EQ(Selected(), QStringLiteral("tesksim"));
    if (pages_.textCursor().position() == first) break;
  }
  EXPECT_EQ(pages_.textCursor().position(), first);
}

TEST_F(HelpWindowTest, SaysWhatIsNotThere) {
  GoTo("levels.html");
  Find("espresso");
  EXPECT_EQ(Said(), QStringLiteral("Not found"));
  EXPECT_EQ(Page(), QStringLiteral("levels.html"));
  QTest::keyClicks(&text_, QStringLiteral("x"));
  EXPECT_EQ(Said(), QString());
}

TEST_F(HelpWindowTest, EscapeClosesIt) {
  QTest::keyClick(&pages_, Qt::Key_Escape);
  EXPECT_FALSE(window_.isVisible());
}

// The lines of the tables and the links follow the theme of the desktop, on the page that shows.
TEST_F(HelpWindowTest, FollowsTheTheme) {
  GoTo("map.html");
  const auto linkColor = [this] {
    QTextCursor cursor(pages_.document());
    cursor = pages_.document()->find(QStringLiteral("Contents"));
    return cursor.charFormat().foreground().color();
  };
  EXPECT_EQ(linkColor(), QColor(0x00, 0x60, 0xA0));
  QPalette dark(QColor(0x20, 0x20, 0x20));
  dark.setColor(QPalette::Base, Qt::black);
  dark.setColor(QPalette::Text, Qt::white);
  window_.setPalette(dark);
  EXPECT_EQ(Page(), QStringLiteral("map.html"));
  EXPECT_EQ(linkColor(), QColor(0x6D, 0xB9, 0xF2));
}

}  // namespace
}  // namespace app
