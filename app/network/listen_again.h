// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_LISTEN_AGAIN_H_
#define APP_NETWORK_LISTEN_AGAIN_H_

#include <QObject>
#include <QTimer>

#include "gateway/qt_sockets.h"

namespace app {

// Tries to listen again and again where it failed: the interface of an address may come up later
// than the console.
class ListenAgain : public QObject {
  Q_OBJECT

 public:
  // `listener` must outlive the object.
  explicit ListenAgain(gateway::Listener& listener);

  // Tries it every five seconds from now on, until it listens on the port or Stop() is called.
  void Begin(int port);
  void Stop() { timer_.stop(); }

 Q_SIGNALS:
  // It listens now.
  void Listening();

 private:
  void Try();

  gateway::Listener& listener_;
  QTimer timer_;
  int port_ = 0;
};

}  // namespace app

#endif  // APP_NETWORK_LISTEN_AGAIN_H_
