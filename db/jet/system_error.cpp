// SPDX-License-Identifier: MIT

#include "db/jet/system_error.h"

#include <cerrno>
#include <system_error>

#include "files/file.h"

namespace jet {

namespace {

// Quotas are not known everywhere, and have no portable name.
bool IsOverQuota([[maybe_unused]] std::error_code error) {
#ifdef EDQUOT
  return error == std::error_condition(EDQUOT, std::generic_category());
#else
  return false;
#endif
}

}  // namespace

ErrorNumber NumberOf(std::error_code error) {
  if (error == files::Error::NotAFile) return ErrorNumber::CannotOpen;
  if (error == files::Error::TooLarge) return ErrorNumber::Damaged;
  if (error == files::Error::WriteProtected) return ErrorNumber::ReadOnly;
  using std::errc;
  if (error == errc::no_such_file_or_directory || error == errc::not_a_directory) {
    return ErrorNumber::FileNotFound;
  }
  if (error == errc::file_exists) return ErrorNumber::FileExists;
  for (const errc denied :
       {errc::permission_denied, errc::operation_not_permitted, errc::read_only_file_system,
        errc::is_a_directory, errc::text_file_busy}) {
    if (error == denied) return ErrorNumber::CannotOpen;
  }
  if (error == errc::no_space_on_device || error == errc::file_too_large || IsOverQuota(error)) {
    return ErrorNumber::DiskFull;
  }
  return ErrorNumber::DiskError;
}

}  // namespace jet
