// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_FREE_PORT_H_
#define TESTS_SUPPORT_FREE_PORT_H_

#include <QTcpServer>

namespace test {

// A port that nobody listened on a moment ago; 0 when there is none.
inline int FreePort() {
  QTcpServer server;
  return server.listen(QHostAddress::Any, 0) ? server.serverPort() : 0;
}

}  // namespace test

#endif  // TESTS_SUPPORT_FREE_PORT_H_
