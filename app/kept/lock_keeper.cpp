// SPDX-License-Identifier: MIT

#include "app/kept/lock_keeper.h"

#include <filesystem>

#include "config/lock_text.h"
#include "views/widgets/question.h"

namespace app {

LockKeeper::LockKeeper(const Services& services)
    : services_(services), file_(services.file, [this] { return Text(); }) {
  services_.locks.AddObserver(*this);
  connect(&services_.window.LockConsoleCommand(), &QAction::triggered, this, &LockKeeper::Toggle);
  connect(&file_, &TextFile::Failed, this, [this](const QString& why) {
    services_.window.Hints().Give(Hint::LocksFail,
                                  tr("What is locked cannot be kept: %1").arg(why));
  });
  connect(&file_, &TextFile::Written, this,
          [this] { services_.window.Hints().Withdraw(Hint::LocksFail); });
  ShowConsole();
}

LockKeeper::~LockKeeper() { services_.locks.RemoveObserver(*this); }

std::string LockKeeper::Text() const {
  if (!hasChanged_) return asRead_;
  return config::WriteLocks({.isConsoleLocked = services_.locks.IsConsoleLocked(),
                             .outputs = services_.locks.LockedOutputs()});
}

void LockKeeper::Begin() {
  const model::Status status = file_.Read(config::kMostLockText, &asRead_);
  config::LockState state;
  if (!status.ok() || (!asRead_.empty() && !config::ReadLocks(asRead_, &state))) {
    asRead_.clear();
    const QString text = tr("What was locked is not locked any more: %1").arg(WhyUnlocked(status));
    services_.window.Hints().Give(Hint::LocksLost, text);
    Q_EMIT NoteRequested(text);
    return;
  }
  for (const auto& [output, against] : state.outputs) services_.locks.LockOutput(output, against);
  services_.locks.LockConsole(state.isConsoleLocked);
  hasChanged_ = false;
}

QString LockKeeper::WhyUnlocked(const model::Status& read) {
  std::filesystem::path kept;
  const bool isKept = file_.PutAside("damaged", &kept).ok();
  const QString name = QString::fromStdString(kept.filename().string());
  if (!read.ok()) {
    const QString why = QString::fromStdString(read.Description());
    return isKept ? tr("%1; the file is kept as %2").arg(why, name) : why;
  }
  return isKept ? tr("%1 is damaged; it is kept as %2").arg(QLatin1String(kLocksFile), name)
                : tr("%1 is damaged").arg(QLatin1String(kLocksFile));
}

void LockKeeper::LocksChanged() {
  hasChanged_ = true;
  file_.Update();
  ShowConsole();
}

void LockKeeper::ShowConsole() {
  const bool isLocked = services_.locks.IsConsoleLocked();
  services_.window.Status().SetConsoleLocked(isLocked);
  services_.window.LockConsoleCommand().setText(isLocked ? tr("Unloc&k Console…")
                                                         : tr("Loc&k Console"));
}

void LockKeeper::Toggle() {
  if (!services_.locks.IsConsoleLocked()) {
    if (!services_.storeEdits()) return;
    services_.locks.LockConsole(true);
    Q_EMIT NoteRequested(tr("Console locked"));
    return;
  }
  views::Ask(
      services_.window, *this,
      {.name = QStringLiteral("aidUnlockQuestion"),
       .text = tr("Unlock the console? What is clicked is then sent and stored again."),
       .answers = {{.name = QStringLiteral("aidUnlock"), .caption = tr("&Unlock"), .run = [this] {
                      services_.locks.LockConsole(false);
                      Q_EMIT NoteRequested(tr("Console unlocked"));
                    }}}});
}

}  // namespace app
