// SPDX-License-Identifier: MIT

#ifndef APP_BACKUPS_RESTORE_BACKUP_H_
#define APP_BACKUPS_RESTORE_BACKUP_H_

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

#include "app/backups/backup_keeper.h"
#include "app/kept/background_writer.h"
#include "db/database_files.h"
#include "model/error_reporter.h"
#include "stations/change.h"
#include "views/backups/backup_window.h"

namespace app {

// Brings back what an older copy of the database holds, as far as the operator wants it.
class RestoreBackup : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // the main window
    db::DatabaseFiles& files;
    BackupKeeper& backups;
    stations::Changes& changes;
    BackgroundWriter& reader;  // of a file from elsewhere: its disk may be one that is pulled out
    model::ErrorReporter& reporter;
    // Stores what is typed into a view and not stored yet; false when that failed, which was
    // reported, and nothing is asked for.
    std::function<bool()> storeEdits;
  };

  // All must outlive the object.
  explicit RestoreBackup(const Services& services) : services_(services) {}

  // Opens frmBackup, modal over the main window.  What it asks for is stored as one act when a copy
  // of what there was is on the disk; when none can be kept, or none is there in five seconds, the
  // operator is asked first.  A failure is reported, stores nothing, and leaves the window open.
  void Ask();

  // The program ends: closes the window.
  void CancelNow();

 Q_SIGNALS:
  // It was stored.
  void NoteRequested(const QString& note);

 private:
  bool IsRefused();
  void Restore(const std::vector<stations::Change>& changes, const QString& name);
  void AskAllTheSame(const model::Status& status, const std::vector<stations::Change>& changes,
                     const QString& name);
  void Store(const std::vector<stations::Change>& changes, const QString& name);

  const Services services_;
  QPointer<views::BackupWindow> backup_;
  int keeps_ = 0;  // so often a copy of what there is was waited for, or no more
};

}  // namespace app

#endif  // APP_BACKUPS_RESTORE_BACKUP_H_
