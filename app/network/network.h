// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_NETWORK_H_
#define APP_NETWORK_NETWORK_H_

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

#include "app/log/channel_labels.h"
#include "app/log/inhibited_cells.h"
#include "app/network/access_settings.h"
#include "app/network/connection_flood.h"
#include "app/network/open_gateway.h"
#include "app/network/panel_admission.h"
#include "app/network/panel_errors.h"
#include "app/network/panel_reports.h"
#include "app/shell/hint_strip.h"
#include "app/shell/message_boxes.h"
#include "db/database_files.h"
#include "gateway/decode_timer.h"
#include "gateway/panel_gateway.h"
#include "gateway/qt_sockets.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/live_commands.h"
#include "switcher/serial_port.h"

namespace app {

// All of this console that is on the network: the panels and the open gateway, who is let in by
// either, and what the operator is told of those who are.
class Network : public QObject {
  Q_OBJECT

 public:
  // All must outlive the object.
  struct Services {
    AccessSettings access;
    model::SystemModel& model;
    db::DatabaseFiles& files;
    stations::Changes& changes;
    model::Locks& locks;
    switcher::SerialPort& port;
    const switcher::KnownMap& knownMap;
    switcher::LineShare& line;
    gateway::DecodeTimer& decodeTimer;
    ChannelLabels& labels;
    InhibitedCells& inhibits;
    MessageBoxes& boxes;
    HintStrip& hints;
    std::function<void()> gainsChanged;  // a controller has set a gain
  };
  explicit Network(Services services);

  // Says which sections of the settings are in force.
  void TellAccess();

  // The start-up has tried to listen for panels: says what came of it, and listens for controllers
  // where they are wanted.
  void Begin();

  // The operator wants panels on another port, or none, and their listener was started or stopped:
  // says what came of it.
  void PanelSettingsChanged() { admission_.Update(); }

  // The operator has set a gain.
  void GainsChanged() { openGateway_.GainsChanged(); }

  // The link to the switcher may be in another state.
  void LinkChanged() { openGateway_.LinkChanged(); }

  // Ends the open gateway.
  void CloseOpenGateway() { openGateway_.Close(); }

  // What the start-up, the settings and the shut-down start and stop.
  gateway::Listener& PanelListener() { return admission_.Listener(); }

  // The panels; they observe the switcher.
  gateway::PanelGateway& Panels() { return panels_; }

  // Who observes the switcher for the controllers.
  switcher::SwitcherEvents& ControllerObserver() { return openGateway_.Observer(); }

 Q_SIGNALS:
  // Those that are connected, a line each.
  void PanelsChanged(const QStringList& panels);
  void ControllersChanged(const QStringList& controllers);
  // Something to say in passing.
  void NoteRequested(const QString& note);
  // "Panel 2, 192.0.2.7: connected"
  void Happened(const QString& text);
  // The same for what may happen many times a second, with the address that makes it happen; none
  // for what any stranger may.
  void HappenedAgain(const QString& text, const QString& address = {});

 private:
  const Services services_;
  ConnectionFlood flood_;
  PanelReports reports_;
  PanelErrors errors_;
  gateway::QtPauseTimer pause_;
  switcher::LiveCommands commands_;
  gateway::PanelGateway panels_;
  PanelAdmission admission_;
  OpenGateway openGateway_;
};

}  // namespace app

#endif  // APP_NETWORK_NETWORK_H_
