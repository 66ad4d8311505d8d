// SPDX-License-Identifier: MIT

#ifndef APP_CONSOLE_H_
#define APP_CONSOLE_H_

#include <QObject>

#include "app/backups/backup_keeper.h"
#include "app/backups/restore_backup.h"
#include "app/backups/save_copy.h"
#include "app/change_settings.h"
#include "app/journal/journal_keeper.h"
#include "app/journal/recent_changes.h"
#include "app/journal/rescue.h"
#include "app/kept/background_writer.h"
#include "app/kept/lock_keeper.h"
#include "app/kept/sent_file.h"
#include "app/log/channel_labels.h"
#include "app/log/event_log.h"
#include "app/log/inhibited_cells.h"
#include "app/log/log_file.h"
#include "app/log/log_keeper.h"
#include "app/log/switcher_reports.h"
#include "app/network/network.h"
#include "app/paper/export_menu.h"
#include "app/paper/import_command.h"
#include "app/paper/key_sheets_command.h"
#include "app/presets/presets.h"
#include "app/run/app_folder.h"
#include "app/run/damage_report.h"
#include "app/run/opening.h"
#include "app/run/settings_file.h"
#include "app/run/shut_down.h"
#include "app/run/termination.h"
#include "app/shell/command_table.h"
#include "app/shell/edit_menu.h"
#include "app/shell/help_window.h"
#include "app/shell/link_aids.h"
#include "app/shell/main_window.h"
#include "app/shell/main_window_place.h"
#include "app/shell/message_boxes.h"
#include "app/shell/open_views.h"
#include "app/shell/stored_elsewhere.h"
#include "app/shell/view_menu.h"
#include "app/transfer/sent_note.h"
#include "app/transfer/table_tools.h"
#include "app/transfer/transfers.h"
#include "app/transfer/unsent_aids.h"
#include "app/undo/undo_commands.h"
#include "config/window_settings.h"
#include "db/database_files.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/decoder.h"
#include "switcher/known_map.h"
#include "switcher/line_share.h"
#include "switcher/link.h"
#include "switcher/live_commands.h"
#include "switcher/qt_serial_port.h"
#include "switcher/table_senders.h"
#include "switcher/unsent/unsent_messages.h"
#include "views/services.h"
#include "views/unsent_tables.h"

namespace app {

// The program: owns every part and connects them.  What a part does is written in the part.
class Console : public QObject {
  Q_OBJECT

 public:
  // `folder` is where it keeps its files; nobody else works there.
  explicit Console(AppFolder folder);

  // Starts the program.
  void Start();

 private:
  void ConnectCommands();
  void ConnectTimers();
  void ConnectStatusBar();
  // What such a part notes is shown in the status bar, and stands in the log afterwards.
  template <typename Part>
  void ShowAndLogNotesOf(Part& part);
  void ConnectView(views::MainView* view);
  void ConnectBackups();
  void ConnectJournal();
  void ConnectSettings();
  void ConnectSentFile();
  void ConnectPlaces();
  void ConnectNetwork();
  void ConnectShutDown();
  void ShowDemoMode();

  const AppFolder folder_;
  const SettingsFile settingsFile_;
  model::SystemModel model_;
  MessageBoxes boxes_;
  config::WindowSettings places_;
  CommandTable commands_;
  db::DatabaseFiles files_;
  model::Locks locks_;
  stations::Changes changes_;
  switcher::KnownMap knownMap_{model_};
  switcher::UnsentMessages unsentMessages_;
  SentFile sentFile_;
  JournalKeeper journal_;
  DamageReport damage_;
  MainWindow window_;
  MainWindowPlace windowPlace_;
  switcher::QtSerialPort port_;
  switcher::LiveCommands liveCommands_;
  switcher::LineShare share_;
  switcher::TableSenders tables_;
  TableTools tableTools_;
  views::UnsentTables unsent_;
  const views::Services viewServices_;
  OpenViews views_;
  StoredElsewhere storedElsewhere_;
  ViewMenu viewMenu_;
  EditMenu editMenu_;
  UndoCommands undo_;
  ExportMenu export_;
  KeySheetsCommand keySheets_;
  ImportCommand import_;
  SentNote sentNote_;
  Manual manual_;
  EventLog eventLog_;
  LogFile logFile_;
  ChannelLabels labels_;
  InhibitedCells inhibits_;
  Network network_;
  LinkAids aids_;
  UnsentAids unsentAids_;
  SwitcherReports switcherReports_;
  BackgroundWriter presetWriter_;
  Presets presets_;
  switcher::Decoder decoder_;
  switcher::Link link_;
  Transfers transfers_;
  LogKeeper log_;
  BackgroundWriter backupWriter_;
  BackupKeeper backups_;
  BackgroundWriter copyWriter_;
  SaveCopy saveCopy_;
  RestoreBackup restoreBackup_;
  Rescue rescue_;
  RecentChanges recentChanges_;
  ChangeSettings settings_;
  LockKeeper lockKeeper_;
  Opening opening_;
  ShutDown shutDown_;
  Termination termination_;
};

}  // namespace app

#endif  // APP_CONSOLE_H_
