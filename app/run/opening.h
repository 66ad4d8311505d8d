// SPDX-License-Identifier: MIT

#ifndef APP_RUN_OPENING_H_
#define APP_RUN_OPENING_H_

#include <QObject>

#include "app/backups/backup_keeper.h"
#include "app/journal/journal_keeper.h"
#include "app/journal/rescue.h"
#include "app/kept/lock_keeper.h"
#include "app/kept/sent_file.h"
#include "app/run/app_folder.h"
#include "app/run/damage_report.h"
#include "app/run/settings_file.h"
#include "app/shell/main_window.h"
#include "app/shell/main_window_place.h"
#include "app/shell/message_boxes.h"
#include "app/shell/open_views.h"
#include "config/window_settings.h"
#include "db/database_files.h"
#include "gateway/qt_sockets.h"
#include "model/system_model.h"
#include "switcher/link.h"
#include "switcher/unsent/unsent_messages.h"

namespace app {

// What the program does before its first event: what its folder lacks is reported, the window gets
// its place, and its locks what they were; the start-up loader runs; the aids take up what earlier
// runs have left; then the timers, the three main views and the window itself, in this order.
class Opening : public QObject {
  Q_OBJECT

 public:
  struct Services {
    const AppFolder& folder;
    const config::WindowSettings& places;
    const SettingsFile& settings;
    model::SystemModel& model;
    MessageBoxes& boxes;
    MainWindow& window;
    MainWindowPlace& place;
    OpenViews& views;
    db::DatabaseFiles& files;
    gateway::Listener& listener;
    switcher::Link& link;
    LockKeeper& locks;
    JournalKeeper& journal;
    Rescue& rescue;
    switcher::UnsentMessages& unsent;
    SentFile& sentFile;
    DamageReport& damage;
    BackupKeeper& backups;
  };

  // All must outlive the object.
  explicit Opening(const Services& services) : services_(services) {}

  // REQUIRES: it was not called before.
  void Run();

 Q_SIGNALS:
  // Settings and database are read, and what earlier runs have left; nothing is polled yet.
  void Loaded();

 private:
  void Load();

  const Services services_;
};

}  // namespace app

#endif  // APP_RUN_OPENING_H_
