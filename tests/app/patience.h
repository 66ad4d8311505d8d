// SPDX-License-Identifier: MIT

#ifndef TESTS_APP_PATIENCE_H_
#define TESTS_APP_PATIENCE_H_

namespace app {

// Milliseconds to wait for what comes from another thread.
inline constexpr int kPatience = 60'000;

}  // namespace app

#endif  // TESTS_APP_PATIENCE_H_
