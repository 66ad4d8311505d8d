// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_PANEL_ADMISSION_H_
#define APP_NETWORK_PANEL_ADMISSION_H_

#include <QObject>
#include <QString>
#include <memory>

#include "app/network/access_settings.h"
#include "app/network/connection_flood.h"
#include "app/network/listen_again.h"
#include "app/shell/hint_strip.h"
#include "gateway/qt_sockets.h"
#include "model/system_model.h"

namespace app {

// Who reaches the console as a network panel: listens where the settings want it, lets in whom they
// name, and says what the operator should know of it.
class PanelAdmission : public QObject {
  Q_OBJECT

 public:
  // All must outlive the object.
  struct Services {
    PanelAccess access;
    const model::SystemModel& model;  // whether panels are wanted, and on which port
    HintStrip& hints;
    ConnectionFlood& flood;
    gateway::Listener::AcceptHandler admit;  // takes a panel that is let in
  };
  explicit PanelAdmission(Services services);

  // The socket that listens, at the address of the settings.  The start-up, the settings and the
  // shut-down start and stop it.
  gateway::Listener& Listener() { return listener_; }

  // Somebody has started the listener, or stopped it, as the model wants it now: says what came of
  // it.  When it failed at an address of the settings, it is tried again until it succeeds; without
  // such an address whoever tried reports the failure.
  void Update();

 Q_SIGNALS:
  // Panels are listened for; from now on, or anew.
  void Listening();
  // "Network panels can connect to port 1250 now"
  void Happened(const QString& text);
  // The same for what may happen many times a second.
  void HappenedAgain(const QString& text);

 private:
  bool AdmitsNobody() const { return !services_.access.problem.isEmpty(); }
  QString ClosedWords() const;
  void Accept(std::unique_ptr<gateway::ClientSocket> client);
  void ListensAtLast();

  const Services services_;
  gateway::Listener listener_;
  ListenAgain again_;
};

}  // namespace app

#endif  // APP_NETWORK_PANEL_ADMISSION_H_
