// SPDX-License-Identifier: MIT

#ifndef MODEL_LOCKS_H_
#define MODEL_LOCKS_H_

#include <cstdint>
#include <map>

#include "model/error_reporter.h"
#include "model/observers.h"
#include "model/status.h"

namespace model {

// What is asked for while the console is locked fails with this number, which also stands for other
// permissions that are denied.
inline constexpr int kConsoleLocked = 70;
Status ConsoleLocked();

// Tells the operator that what he asks for is refused because the console is locked.
void ShowConsoleLocked(ErrorReporter& reporter);

// Who shows or keeps the locks.
class LockObserver {
 public:
  virtual ~LockObserver() = default;

  // Some output, or the console, was locked or unlocked.
  virtual void LocksChanged() = 0;
};

// What is not to be changed by mistake: outputs, whose crosspoints then stay as they are, and the
// console as a whole.  It only knows; who is about to send or store asks it first, and says why he
// does not.
class Locks {
 public:
  // Whose takes a locked output refuses.
  enum class Against : std::uint8_t {
    Console,           // tools, presets and the open gateway
    ConsoleAndPanels,  // network panels too
  };

  using Outputs = std::map<int, Against>;  // by output, from 1

  bool IsLocked(int output) const { return outputs_.contains(output); }
  bool IsLockedForPanels(int output) const;
  const Outputs& LockedOutputs() const { return outputs_; }

  // Locks an output, from 1, or changes whom its lock is against.
  void LockOutput(int output, Against against);
  void UnlockOutput(int output);

  // Nothing is sent or stored by the operator while the console is locked.
  bool IsConsoleLocked() const { return isConsoleLocked_; }
  void LockConsole(bool isLocked);

  // Told after each change.  An observer must outlive the object.
  void AddObserver(LockObserver& observer) { observers_.Add(observer); }
  void RemoveObserver(const LockObserver& observer) { observers_.Remove(observer); }

 private:
  Outputs outputs_;
  bool isConsoleLocked_ = false;
  Observers<LockObserver> observers_;
};

}  // namespace model

#endif  // MODEL_LOCKS_H_
