// SPDX-License-Identifier: MIT

#ifndef APP_LOG_REPEATED_LINES_H_
#define APP_LOG_REPEATED_LINES_H_

#include <QDateTime>
#include <QString>
#include <map>

namespace app {

// Keeps the log readable when the same thing happens many times a second, as on a bad line, in a
// system of another size, or at the will of a stranger on the network: the same line is written
// once a minute, with its count.
class RepeatedLines {
 public:
  static constexpr int kQuietSeconds = 60;

  // What `line` says happened at `now`.  Returns how many times it did since the line was last to
  // be written, this time included; 0 while it is not to be written again.
  int Count(const QString& line, const QDateTime& now);

 private:
  struct Entry {
    QDateTime writtenAt;
    int unwritten = 0;
  };

  std::map<QString, Entry> entries_;
};

}  // namespace app

#endif  // APP_LOG_REPEATED_LINES_H_
