// SPDX-License-Identifier: MIT

#ifndef TOOLS_PILOT_PILOT_CLIENT_H_
#define TOOLS_PILOT_PILOT_CLIENT_H_

#include <QJsonObject>
#include <QJsonValue>
#include <QLocalSocket>
#include <QString>
#include <vector>

namespace pilot {

// Sends requests to a console that runs with the pilot plugin, one at a time.
class Client {
 public:
  // Connects; tries again until `milliseconds` have gone, since the console may still start.
  bool Connect(const QString& socketName, int milliseconds);

  // Sends a request and waits for the answer.  When the console ends or does not answer for two
  // minutes, returns {"ok":false,…} and closes the connection.
  QJsonObject Ask(const QJsonObject& request);

  // Sends requests that the console carries out one after the other with nothing in between, and
  // waits for their answers.
  std::vector<QJsonObject> AskTogether(const std::vector<QJsonObject>& requests);

  // Whether it is connected, and every request so far was answered.
  bool IsOpen() const { return socket_.state() == QLocalSocket::ConnectedState; }

 private:
  QJsonObject WaitForAnswer();

  QLocalSocket socket_;
};

}  // namespace pilot

#endif  // TOOLS_PILOT_PILOT_CLIENT_H_
