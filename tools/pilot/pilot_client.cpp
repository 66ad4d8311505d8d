// SPDX-License-Identifier: MIT

#include "tools/pilot/pilot_client.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QThread>

namespace pilot {

namespace {
constexpr int kAnswerMilliseconds = 10000;
}  // namespace

bool Client::Connect(const QString& socketName, int milliseconds) {
  const QDeadlineTimer deadline(milliseconds);
  do {
    socket_.connectToServer(socketName);
    if (socket_.waitForConnected(1000)) return true;
    QThread::msleep(10);
  } while (!deadline.hasExpired());
  return false;
}

QJsonObject Client::Ask(const QJsonObject& request) {
  socket_.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
  const QDeadlineTimer deadline(kAnswerMilliseconds);
  while (!socket_.canReadLine() && !deadline.hasExpired() &&
         socket_.state() == QLocalSocket::ConnectedState) {
    socket_.waitForReadyRead(100);
  }
  if (!socket_.canReadLine()) {
    return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), QStringLiteral("no answer")}};
  }
  return QJsonDocument::fromJson(socket_.readLine()).object();
}

}  // namespace pilot
