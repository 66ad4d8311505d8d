// SPDX-License-Identifier: MIT

#ifndef APP_LOG_LOG_FILE_H_
#define APP_LOG_LOG_FILE_H_

#include <QObject>
#include <QString>
#include <filesystem>

#include "app/log/event_log.h"
#include "app/shell/hint_strip.h"
#include "files/background_lines.h"

namespace app {

// In the folder where the console keeps its files.
inline constexpr char kLogFile[] = "Teskctl.log";

// Keeps the event log on disk, too: every line that is added, as it is copied and saved, with its
// date.  A disk that fails or does not answer costs a hint, which goes when lines can be written
// again; the file says how many are missing.
class LogFile : public QObject {
  Q_OBJECT

 public:
  // Follows `log`; both must outlive the object.  Nothing is made before the first line.
  LogFile(const std::filesystem::path& path, const EventLog& log, HintStrip& hints);

  // The same with something else that writes a line, on a thread of its own.
  LogFile(files::BackgroundLines::Write write, const EventLog& log, HintStrip& hints);

 private:
  void Add(const QString& line);
  void ShowState();

  HintStrip& hints_;
  QString failure_;     // why a line could not be written; empty when it could
  bool hangs_ = false;  // no more lines can wait
  files::BackgroundLines lines_;
};

}  // namespace app

#endif  // APP_LOG_LOG_FILE_H_
