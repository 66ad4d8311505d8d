// SPDX-License-Identifier: MIT

#include "app/log/log_keeper.h"

namespace app {

using Kind = EventLog::Kind;

LogKeeper::LogKeeper(const LogSources& sources)
    : crosspoints_(sources.labels), rows_(sources.model) {
  connect(&sources.window, &MainWindow::LinkTextShown, this,
          [this](const QString& text) { log_.Add(Kind::Link, text); });
  connect(&sources.window, &MainWindow::BlockedCodeShown, this, &LogKeeper::NoteBlockedCode);
  connect(&sources.panels, &PanelReports::Happened, this,
          [this](const QString& text) { log_.Add(Kind::Panel, text); });
  FollowViews(sources.views);
  FollowTransfers(sources.transfers);
  connect(&sources.boxes, &MessageBoxes::Reported, this,
          [this](const QString& title, const QString& text) {
            AddRepeated(Kind::Report, reports_, QStringLiteral("%1: %2").arg(title, text));
          });
  sources.commands.SetObserver(
      [this](const QString& id) { log_.Add(Kind::Command, CommandWords(id)); });
}

void LogKeeper::FollowViews(OpenViews& views) {
  connect(&views, &OpenViews::MapReported, this, [this](int output, int mode) {
    log_.Add(Kind::Map, crosspoints_.Report(rows_.Report(output, mode)));
  });
  connect(&views, &OpenViews::ReportRefused, this, &LogKeeper::NoteRefusal);
  connect(&views, &OpenViews::TakeSent, this, [this](int output, int input, int action) {
    log_.Add(Kind::Command, crosspoints_.Command(output, input, action));
  });
  connect(&views, &OpenViews::MapRefreshRequested, this,
          [this] { log_.Add(Kind::Command, tr("Refresh Map")); });
  connect(&views, &OpenViews::Edited, this, [this](const switcher::TablePart& table) {
    log_.Add(Kind::Table, tr("Edited: %1").arg(TableWords(table)));
  });
  connect(&views, &OpenViews::Sent, this, [this](const switcher::TablePart& table, int messages) {
    log_.Add(Kind::Table, tr("Sent: %1").arg(SentTableWords(table, messages)));
  });
  connect(&views, &OpenViews::NotSent, this, [this](const switcher::TablePart& table) {
    log_.Add(Kind::Table, tr("Not sent: %1").arg(TableWords(table)));
  });
  connect(&views, &OpenViews::NoteRequested, this, &LogKeeper::Note);
}

void LogKeeper::FollowTransfers(Transfers& transfers) {
  connect(&transfers, &Transfers::DownloadBegun, this, [this](std::int16_t mode) {
    log_.Add(Kind::Table, mode == 0 ? tr("Download begun") : tr("Download of the buttons begun"));
  });
  connect(&transfers, &Transfers::DownloadEnded, this,
          [this](const switcher::DownloadResult& result) {
            log_.Add(Kind::Table, DownloadWords(result));
          });
  connect(&transfers, &Transfers::RetrievalBegun, this,
          [this] { log_.Add(Kind::Table, tr("Retrieval begun")); });
  connect(&transfers, &Transfers::RetrievalEnded, this,
          [this](const switcher::RetrievalResult& result) {
            log_.Add(Kind::Table, RetrievalWords(result));
          });
}

LogKeeper::~LogKeeper() { delete window_; }

void LogKeeper::Show() {
  if (window_ == nullptr) window_ = new EventLogWindow(log_);
  if (window_->isMinimized()) window_->showNormal();
  window_->show();
  window_->raise();
  window_->activateWindow();
}

// Adds a line that may come many times a second.
void LogKeeper::AddRepeated(Kind kind, RepeatedLines& lines, const QString& line) {
  const int times = lines.Count(line, QDateTime::currentDateTime());
  if (times > 0) log_.Add(kind, TimesWords(line, times));
}

void LogKeeper::NoteRefusal(const QString& description, switcher::DecodeStatus status) {
  AddRepeated(Kind::Link, refusals_, RefusalWords(description.toStdString(), status));
}

void LogKeeper::NoteBlockedCode(std::optional<std::uint8_t> code) {
  if (code.has_value()) {
    log_.Add(Kind::Link, tr("Receiving blocked by unknown code %1").arg(ByteWords(*code)));
  }
}

void LogKeeper::ByteDiscarded(std::uint8_t byte) {
  log_.Add(Kind::Link, tr("Discarded byte %1").arg(ByteWords(byte)));
}

}  // namespace app
