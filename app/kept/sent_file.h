// SPDX-License-Identifier: MIT

#ifndef APP_KEPT_SENT_FILE_H_
#define APP_KEPT_SENT_FILE_H_

#include <filesystem>

#include "app/kept/text_file.h"
#include "switcher/unsent/held_messages.h"

namespace app {

inline constexpr char kSentFile[] = "Tesk.sent";

// Tesk.sent: what is known of the switcher's tables, kept from run to run.
class SentFile : public TextFile {
  Q_OBJECT

 public:
  // `messages` is what the file is to hold; it must outlive the object.
  SentFile(std::filesystem::path path, const switcher::HeldMessages& messages);

  // What the file says; nothing when it is not there or cannot be read.
  switcher::HeldMessages Read();
};

}  // namespace app

#endif  // APP_KEPT_SENT_FILE_H_
