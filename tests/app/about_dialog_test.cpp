// SPDX-License-Identifier: MIT

#include "app/about_dialog.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

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
