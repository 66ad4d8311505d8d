// SPDX-License-Identifier: MIT

#include "app/backups/backup_keeper.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "db/jet/status.h"

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

void BackupKeeper::Keep(Cause cause, const Then& then) {
  const std::filesystem::path path = backups_.PathOf(cause, services_.clock().toSecsSinceEpoch());
  std::string bytes;
  const model::Status status =
      services_.files.DamageFound().IsSound()
          ? services_.files.ReadWorkingCopy(&bytes)
          : model::Status(jet::Status(jet::ErrorNumber::Damaged, "It is damaged"));
  Write(path, status, std::move(bytes), then);
}

void BackupKeeper::Write(const std::filesystem::path& path, const model::Status& reading,
                         std::string bytes, const Then& then) {
  // The thread shares them instead of copying them.
  const auto held = std::make_shared<const std::string>(std::move(bytes));
  const auto holder = std::make_shared<std::filesystem::path>(path);
  const auto tell = [this, holder, then](const model::Status& status) {
    if (status.ok()) {
      Q_EMIT Kept(QString::fromStdU16String(holder->filename().u16string()));
    } else {
      Q_EMIT Failed(QString::fromStdString(status.Description()));
    }
    if (then) then(status);
  };
  if (!reading.ok()) {
    tell(reading);
    return;
  }
  services_.writer.Begin(
      [backups = backups_, path, held, holder] { return backups.Keep(path, *held, holder.get()); },
      tell);
}

void BackupKeeper::NoteMainFile() { notedStatus_ = services_.files.ReadMainFile(&noted_); }

void BackupKeeper::KeepMainFile() {
  if (!services_.files.DamageFound().IsSound()) return;
  const std::filesystem::path path =
      backups_.PathOf(Cause::BeforeSaving, services_.clock().toSecsSinceEpoch());
  Write(path, notedStatus_, std::move(noted_), {});
}

}  // namespace app
