// SPDX-License-Identifier: MIT

#ifndef APP_REFUSALS_H_
#define APP_REFUSALS_H_

#include <QDateTime>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "switcher/decode_status.h"

namespace app {

// Keeps the log readable on a bad line, or in a system of another size, where every report is
// refused, many times a second: the same refusal is spoken of once a minute, with its count.
class Refusals {
 public:
  static constexpr int kQuietSeconds = 60;

  // A message was refused at `now`.  Returns how many times this happened since it was last to be
  // spoken of, this time included; 0 while it is not to be spoken of again.
  int Count(std::string_view description, switcher::DecodeStatus status, const QDateTime& now);

 private:
  struct Entry {
    QDateTime spokenAt;
    int unspoken = 0;
  };

  std::map<std::pair<std::string, switcher::DecodeStatus>, Entry, std::less<>> entries_;
};

}  // namespace app

#endif  // APP_REFUSALS_H_
