// SPDX-License-Identifier: MIT

#ifndef TOOLS_PILOT_PILOT_CLIENT_H_
#define TOOLS_PILOT_PILOT_CLIENT_H_

#include <QJsonObject>
#include <QJsonValue>
#include <QLocalSocket>
#include <QString>

namespace pilot {

// Sends requests to a console that runs with the pilot plugin, one at a time.
class Client {
 public:
  // Connects; tries again until `milliseconds` have gone, since the console may still start.
  bool Connect(const QString& socketName, int milliseconds);

  // Sends a request and waits for the answer; {"ok":false,…} when none comes within ten seconds.
  QJsonObject Ask(const QJsonObject& request);

 private:
  QLocalSocket socket_;
};

}  // namespace pilot

#endif  // TOOLS_PILOT_PILOT_CLIENT_H_
