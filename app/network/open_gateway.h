// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_OPEN_GATEWAY_H_
#define APP_NETWORK_OPEN_GATEWAY_H_

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <string>

#include "app/log/event_words.h"
#include "app/network/access_settings.h"
#include "app/network/connection_flood.h"
#include "app/network/listen_again.h"
#include "app/shell/hint_strip.h"
#include "db/jet/database.h"
#include "gateway/ember/peer_events.h"
#include "gateway/ember/provider.h"
#include "gateway/qt_sockets.h"
#include "model/error_reporter.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"
#include "switcher/serial_port.h"

namespace app {

// The open gateway of this console: listens for controllers where the settings want it, lets in
// whom they name, and says in words what happens to them and what they do.
class OpenGateway : public QObject, private ember::PeerEvents {
  Q_OBJECT

 public:
  // All must outlive the object.
  struct Services {
    OpenGatewayAccess access;
    model::SystemModel& model;
    std::function<jet::Database*()> database;  // the open one; null when there is none
    stations::Changes& changes;
    const model::Locks& locks;
    switcher::SerialPort& port;
    const switcher::KnownMap& knownMap;
    const switcher::LineShare& line;
    ChannelLabels& labels;
    HintStrip& hints;
    ConnectionFlood& flood;
    model::ErrorReporter& reporter;
    std::function<void()> gainsChanged;  // a controller has set a gain
  };
  explicit OpenGateway(Services services);

  // Listens, if it is wanted, and says what the operator should know of it.
  void Begin();

  // Who observes the switcher.
  switcher::SwitcherEvents& Observer() { return provider_; }

  // The operator has set a gain.
  void GainsChanged() { provider_.GainsChanged(); }

  // The link to the switcher may be in another state.  REQUIRES: the known map was told of it.
  //
  // When the switcher answers again behind a silence its map is not known, and the poll does not
  // ask for it.  Where controllers may take it is asked for here: there may be nobody who presses
  // Refresh Map.
  void LinkChanged();

  bool IsListening() const { return listener_.IsListening(); }

  // Stops listening and closes all connections.
  void Close();

 Q_SIGNALS:
  // The controllers that are connected, a line each.
  void PeersChanged(const QStringList& peers);
  // "Controller 2, 192.0.2.7: connected"
  void Happened(const QString& text);
  // The same for what may happen many times a second: what the controller at an address does, or,
  // with no address, what is within the power of any stranger.
  void HappenedAgain(const QString& text, const QString& address = {});

 private:
  void Listen();
  void Accept(std::unique_ptr<gateway::ClientSocket> client);

  void PeerConnected(const ember::PeerName& peer) override;
  void PeerTurnedAway(const std::string& address, ember::TurnedAway why) override;
  void PeerTook(const ember::PeerName& peer, const switcher::Take& take) override;
  void PeerSetGain(const ember::PeerName& peer, int input, int decibels) override;
  void TakeRefused(const ember::PeerName& peer, const ember::Wanted& wanted,
                   ember::Refusal why) override;
  void TakeStopped(const ember::PeerName& peer, const ember::Wanted& wanted,
                   ember::Refusal why) override;
  void NumbersRefused(const ember::PeerName& peer, ember::Wanted::Act act, int target,
                      const std::vector<int>& sources) override;
  void ValueRefused(const ember::PeerName& peer, const ember::Path& path,
                    ember::Refusal why) override;
  void PeerDropped(const ember::PeerName& peer, ember::PeerDrop why) override;
  void PeerGone(const ember::PeerName& peer) override;

  QString WantedWords(const ember::Wanted& wanted) const;
  void TellPeers();

  const Services services_;
  const CrosspointWords crosspoints_;
  gateway::Listener listener_;
  ListenAgain again_;
  gateway::QtPauseTimer takeTimer_;
  gateway::QtPauseTimer newsTimer_;
  gateway::QtPauseTimer secondTimer_;
  gateway::QtPauseTimer workTimer_;
  switcher::LiveCommands commands_;
  ember::Provider provider_;
  std::map<int, QString> peers_;  // those that are connected: their addresses
};

}  // namespace app

#endif  // APP_NETWORK_OPEN_GATEWAY_H_
