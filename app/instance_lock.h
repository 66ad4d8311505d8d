// SPDX-License-Identifier: MIT

#ifndef APP_INSTANCE_LOCK_H_
#define APP_INSTANCE_LOCK_H_

#include <QString>

namespace app {

// Keeps a second console out of the same folder.  The lock is the operating system's and dies
// with the process, however that ends; the file it is held on may stay behind and means
// nothing.
class InstanceLock {
 public:
  InstanceLock() = default;
  ~InstanceLock();
  InstanceLock(const InstanceLock&) = delete;
  InstanceLock& operator=(const InstanceLock&) = delete;

  enum class Result {
    Taken,
    HeldByAnother,
    NoLocks,  // the folder cannot be locked: not writable, or a file system without locks
  };

  // Takes the lock of `folder`.
  Result Take(const QString& folder);

 private:
#ifdef Q_OS_WIN
  void* handle_ = nullptr;
#else
  int handle_ = -1;
#endif
};

}  // namespace app

#endif  // APP_INSTANCE_LOCK_H_
