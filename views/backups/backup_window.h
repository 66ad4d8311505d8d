// SPDX-License-Identifier: MIT

#ifndef VIEWS_BACKUPS_BACKUP_WINDOW_H_
#define VIEWS_BACKUPS_BACKUP_WINDOW_H_

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "db/backups.h"
#include "db/jet/database.h"
#include "model/status.h"
#include "stations/change.h"
#include "views/differences/difference_list.h"

namespace views {

// frmBackup: the copies of the database that there are, and what the chosen one, at first the
// newest, holds otherwise than the database does now.  It asks for what is ticked to be stored; it
// stores nothing itself, and no copy is ever changed.  When a station is changed meanwhile the copy
// is compared anew; what had no tick gets none.  Once it is closed it reads the database no more.
class BackupWindow : public QDialog, private stations::ChangeObserver {
  Q_OBJECT

 public:
  struct Services {
    const db::Backups& copies;
    std::function<jet::Database*()> database;  // null while it is not open
    stations::Changes& changes;                // of that database
    // Does `work`, which touches nothing that others do, where nobody waits for it, and `done` with
    // what came of it in the event loop.  So another file is read: its disk may be a slow one.
    std::function<void(std::function<model::Status()> work,
                       std::function<void(const model::Status& status)> done)>
        elsewhere;
  };

  // What is referred to must outlive the window.
  explicit BackupWindow(const Services& services, QWidget* parent = nullptr);
  ~BackupWindow() override;

  // Makes another file the chosen one, and lists it unless it is listed already.
  void Choose(const QString& path);

  // What was asked for waits until a copy of the database is kept, or no more: says so, and nothing
  // can be chosen or asked for meanwhile.
  void SetKeeping(bool keeping);

  void done(int result) override;

 Q_SIGNALS:
  // The operator wants these changes made, which make the database hold what the copy `name` does.
  void RestoreRequested(const std::vector<stations::Change>& changes, const QString& name);

 private:
  void Changed(std::span<const stations::Change> changes) override;

  void LayOut();
  void ListCopies();
  QTreeWidgetItem* MakeItem(const QString& made, const QString& why,
                            const std::filesystem::path& path);
  // Null when that file is not listed, by whatever name.
  QTreeWidgetItem* ItemOf(const std::filesystem::path& path) const;
  void AskForFile();
  // Compares the database with the chosen copy; every difference gets a tick.
  void Compare();
  // The same, but what has no tick keeps none.
  void CompareAnew();
  void ReadCopy();
  // Lists what the copy holds otherwise; `status` says why there is none.
  void ShowCopy(const model::Status& status, const std::unique_ptr<jet::Database>& copy);
  void ShowReading();
  // `database` may be null when there are no changes.
  void List(std::vector<stations::Change> changes, jet::Database* database);
  void Restore();

  const Services services_;
  QTreeWidget* copies_;
  QPushButton* otherFile_;
  QLabel* summary_;
  DifferenceList* list_;
  QPushButton* ok_;
  QPushButton* cancel_;
  std::vector<stations::Change> changes_;  // from the database to the chosen copy
  std::vector<ChangeRow> unticked_;        // of these, once they are compared anew
  QTimer compareAnew_;                     // runs after a station was changed
  bool isKeeping_ = false;
  QString question_;     // that the summary asks when nothing is kept
  int comparisons_ = 0;  // the last one is the one that counts
};

}  // namespace views

#endif  // VIEWS_BACKUPS_BACKUP_WINDOW_H_
