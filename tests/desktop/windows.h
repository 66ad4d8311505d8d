// SPDX-License-Identifier: MIT

#ifndef TESTS_DESKTOP_WINDOWS_H_
#define TESTS_DESKTOP_WINDOWS_H_

#include <filesystem>
#include <string>
#include <vector>

#include "tests/desktop/scene.h"

namespace desktop {

// Opens every window of the console on a desktop that looks so, saves a picture of each in the
// folder, and closes it again, every other one with Escape and the others with what the window
// manager has for it.  What was not as it should be: a window that is not whole on the screen, that
// has not the keyboard, that does not close, or that does not give the keyboard back.
std::vector<std::string> LookAtWindows(const Look& look, const std::filesystem::path& folder);

}  // namespace desktop

#endif  // TESTS_DESKTOP_WINDOWS_H_
