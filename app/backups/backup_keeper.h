// SPDX-License-Identifier: MIT

#ifndef APP_BACKUPS_BACKUP_KEEPER_H_
#define APP_BACKUPS_BACKUP_KEEPER_H_

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <string>

#include "app/kept/background_writer.h"
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

  // Is told how keeping a copy went.
  using Then = std::function<void(const model::Status&)>;

  // Keeps a copy of the database as it is now, and runs `then`, if any, when it is on the disk or
  // has failed.  Of a damaged database none is kept (3049): it would push out one that can be
  // restored, and could not be restored itself.
  void Keep(db::Backups::Cause cause, const Then& then = {});

  // Tesk.mdb may be replaced next: notes what it holds.
  void NoteMainFile();

  // It was replaced: keeps what was noted, unless it was damaged, for then it was kept beside it.
  void KeepMainFile();

  const db::Backups& Copies() const { return backups_; }

 Q_SIGNALS:
  // A copy is on the disk; the name of its file, which may be that of an earlier copy that holds
  // the same.
  void Kept(const QString& name);
  // None could be made, and why; every time.
  void Failed(const QString& why);

 private:
  bool HasCopyOf(const QDate& day) const;
  void KeepDaily();
  // Writes what was read, if that went well.
  void Write(const std::filesystem::path& path, const model::Status& reading, std::string bytes,
             const Then& then);

  const Services services_;
  const db::Backups backups_;
  QTimer minute_;
  QDate lastDay_;
  std::string noted_;
  model::Status notedStatus_;
};

}  // namespace app

#endif  // APP_BACKUPS_BACKUP_KEEPER_H_
