// SPDX-License-Identifier: MIT

#include "gateway/listener.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace gateway {

Listener::Listener(QObject* parent) : QObject(parent) {
  connect(&server_, &QTcpServer::newConnection, this, &Listener::TurnAway);
}

model::Status Listener::Start(int port) {
  Stop();
  if (port < 1 || port > 65535) {
    return {kPortInUse, "There is no IP port " + std::to_string(port)};
  }
  if (!server_.listen(QHostAddress::Any, static_cast<quint16>(port))) {
    return {kPortInUse, server_.errorString().toStdString()};
  }
  return {};
}

void Listener::Stop() {
  if (server_.isListening()) server_.close();
}

void Listener::TurnAway() {
  while (QTcpSocket* const socket = server_.nextPendingConnection()) {
    socket->abort();
    socket->deleteLater();
  }
}

}  // namespace gateway
