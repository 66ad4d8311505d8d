// SPDX-License-Identifier: MIT

#include "model/locks.h"

namespace model {

Status ConsoleLocked() { return {kConsoleLocked, "The console is locked"}; }

void ShowConsoleLocked(ErrorReporter& reporter) {
  reporter.Show(ErrorReporter::Icon::Exclamation, "Control Error",
                "Action Not Allowed While Console Is Locked");
}

bool Locks::IsLockedForPanels(int output) const {
  const auto lock = outputs_.find(output);
  return lock != outputs_.end() && lock->second == Against::ConsoleAndPanels;
}

void Locks::LockOutput(int output, Against against) {
  const auto [lock, isNew] = outputs_.try_emplace(output, against);
  if (!isNew && lock->second == against) return;
  lock->second = against;
  observers_.Tell(&LockObserver::LocksChanged);
}

void Locks::UnlockOutput(int output) {
  if (outputs_.erase(output) != 0) observers_.Tell(&LockObserver::LocksChanged);
}

void Locks::LockConsole(bool isLocked) {
  if (isConsoleLocked_ == isLocked) return;
  isConsoleLocked_ = isLocked;
  observers_.Tell(&LockObserver::LocksChanged);
}

}  // namespace model
