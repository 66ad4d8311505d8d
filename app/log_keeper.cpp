// SPDX-License-Identifier: MIT

#include "app/log_keeper.h"

namespace app {

using Kind = EventLog::Kind;

LogKeeper::LogKeeper(MainWindow& window, OpenViews& views, Transfers& transfers,
                     MessageBoxes& boxes, CommandTable& commands) {
  connect(&window, &MainWindow::LinkTextShown, this,
          [this](const QString& text) { log_.Add(Kind::Link, text); });
  connect(&window, &MainWindow::PanelsShown, this, &LogKeeper::NotePanels);
  connect(&window, &MainWindow::PanelNoted, this,
          [this](const QString& note) { log_.Add(Kind::Panel, note); });
  connect(&views, &OpenViews::MapReported, this,
          [this](int output) { log_.Add(Kind::Map, tr("Output %1 reported").arg(output)); });
  connect(&views, &OpenViews::TakeSent, this, [this](int output, int input, int action) {
    log_.Add(Kind::Command, tr("Crosspoint output %1, input %2, action 0x%3")
                                .arg(output)
                                .arg(input)
                                .arg(action, 2, 16, QLatin1Char('0')));
  });
  connect(&views, &OpenViews::TableEvent, this,
          [this](const QString& text) { log_.Add(Kind::Table, text); });
  connect(&views, &OpenViews::NoteRequested, this, &LogKeeper::Note);
  connect(&transfers, &Transfers::Happened, this,
          [this](const QString& text) { log_.Add(Kind::Table, text); });
  connect(&boxes, &MessageBoxes::Reported, this, [this](const QString& title, const QString& text) {
    log_.Add(Kind::Report, QStringLiteral("%1: %2").arg(title, text));
  });
  commands.SetObserver([this](const QString& id) { log_.Add(Kind::Command, id); });
}

LogKeeper::~LogKeeper() { delete window_; }

void LogKeeper::Show() {
  if (window_ == nullptr) window_ = new EventLogWindow(log_);
  if (window_->isMinimized()) window_->showNormal();
  window_->show();
  window_->raise();
  window_->activateWindow();
}

void LogKeeper::NotePanels(const QStringList& panels) {
  for (const QString& panel : panels) {
    if (!panels_.contains(panel)) log_.Add(Kind::Panel, tr("Connected: %1").arg(panel));
  }
  for (const QString& panel : panels_) {
    if (!panels.contains(panel)) log_.Add(Kind::Panel, tr("Gone: %1").arg(panel));
  }
  panels_ = panels;
}

}  // namespace app
