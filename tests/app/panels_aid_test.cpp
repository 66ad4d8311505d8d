// SPDX-License-Identifier: MIT
//
// What the status bar says of network panels.

#include <gtest/gtest.h>

#include "app/main_window.h"

namespace app {
namespace {

class PanelsAidTest : public testing::Test {
 protected:
  PanelsAidTest() { window_.show(); }

  QLabel* Aid() const { return window_.findChild<QLabel*>(QStringLiteral("aidPanels")); }

  CommandTable commands_;
  MainWindow window_{commands_};
};

TEST_F(PanelsAidTest, IsHiddenWithoutAGateway) {
  ASSERT_NE(Aid(), nullptr);
  EXPECT_FALSE(Aid()->isVisible());
}

TEST_F(PanelsAidTest, CountsThePanelsAndListsThem) {
  window_.ShowPanels({});
  EXPECT_TRUE(Aid()->isVisible());
  EXPECT_EQ(Aid()->text(), QStringLiteral("Panels 0"));
  EXPECT_EQ(Aid()->toolTip(), QStringLiteral("No network panel is connected"));
  window_.ShowPanels({"10.0.0.7  LRM Connection", "10.0.0.8"});
  EXPECT_EQ(Aid()->text(), QStringLiteral("Panels 2"));
  EXPECT_EQ(Aid()->toolTip(), QStringLiteral("10.0.0.7  LRM Connection\n10.0.0.8"));
}

TEST_F(PanelsAidTest, ANoteNeverCoversTheLinkText) {
  window_.ShowLinkText("Not Connected - COM 1");
  window_.ShowPanelDropped("10.0.0.7", gateway::DropReason::DoesNotRead);
  auto* const link = window_.findChild<QLabel*>(QStringLiteral("sbStatusBar_1"));
  auto* const note = window_.findChild<QLabel*>(QStringLiteral("aidNote"));
  EXPECT_TRUE(link->isVisible());
  EXPECT_EQ(link->text(), QStringLiteral("Not Connected - COM 1"));
  EXPECT_TRUE(note->isVisible());
  EXPECT_EQ(note->text(),
            QStringLiteral("Panel 10.0.0.7 was dropped: it does not read what it is sent"));
}

}  // namespace
}  // namespace app
