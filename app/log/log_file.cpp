// SPDX-License-Identifier: MIT

#include "app/log/log_file.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "files/rotating_log.h"

namespace app {

LogFile::LogFile(const std::filesystem::path& path, const EventLog& log, HintStrip& hints)
    : LogFile([file = std::make_shared<files::RotatingLog>(path)](
                  std::string_view line) { return file->Add(line); },
              log, hints) {}

LogFile::LogFile(files::BackgroundLines::Write write, const EventLog& log, HintStrip& hints)
    : hints_(hints),
      lines_(
          std::move(write),
          [](std::size_t lines) { return tr("Lines missing here: %1").arg(lines).toStdString(); },
          [this](const files::Outcome& outcome) {
            // From the thread that writes to the one that shows.
            QMetaObject::invokeMethod(this, [this, outcome] {
              failure_ = QString::fromStdString(outcome.text);
              ShowState();
            });
          }) {
  connect(&log, &QAbstractItemModel::rowsInserted, this,
          [this, &log](const QModelIndex& /*parent*/, int first, int last) {
            for (int row = first; row <= last; ++row) Add(log.Line(row));
          });
}

void LogFile::Add(const QString& line) {
  const bool hung = std::exchange(hangs_, !lines_.Add(line.toStdString()));
  if (hung != hangs_) ShowState();
}

void LogFile::ShowState() {
  const QString why = hangs_ ? tr("the disk does not answer") : failure_;
  if (why.isEmpty()) {
    hints_.Withdraw(Hint::LogFile);
  } else {
    hints_.Give(Hint::LogFile, tr("The event log is not kept on disk: %1").arg(why));
  }
}

}  // namespace app
