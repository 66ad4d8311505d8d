// SPDX-License-Identifier: MIT

#include "app/instance_lock.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace app {

namespace {

QString LockFile(const QString& folder) {
  return QDir(folder).filePath(QStringLiteral("WorkingDb.lock"));
}

}  // namespace

#ifdef Q_OS_WIN

InstanceLock::Result InstanceLock::Take(const QString& folder) {
  const std::wstring name = QDir::toNativeSeparators(LockFile(folder)).toStdWString();
  const HANDLE handle = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return GetLastError() == ERROR_SHARING_VIOLATION ? Result::HeldByAnother : Result::NoLocks;
  }
  handle_ = handle;
  return Result::Taken;
}

InstanceLock::~InstanceLock() {
  if (handle_ != nullptr) CloseHandle(handle_);
}

#else

namespace {

// Opens the file that the lock is held on, making it if need be.  Another user's file may be
// there to be read only; that is enough, save on network drives, where a lock takes the right
// to write.
int OpenLockFile(const QString& folder) {
  const QByteArray name = QFile::encodeName(LockFile(folder));
  for (const int flags : {O_RDWR | O_CREAT, O_RDWR, O_RDONLY}) {
    const int handle = open(name.constData(), flags | O_CLOEXEC, 0666);
    if (handle >= 0) return handle;
  }
  return -1;
}

}  // namespace

InstanceLock::Result InstanceLock::Take(const QString& folder) {
  handle_ = OpenLockFile(folder);
  if (handle_ < 0) return Result::NoLocks;
  // Whoever may use the folder is to see the lock, however cautious the umask of the first one
  // was.  Only the owner of the file can do this, and it is done once.
  (void)fchmod(handle_, 0666);
  if (flock(handle_, LOCK_EX | LOCK_NB) == 0) return Result::Taken;
  return errno == EWOULDBLOCK ? Result::HeldByAnother : Result::NoLocks;
}

InstanceLock::~InstanceLock() {
  if (handle_ >= 0) close(handle_);
}

#endif

}  // namespace app
