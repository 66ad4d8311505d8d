// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_VERSION_H_
#define APP_SHELL_VERSION_H_

namespace app {

// The version of the program, as the about box and the open gateway have it.
inline constexpr char kVersion[] = "2.12";

}  // namespace app

#endif  // APP_SHELL_VERSION_H_
