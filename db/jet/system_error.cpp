// SPDX-License-Identifier: MIT

#include "db/jet/system_error.h"

#include <cerrno>

#include "files/file.h"

namespace jet {

ErrorNumber NumberOf(std::error_code error) {
  if (error == files::Error::NotAFile) return ErrorNumber::CannotOpen;
  if (error == files::Error::TooLarge) return ErrorNumber::Damaged;
  if (error == files::Error::WriteProtected) return ErrorNumber::ReadOnly;
  switch (error.value()) {
    case ENOENT:
    case ENOTDIR:
      return ErrorNumber::FileNotFound;
    case EEXIST:
      return ErrorNumber::FileExists;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
      return ErrorNumber::CannotOpen;
    case ENOSPC:
    case EFBIG:
#ifdef EDQUOT  // quotas are not known everywhere
    case EDQUOT:
#endif
      return ErrorNumber::DiskFull;
    default:
      return ErrorNumber::DiskError;
  }
}

}  // namespace jet
