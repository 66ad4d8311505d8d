// SPDX-License-Identifier: MIT

#include <QTemporaryDir>
#include <QTreeWidget>
#include <string>

#include "db/backups.h"
#include "db/database_files.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "views/backups/backup_window.h"

namespace gallery {
namespace {

// A database whose copies differ from it.
class KeptDatabase {
 public:
  KeptDatabase() {
    if (!files_.Open().ok()) qFatal("no database");
    Keep("Tesk-2026-11-17-073002-daily.mdb");
    for (int station = 1; station <= 64; ++station) {
      Set(station, "Label", "SET " + std::to_string(station));
    }
    Keep("Tesk-2026-11-20-073000-daily.mdb");
    Set(30, "Notes", "On the roof");
    Keep("Tesk-2026-11-20-181455-before-saving.mdb");
    Set(4, "Label", "CAM 4");
    Set(4, "InLabel", "MIC 4");
    Set(12, "B3 Type", 1);
    Set(17, "Inhibits", "0010011100000000");
    Set(17, "Relays", "1000000000000000");
    Set(21, "Notes", "Moved to the second floor, by the lift");
    Keep("Tesk-2026-11-21-073001-daily.mdb");
    Set(31, "Notes", "On the roof");
    Keep("Tesk-2026-11-21-112936-before-retrieval.mdb");
    Set(32, "Notes", "On the roof");
    Keep("Tesk-2026-11-21-142210-before-restoring.mdb");
  }

  void Draw() {
    views::BackupWindow window(
        {.copies = backups_,
         .database = [this] { return files_.Database(); },
         .changes = changes_,
         .elsewhere = [](const auto& work, const auto& done) { done(work()); }});
    window.show();
    Save(window, QStringLiteral("backups"));
    for (const int copy : {0, 3, 5}) {
      auto* const list = window.findChild<QTreeWidget*>(QStringLiteral("lstBackups"));
      list->setCurrentItem(list->topLevelItem(copy));
      Save(window, QStringLiteral("backups-%1").arg(copy));
    }
    window.SetKeeping(true);
    Save(window, QStringLiteral("backups-keeping"));
    window.SetKeeping(false);
    window.Choose(folder_.filePath(QStringLiteral("Orvotesk.ini")));
    Save(window, QStringLiteral("backups-refused"));
  }

  void DrawEmpty() {
    const db::Backups none(folder_.filePath(QStringLiteral("none")).toStdString());
    views::BackupWindow window({.copies = none,
                                .database = [this] { return files_.Database(); },
                                .changes = changes_,
                                .elsewhere = nullptr});
    window.show();
    Save(window, QStringLiteral("backups-none"));
  }

 private:
  std::filesystem::path PathOf(const char* name) const {
    return folder_.filePath(QLatin1String(name)).toStdString();
  }

  void Set(int station, const char* field, const jet::Value& value) {
    jet::RecordSet& stations = *files_.Stations();
    const bool isSet = stations.Seek(station).ok() && stations.Edit().ok() &&
                       stations.Set(field, value).ok() && stations.Update().ok();
    if (!isSet) qFatal("station %d has no %s", station, field);
  }

  void Keep(const char* name) {
    std::string bytes;
    const bool isKept =
        files_.ReadWorkingCopy(&bytes).ok() && backups_.Keep(PathOf("Backups") / name, bytes).ok();
    if (!isKept) qFatal("no %s", name);
  }

  QTemporaryDir folder_;
  db::DatabaseFiles files_{PathOf("Tesk.mdb"), PathOf("WorkingDb.md$")};
  db::Backups backups_{PathOf("Backups")};
  stations::Changes changes_;
};

}  // namespace

void DrawBackups() {
  KeptDatabase database;
  database.Draw();
  database.DrawEmpty();
}

}  // namespace gallery
