// SPDX-License-Identifier: MIT

#include "app/run/instance_lock.h"

#include <QDir>

#include "files/whole_file.h"

#ifdef Q_OS_WIN
#include <windows.h>

#include <system_error>
#endif

namespace app {

namespace {

std::filesystem::path LockFile(const QString& folder) {
  return QDir(folder).filePath(QStringLiteral("WorkingDb.lock")).toStdU16String();
}

}  // namespace

#ifdef Q_OS_WIN

InstanceLock::Result InstanceLock::Take(const QString& folder) {
  const std::filesystem::path name = LockFile(folder);
  const HANDLE handle = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    if (error == ERROR_SHARING_VIOLATION) return Result::HeldByAnother;
    reason_ = files::Failure("lock", name, {static_cast<int>(error), std::system_category()}).text;
    return Result::Failed;
  }
  handle_ = handle;
  return Result::Taken;
}

InstanceLock::~InstanceLock() {
  if (handle_ != nullptr) CloseHandle(handle_);
}

#else

InstanceLock::Result InstanceLock::Take(const QString& folder) {
  const std::filesystem::path name = LockFile(folder);
  std::error_code error = files::File::OpenForLock(name, &file_);
  if (!error) error = file_.Lock();
  if (!error) return Result::Taken;
  if (error == std::errc::resource_unavailable_try_again) return Result::HeldByAnother;
  reason_ = files::Failure("lock", name, error).text;
  return Result::Failed;
}

InstanceLock::~InstanceLock() = default;

#endif

}  // namespace app
