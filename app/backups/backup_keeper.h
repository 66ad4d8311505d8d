// SPDX-License-Identifier: MIT

#ifndef APP_BACKUPS_BACKUP_KEEPER_H_
#define APP_BACKUPS_BACKUP_KEEPER_H_

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "app/backups/background_writer.h"
#include "db/backups.h"
#include "db/database_files.h"

namespace app {

inline constexpr char kBackupsFolder[] = "Backups";

// Keeps dated copies of the database: once a day of running, before each retrieval, before an older
// copy is restored, and of Tesk.mdb as it was when a run replaced it.
//
// A copy holds what the database held at the moment when it was asked for.  It is read at once,
// which takes less than a millisecond, and written in the background.  One that cannot be made is
// said to be so and keeps nothing from happening.
class BackupKeeper : public QObject {
  Q_OBJECT

 public:
  struct Services {
    db::DatabaseFiles& files;
    BackgroundWriter& writer;
    std::filesystem::path folder;  // of the copies
    std::function<QDateTime()> clock = [] { return QDateTime::currentDateTime(); };
  };

  // What is referred to must outlive the object.
  explicit BackupKeeper(const Services& services);

  // Keeps a copy today, unless there is a daily one, and one at the first minute of each further
  // day.  To be called when the database was opened; without one, or with a damaged one, there are
  // none: they would push out those that can be restored.
  void BeginDays();

  // Keeps a copy of the database as it is now.
  void Keep(db::Backups::Cause cause);

  // Tesk.mdb may be replaced next: notes what it holds.
  void NoteMainFile();

  // It was replaced: keeps what was noted, unless it was damaged, for then it was kept beside it.
  // The copy is written when this returns: the program ends.
  void KeepMainFile();

  const db::Backups& Copies() const { return backups_; }

 Q_SIGNALS:
  // A copy is on the disk; the name of its file.
  void Kept(const QString& name);
  // None could be made, and why; every time.
  void Failed(const QString& why);

 private:
  bool HasCopyOf(const QDate& day) const;
  void KeepDaily();
  void Tell(const std::filesystem::path& path, const model::Status& status);

  const Services services_;
  const db::Backups backups_;
  QTimer minute_;
  QDate lastDay_;
  std::string noted_;
  model::Status notedStatus_;
};

}  // namespace app

#endif  // APP_BACKUPS_BACKUP_KEEPER_H_
