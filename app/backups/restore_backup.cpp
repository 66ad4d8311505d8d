// SPDX-License-Identifier: MIT

#include "app/backups/restore_backup.h"

#include <utility>

#include "model/locks.h"
#include "stations/carry_out.h"
#include "views/change_words.h"
#include "views/widgets/question.h"
#include "views/widgets/shown.h"

namespace app {

using Icon = model::ErrorReporter::Icon;

// Before anything is asked or kept.
bool RestoreBackup::IsRefused() {
  if (services_.changes.MayStore(stations::Origin::Backup)) return false;
  model::ShowConsoleLocked(services_.reporter);
  return true;
}

void RestoreBackup::Ask() {
  // What is typed belongs to what is there now.
  if (views::IsShown(backup_) || IsRefused() || !services_.storeEdits()) return;
  backup_ = new views::BackupWindow({.copies = services_.backups.Copies(),
                                     .database = [this] { return services_.files.Database(); },
                                     .changes = services_.changes,
                                     .elsewhere =
                                         [this](auto work, auto done) {
                                           services_.reader.Begin(std::move(work), std::move(done));
                                         }},
                                    &services_.window);
  backup_->setAttribute(Qt::WA_DeleteOnClose);
  connect(backup_, &views::BackupWindow::RestoreRequested, this, &RestoreBackup::Restore);
  backup_->open();
}

void RestoreBackup::CancelNow() {
  if (views::IsShown(backup_)) backup_->reject();
}

void RestoreBackup::Restore(const std::vector<stations::Change>& changes, const QString& name) {
  if (IsRefused() || std::exchange(isKeeping_, true)) return;
  services_.backups.Keep(db::Backups::Cause::BeforeRestoring,
                         [this, window = backup_, changes, name](const model::Status& status) {
                           isKeeping_ = false;
                           if (!views::IsShown(window)) return;  // it was cancelled meanwhile
                           if (status.ok()) {
                             Store(changes, name);
                           } else {
                             AskAllTheSame(status, changes, name);
                           }
                         });
}

void RestoreBackup::AskAllTheSame(const model::Status& status,
                                  const std::vector<stations::Change>& changes,
                                  const QString& name) {
  views::Ask(*backup_, *this,
             {.name = QStringLiteral("aidAskUnkept"),
              .text = tr("Restore Without A Copy?\r\rThe database as it is now cannot be kept as a "
                         "copy first: %1")
                          .arg(QString::fromStdString(status.Description())),
              .answers = {{.name = QStringLiteral("aidRestoreUnkept"),
                           .caption = tr("Restore All The Same"),
                           .run = [this, changes, name] { Store(changes, name); }}}});
}

void RestoreBackup::Store(const std::vector<stations::Change>& changes, const QString& name) {
  if (IsRefused()) return;
  jet::Database* const database = services_.files.Database();
  const model::Status status =
      database == nullptr ? db::NotOpen()
                          : stations::CarryOut(*database, changes, stations::Direction::Again,
                                               {services_.changes, stations::Origin::Backup});
  if (!status.ok()) {
    services_.reporter.Show(Icon::Critical, "Control Error",
                            model::ErrorText("Error Restoring Backup", status));
    return;
  }
  if (backup_ != nullptr) backup_->accept();
  Q_EMIT NoteRequested(QStringLiteral("%1 (%2)").arg(views::ActTitle(changes), name));
}

}  // namespace app
