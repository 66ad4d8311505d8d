// SPDX-License-Identifier: MIT

#include "app/backups/backup_keeper.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace app {

using Cause = db::Backups::Cause;

namespace {

constexpr int kMinuteMilliseconds = 60'000;

}  // namespace

BackupKeeper::BackupKeeper(const Services& services)
    : services_(services), backups_(services.folder) {
  minute_.setParent(this);
  minute_.setObjectName(QStringLiteral("aidBackupMinute"));
  minute_.setInterval(kMinuteMilliseconds);
  connect(&minute_, &QTimer::timeout, this, &BackupKeeper::KeepDaily);
}

void BackupKeeper::BeginDays() {
  if (!services_.files.IsOpen() || !services_.files.DamageFound().IsSound()) return;
  const QDate today = services_.clock().date();
  if (HasCopyOf(today)) lastDay_ = today;
  KeepDaily();
  minute_.start();
}

// A folder that cannot be read has none: the copy fails, too, and says why.
bool BackupKeeper::HasCopyOf(const QDate& day) const {
  std::vector<db::Backups::Copy> copies;
  if (!backups_.List(&copies).ok()) return false;
  return std::ranges::any_of(copies, [&](const db::Backups::Copy& copy) {
    const QDate made(copy.time.tm_year + 1900, copy.time.tm_mon + 1, copy.time.tm_mday);
    return copy.cause == Cause::Daily && made == day;
  });
}

// The day counts also when that fails: a full disk is told of once a day.
void BackupKeeper::KeepDaily() {
  const QDate today = services_.clock().date();
  if (today == lastDay_) return;
  lastDay_ = today;
  Keep(Cause::Daily);
}

void BackupKeeper::Keep(Cause cause) {
  const std::filesystem::path path = backups_.PathOf(cause, services_.clock().toSecsSinceEpoch());
  // The thread shares them instead of copying them.
  const auto bytes = std::make_shared<std::string>();
  if (const model::Status status = services_.files.ReadWorkingCopy(bytes.get()); !status.ok()) {
    Tell(path, status);
    return;
  }
  services_.writer.Begin([backups = backups_, path, bytes] { return backups.Keep(path, *bytes); },
                         [this, path](const model::Status& status) { Tell(path, status); });
}

void BackupKeeper::NoteMainFile() { notedStatus_ = services_.files.ReadMainFile(&noted_); }

void BackupKeeper::KeepMainFile() {
  if (!services_.files.DamageFound().IsSound()) return;
  services_.writer.Finish();
  const std::filesystem::path path =
      backups_.PathOf(Cause::BeforeSaving, services_.clock().toSecsSinceEpoch());
  Tell(path, notedStatus_.ok() ? backups_.Keep(path, noted_) : notedStatus_);
  noted_.clear();
}

void BackupKeeper::Tell(const std::filesystem::path& path, const model::Status& status) {
  if (status.ok()) {
    Q_EMIT Kept(QString::fromStdU16String(path.filename().u16string()));
  } else {
    Q_EMIT Failed(QString::fromStdString(status.Description()));
  }
}

}  // namespace app
