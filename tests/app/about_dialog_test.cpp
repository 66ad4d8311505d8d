// SPDX-License-Identifier: MIT

#include "app/shell/about_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>

#include "tests/views/gui_support.h"

namespace app {
namespace {

class AboutDialogTest : public testing::Test {
 protected:
  std::string Text(const char* name) {
    const AboutDialog about(model_, nullptr);
    EXPECT_EQ(about.objectName(), QStringLiteral("frmTeskAbout"));
    const auto* const label = about.findChild<QLabel*>(QLatin1String(name));
    return label == nullptr ? "(no label)" : label->text().toStdString();
  }

  model::SystemModel model_;
};

TEST_F(AboutDialogTest, TitleAndVersion) {
  EXPECT_EQ(Text("lblTitle"), "Orvo Intercom/IFB Control\rVersion 2.12 - 04/17/2002");
}

TEST_F(AboutDialogTest, ProgramFolderWithItsBackslash) {
  EXPECT_EQ(Text("lblAppPath"), "Not Specified");
  model_.AppPath = "/srv/B&B <1>/console\\";
  EXPECT_EQ(Text("lblAppPath"), "/srv/B&B <1>/console\\");
}

TEST_F(AboutDialogTest, PortAndCounts) {
  model_.ComPort = 3;
  model_.StationCount = 64;
  model_.ChannelCount = 128;
  EXPECT_EQ(Text("lblComPort"), "COM 3");
  EXPECT_EQ(Text("lblStations"), "64 Stations");
  EXPECT_EQ(Text("lblChannels"), "128 Channels");
}

TEST_F(AboutDialogTest, ConnectedOnlyWhenTheFirstLinkByteIsOne) {
  EXPECT_EQ(Text("lblConnected"), "No");
  model_.LinkStatus = {1, 0, 2};
  EXPECT_EQ(Text("lblConnected"), "Yes");
  model_.LinkStatus = {0, 1, 0};
  EXPECT_EQ(Text("lblConnected"), "No");
  model_.LinkStatus = {2, 1, 0};
  EXPECT_EQ(Text("lblConnected"), "No");
}

TEST_F(AboutDialogTest, IsFilledAnewEachTimeItComesToTheFront) {
  AboutDialog about(model_, nullptr);
  about.open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&about));
  const auto text = [&about](const char* name) {
    return test::Find<QLabel>(about, name).text().toStdString();
  };
  EXPECT_EQ(text("lblConnected"), "No");

  QDialog box(&about);
  box.open();
  ASSERT_TRUE(QTest::qWaitFor([&box] { return QApplication::activeWindow() == &box; }));
  model_.LinkStatus = {1, 0, 0};
  model_.ComPort = 4;
  model_.AppPath = "/srv/console\\";
  model_.StationCount = 48;
  model_.ChannelCount = 96;
  EXPECT_EQ(text("lblConnected"), "No");
  box.close();
  about.activateWindow();
  ASSERT_TRUE(QTest::qWaitFor([&about] { return QApplication::activeWindow() == &about; }));
  EXPECT_EQ(text("lblConnected"), "Yes");
  EXPECT_EQ(text("lblComPort"), "COM 4");
  EXPECT_EQ(text("lblAppPath"), "/srv/console\\");
  EXPECT_EQ(text("lblStations"), "48 Stations");
  EXPECT_EQ(text("lblChannels"), "96 Channels");
  EXPECT_EQ(text("lblTitle"), "Orvo Intercom/IFB Control\rVersion 2.12 - 04/17/2002");
}

TEST_F(AboutDialogTest, TheCarriageReturnBreaksTheTitleInTwoLines) {
  AboutDialog about(model_, nullptr);
  about.show();
  const auto* const title = about.findChild<QLabel*>(QStringLiteral("lblTitle"));
  EXPECT_GE(title->sizeHint().height(), 2 * title->fontMetrics().height());
}

TEST_F(AboutDialogTest, EnterAndEscapeCloseIt) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    AboutDialog about(model_, nullptr);
    about.open();
    QTest::keyClick(&about, key);
    EXPECT_FALSE(about.isVisible());
  }
}

}  // namespace
}  // namespace app
