// SPDX-License-Identifier: MIT
//
// The plugin: listens on the local socket that its argument names and carries out the requests
// that come over it, until one says {"do":"leave"}: from then on nobody can drive the process.

#include <QGenericPlugin>
#include <QJsonDocument>
#include <QLocalServer>
#include <QLocalSocket>

#include "tools/pilot/pilot_commands.h"

namespace pilot {

class Server : public QObject {
  Q_OBJECT

 public:
  explicit Server(const QString& socketName) {
    QLocalServer::removeServer(socketName);
    connect(&server_, &QLocalServer::newConnection, this, &Server::Accept);
    if (!server_.listen(socketName)) qWarning("teskpilot: cannot listen");
  }

 private:
  void Accept() {
    QLocalSocket* const client = server_.nextPendingConnection();
    connect(client, &QLocalSocket::readyRead, this, [this, client] { Serve(*client); });
    connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
  }

  void Serve(QLocalSocket& client) {
    while (client.canReadLine()) {
      const QJsonObject request = QJsonDocument::fromJson(client.readLine()).object();
      const bool leaves = request.value(QLatin1String("do")) == QLatin1String("leave");
      const QJsonObject answer = leaves ? Done() : Execute(request);
      client.write(QJsonDocument(answer).toJson(QJsonDocument::Compact) + '\n');
      if (leaves) Leave();
    }
  }

  // Removes the socket, so that nobody can connect any more, and disconnects the clients.
  void Leave() {
    server_.close();
    for (QLocalSocket* const client : server_.findChildren<QLocalSocket*>()) {
      client->disconnectFromServer();
    }
  }

  QLocalServer server_;
};

class Plugin : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "pilot.json")

 public:
  // `argument` is the path of the socket.
  QObject* create(const QString& /*key*/, const QString& argument) override {
    return new Server(argument);
  }
};

}  // namespace pilot

#include "pilot_plugin.moc"
