// SPDX-License-Identifier: MIT

#ifndef APP_CONSOLE_H_
#define APP_CONSOLE_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <optional>

#include "app/app_folder.h"
#include "app/damage_report.h"
#include "app/log/channel_labels.h"
#include "app/log/log_keeper.h"
#include "app/log/panel_reports.h"
#include "app/open_views.h"
#include "app/shell/command_table.h"
#include "app/shell/export_menu.h"
#include "app/shell/help_window.h"
#include "app/shell/link_aids.h"
#include "app/shell/main_window.h"
#include "app/shell/message_boxes.h"
#include "app/shell/panel_errors.h"
#include "app/shell/sent_note.h"
#include "app/shell/view_menu.h"
#include "app/termination.h"
#include "app/transfers.h"
#include "config/ini_file.h"
#include "config/window_settings.h"
#include "db/database_files.h"
#include "gateway/panel_gateway.h"
#include "gateway/qt_sockets.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/decoder.h"
#include "switcher/line_share.h"
#include "switcher/link.h"
#include "switcher/live_commands.h"
#include "switcher/poll_switch.h"
#include "switcher/qt_serial_port.h"
#include "switcher/table_senders.h"
#include "views/table_sender.h"
#include "views/window_place/placement.h"

namespace app {

// The program: owns every part and connects them.  What a part does is written in the part.
class Console : public QObject, private views::TableSender, private switcher::PollSwitch {
  Q_OBJECT

 public:
  // `folder` is where it keeps its files; nobody else works there.
  explicit Console(AppFolder folder);
  ~Console() override;

  // Starts the program: the main window's place, the start-up loader, the three main views.
  void Start();

 private:
  void ConnectCommands();
  void ConnectTimers();
  void ShowAbout();
  void ShowContents();
  bool ShutDown();
  void OfferToCloseWithoutSaving(const model::Status& status);
  void CloseWithoutSaving();
  void EndRun();
  void SayWhatIsUnusual();
  model::Status WriteSettings() const;
  void EndProgram();
  std::filesystem::path File(const char* name) const;
  config::IniFile ReadSettings() const;
  QString SerialDevice(int number) const;
  void PlaceWindow();

  std::optional<int> SendLabels(int selector) override { return tables_.SendLabels(selector); }
  std::optional<int> SendInhibits(int output) override { return tables_.SendInhibits(output); }
  std::optional<int> SendRelays(int station) override { return tables_.SendRelays(station); }
  std::optional<int> SendButtons(int station) override { return tables_.SendButtons(station); }
  std::optional<int> SendOptos() override { return tables_.SendOptos(); }
  void SetPolling(bool on) override;

  views::Services ViewServices();

  const AppFolder folder_;
  model::SystemModel model_;
  MessageBoxes boxes_;
  config::WindowSettings settings_;
  views::Placement placement_;
  CommandTable commands_;
  db::DatabaseFiles files_;
  stations::Changes changes_;
  DamageReport damage_;
  gateway::Listener listener_;
  gateway::QtPauseTimer panelPause_;
  MainWindow window_;
  switcher::QtSerialPort port_;
  switcher::LiveCommands liveCommands_;
  switcher::LineShare line_;
  switcher::TableSenders tables_;
  OpenViews views_;
  ViewMenu viewMenu_;
  ChannelLabels labels_;
  InhibitedCells inhibits_;
  PanelReports panelReports_;
  PanelErrors panelErrors_;
  switcher::LiveCommands panelCommands_;
  gateway::PanelGateway panels_;
  switcher::Decoder decoder_;
  switcher::Link link_;
  Transfers transfers_;
  LinkAids aids_;
  LogKeeper log_;
  SentNote sentNote_;
  ExportMenu export_;
  Termination termination_;
  QPointer<HelpWindow> help_;
  bool terminating_ = false;
  bool ended_ = false;
};

}  // namespace app

#endif  // APP_CONSOLE_H_
