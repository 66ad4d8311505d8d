// SPDX-License-Identifier: MIT

#ifndef APP_RUN_INSTANCE_LOCK_H_
#define APP_RUN_INSTANCE_LOCK_H_

#include <QString>
#include <string>

#include "files/file.h"

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
    Failed,  // nobody can tell whether another one holds it
  };

  // Takes the lock of `folder`.  Its file is made if need be, never through a link.
  Result Take(const QString& folder);

  // Why taking it failed: "Cannot lock WorkingDb.lock: No locks available".
  const std::string& Reason() const { return reason_; }

 private:
#ifdef Q_OS_WIN
  void* handle_ = nullptr;
#else
  files::File file_;
#endif
  std::string reason_;
};

}  // namespace app

#endif  // APP_RUN_INSTANCE_LOCK_H_
