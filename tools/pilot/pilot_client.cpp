// SPDX-License-Identifier: MIT

#include "tools/pilot/pilot_client.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QThread>

namespace pilot {

namespace {
// The first answer waits for the console's start, which may be slow on a busy machine.
constexpr int kAnswerMilliseconds = 120000;
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

QJsonObject Client::Ask(const QJsonObject& request) { return AskTogether({request}).front(); }

std::vector<QJsonObject> Client::AskTogether(const std::vector<QJsonObject>& requests) {
  QByteArray lines;
  for (const QJsonObject& request : requests) {
    lines += QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n';
  }
  if (socket_.state() == QLocalSocket::ConnectedState) socket_.write(lines);
  std::vector<QJsonObject> answers;
  for (std::size_t i = 0; i < requests.size(); ++i) answers.push_back(WaitForAnswer());
  return answers;
}

QJsonObject Client::WaitForAnswer() {
  const QDeadlineTimer deadline(kAnswerMilliseconds);
  while (!socket_.canReadLine() && !deadline.hasExpired() &&
         socket_.state() == QLocalSocket::ConnectedState) {
    socket_.waitForReadyRead(100);
  }
  if (!socket_.canReadLine()) {
    // A late answer must not be taken for the answer to the next request.
    socket_.abort();
    return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), QStringLiteral("no answer")}};
  }
  return QJsonDocument::fromJson(socket_.readLine()).object();
}

}  // namespace pilot
