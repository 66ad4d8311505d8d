// SPDX-License-Identifier: MIT

#include "app/backups/restore_backup.h"

#include <QTimer>
#include <chrono>
#include <utility>

#include "model/locks.h"
#include "stations/carry_out.h"
#include "views/change_words.h"
#include "views/widgets/question.h"
#include "views/widgets/shown.h"

namespace app {

using Icon = model::ErrorReporter::Icon;

namespace {

// So long a copy is waited for.
constexpr std::chrono::seconds kKeepPatience(5);

}  // namespace

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
  if (IsRefused()) return;
  backup_->SetKeeping(true);
  const auto go = [this, window = backup_, keep = ++keeps_, changes,
                   name](const model::Status& status) {
    // It was cancelled meanwhile, or has waited for too long.
    if (!views::IsShown(window) || keep != keeps_) return;
    ++keeps_;
    window->SetKeeping(false);
    if (status.ok()) {
      Store(changes, name);
    } else {
      AskAllTheSame(status, changes, name);
    }
  };
  QTimer::singleShot(kKeepPatience, this, [go] { go(DiskDoesNotAnswer()); });
  services_.backups.Keep(db::Backups::Cause::BeforeRestoring, go);
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
