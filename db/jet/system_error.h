// SPDX-License-Identifier: MIT

#ifndef DB_JET_SYSTEM_ERROR_H_
#define DB_JET_SYSTEM_ERROR_H_

#include <system_error>

#include "db/jet/status.h"

namespace jet {

// The engine's number for a failure of the operating system or of files/.
ErrorNumber NumberOf(std::error_code error);

}  // namespace jet

#endif  // DB_JET_SYSTEM_ERROR_H_
