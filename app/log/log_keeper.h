// SPDX-License-Identifier: MIT

#ifndef APP_LOG_LOG_KEEPER_H_
#define APP_LOG_LOG_KEEPER_H_

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <optional>

#include "app/log/channel_labels.h"
#include "app/log/event_log.h"
#include "app/log/event_log_window.h"
#include "app/log/event_words.h"
#include "app/log/panel_reports.h"
#include "app/log/repeated_lines.h"
#include "app/log/reported_rows.h"
#include "app/open_views.h"
#include "app/shell/command_table.h"
#include "app/shell/main_window.h"
#include "app/shell/message_boxes.h"
#include "app/transfers.h"

namespace app {

// Whose events the log has; all must outlive its keeper.
struct LogSources {
  const model::SystemModel& model;
  ChannelLabels& labels;
  MainWindow& window;
  OpenViews& views;
  PanelReports& panels;
  Transfers& transfers;
  MessageBoxes& boxes;
  CommandTable& commands;
};

// Writes the event log from what the parts of the program announce, and shows it.
class LogKeeper : public QObject {
  Q_OBJECT

 public:
  explicit LogKeeper(const LogSources& sources);

  // Closes the window of the log.
  ~LogKeeper() override;

  EventLog& Log() { return log_; }

  // Notes what belongs to none of the parts.
  void Note(const QString& text) { log_.Add(EventLog::Kind::Note, text); }

  // The operator has discarded a byte that blocked all receiving.
  void ByteDiscarded(std::uint8_t byte);

  // Opens the window of the log, or brings it up.
  void Show();

 private:
  void FollowViews(OpenViews& views);
  void FollowTransfers(Transfers& transfers);
  void AddRepeated(EventLog::Kind kind, RepeatedLines& lines, const QString& line);
  void NoteRefusal(const QString& description, switcher::DecodeStatus status);
  void NoteBlockedCode(std::optional<std::uint8_t> code);

  EventLog log_;
  CrosspointWords crosspoints_;
  ReportedRows rows_;
  RepeatedLines refusals_;
  RepeatedLines reports_;
  QPointer<EventLogWindow> window_;
};

}  // namespace app

#endif  // APP_LOG_LOG_KEEPER_H_
