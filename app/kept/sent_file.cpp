// SPDX-License-Identifier: MIT

#include "app/kept/sent_file.h"

#include <string>
#include <utility>

namespace app {

SentFile::SentFile(std::filesystem::path path, const switcher::HeldMessages& messages)
    : TextFile(std::move(path), [&messages] { return switcher::WriteHeld(messages); }) {}

switcher::HeldMessages SentFile::Read() {
  // Without it nothing is known, which is no error.
  std::string text;
  (void)TextFile::Read(switcher::kMostHeldText, &text);
  return switcher::ReadHeld(text);
}

}  // namespace app
