// SPDX-License-Identifier: MIT

#ifndef GATEWAY_LISTENER_H_
#define GATEWAY_LISTENER_H_

#include <QObject>
#include <QTcpServer>

#include "model/status.h"

namespace gateway {

// Error number of a port that cannot be listened on.
inline constexpr int kPortInUse = 10048;

// The listening socket of the panel gateway.  It holds the port for this console; a panel that
// connects is turned away at once, so that it does not wait for an answer that never comes.
class Listener : public QObject {
  Q_OBJECT

 public:
  explicit Listener(QObject* parent = nullptr);

  // Listens on `port` of every interface.  Fails when the port is taken, not permitted, or
  // outside 1..65535.
  model::Status Start(int port);

  // Stops listening.  Does nothing when it is not.
  void Stop();

  bool IsListening() const { return server_.isListening(); }

 private:
  void TurnAway();

  QTcpServer server_;
};

}  // namespace gateway

#endif  // GATEWAY_LISTENER_H_
