// SPDX-License-Identifier: MIT

#ifndef APP_LOG_REPEATED_LINES_H_
#define APP_LOG_REPEATED_LINES_H_

#include <QDateTime>
#include <QString>
#include <map>
#include <utility>

namespace app {

// Keeps the log readable when the same thing happens many times a second, as on a bad line, in a
// system of another size, or at the will of a stranger on the network: the same line is written
// once a minute, with its count.
//
// Of different lines so many are written in a minute: the rest is counted, or a stranger who finds
// ever new words would drive everything else out of the log.
class RepeatedLines {
 public:
  static constexpr int kQuietSeconds = 60;
  static constexpr int kMostNew = 300;

  // What `line` says happened at `now`.  Returns how many times it did since the line was last to
  // be written, this time included; 0 while it is not to be written again.
  int Count(const QString& line, const QDateTime& now);

  // How many times something happened that stands in no line, in the minutes that are over at
  // `now`; since the last call.
  int TakeLeftOut(const QDateTime& now);

  // The same with the minute that is not over yet, for the end of the run.
  int TakeAllLeftOut();

  // Whether anything is to be taken, now or when the minute is over.
  bool HasLeftOut() const { return leftOut_ > 0 || uncounted_ > 0; }

  // Whether a new object would write the same from `now` on.
  bool IsForgotten(const QDateTime& now) const;

 private:
  struct Entry {
    QDateTime writtenAt;
    int unwritten = 0;
  };

  void BeginMinute(const QDateTime& now);
  void ForgetOld(const QDateTime& now);

  std::map<QString, Entry> entries_;
  QDateTime minute_;   // when it began
  int new_ = 0;        // how many times a line came in it that is not among the entries
  int uncounted_ = 0;  // how many of these were left out
  int leftOut_ = 0;    // how many lines were left out in earlier minutes and not taken yet
};

}  // namespace app

#endif  // APP_LOG_REPEATED_LINES_H_
