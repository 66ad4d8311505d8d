// SPDX-License-Identifier: MIT
//
// The plugin: listens on the local socket that its argument names and carries out the requests
// that come over it.

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
    connect(client, &QLocalSocket::readyRead, this, [client] { Serve(*client); });
    connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
  }

  static void Serve(QLocalSocket& client) {
    while (client.canReadLine()) {
      const QJsonObject request = QJsonDocument::fromJson(client.readLine()).object();
      client.write(QJsonDocument(Execute(request)).toJson(QJsonDocument::Compact) + '\n');
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
