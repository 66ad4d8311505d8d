// SPDX-License-Identifier: MIT

#include "gateway/qt_sockets.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QHostAddress>
#include <QTcpSocket>

namespace gateway {
namespace {

class QtSocketsTest : public testing::Test {
 protected:
  // A port that was free a moment ago.
  static int FreePort() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::Any, 0));
    return server.serverPort();
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  Listener listener_;
};

TEST_F(QtSocketsTest, HoldsThePort) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  EXPECT_TRUE(listener_.IsListening());
  Listener second;
  const model::Status status = second.Start(port);
  EXPECT_EQ(status.Number(), kPortInUse);
  EXPECT_NE(status.Description(), "");
  EXPECT_FALSE(second.IsListening());
}

TEST_F(QtSocketsTest, GivesThePortBack) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  listener_.Stop();
  Listener second;
  EXPECT_TRUE(second.Start(port).ok());
}

TEST_F(QtSocketsTest, PortsThatDoNotExistAreErrors) {
  EXPECT_FALSE(listener_.Start(0).ok());
  EXPECT_FALSE(listener_.Start(-1).ok());
  EXPECT_FALSE(listener_.Start(65536).ok());
  EXPECT_FALSE(listener_.Start(2147483647).ok());
  EXPECT_FALSE(listener_.IsListening());
}

TEST_F(QtSocketsTest, TurnsAPanelAwayAtOnce) {
  const int port = FreePort();
  ASSERT_TRUE(listener_.Start(port).ok());
  QTcpSocket panel;
  panel.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
  ASSERT_TRUE(panel.waitForConnected(2000));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  if (panel.state() != QAbstractSocket::UnconnectedState) {
    EXPECT_TRUE(panel.waitForDisconnected(2000));
  }
  EXPECT_EQ(panel.state(), QAbstractSocket::UnconnectedState);
}

}  // namespace
}  // namespace gateway
