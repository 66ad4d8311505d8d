// SPDX-License-Identifier: MIT

#include "app/log/event_log_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <filesystem>

#include "files/whole_file.h"
#include "views/widgets/save_dialog.h"
#include "views/window_place/kept_place.h"
#include "views/window_place/on_screen.h"

namespace app {

EventLogWindow::EventLogWindow(EventLog& log, QWidget* parent)
    : TableWindow({.window = QStringLiteral("frmEventLog"),
                   .filter = QStringLiteral("aidLogFilter"),
                   .table = QStringLiteral("aidLogLines"),
                   .said = QStringLiteral("aidLogSaid"),
                   .close = QStringLiteral("aidLogClose"),
                   .icon = QStringLiteral("event-log"),
                   .hint = tr("Show only lines with…"),
                   .lines = tr("Events"),
                   .columns = {12, 12, 80}},
                  parent),
      log_(log) {
  setWindowTitle(tr("Event Log"));
  resize(views::SizeOnScreen(WantedSize(), screen()->availableSize()));
  shown_.setFilterCaseSensitivity(Qt::CaseInsensitive);
  shown_.setFilterKeyColumn(-1);
  shown_.setSourceModel(&log_);
  SetLines(shown_);
  connect(&Filter(), &QLineEdit::textChanged, &shown_,
          &QSortFilterProxyModel::setFilterFixedString);
  connect(&shown_, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
    const QScrollBar& bar = *Table().verticalScrollBar();
    atEnd_ = bar.value() == bar.maximum();
  });
  connect(&shown_, &QAbstractItemModel::rowsInserted, this, [this] {
    if (atEnd_) Table().scrollToBottom();
  });
  connect(&AddButton(QStringLiteral("aidLogCopy"), tr("&Copy"),
                     tr("Copy the selected lines, or all that are shown")),
          &QPushButton::clicked, this, &EventLogWindow::Copy);
  connect(&AddButton(QStringLiteral("aidLogSave"), tr("&Save…"),
                     tr("Save the lines that are shown as a text file")),
          &QPushButton::clicked, this, &EventLogWindow::AskWhereToSave);
  Table().installEventFilter(this);
  Table().scrollToBottom();
  new views::KeptPlace(*this, QStringLiteral("EventLog"));
}

// The list would copy one cell.
bool EventLogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &Table() && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
    Copy();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

QString EventLogWindow::Text(bool selectedOnly) const {
  std::vector<int> rows;
  if (selectedOnly) {
    for (const QModelIndex& index : Table().selectionModel()->selectedRows()) {
      rows.push_back(index.row());
    }
    std::ranges::sort(rows);
  }
  if (rows.empty()) {
    for (int row = 0; row < shown_.rowCount(); ++row) rows.push_back(row);
  }
  QString text;
  for (const int row : rows) {
    text += log_.Line(shown_.mapToSource(shown_.index(row, 0)).row()) + u'\n';
  }
  return text;
}

void EventLogWindow::Copy() {
  QGuiApplication::clipboard()->setText(Text(true));
  SetLine(tr("Copied"));
}

void EventLogWindow::AskWhereToSave() {
  views::AskWhereToSave(*this, *this,
                        {.name = QStringLiteral("aidLogSaveDialog"),
                         .title = tr("Save Event Log"),
                         .filters = tr("Text files (*.txt);;All files (*)"),
                         .fileName = QStringLiteral("events.txt")},
                        [this](const QString& path) { SaveTo(path); });
}

bool EventLogWindow::SaveTo(const QString& path) {
  const files::Outcome saved =
      files::Replace(std::filesystem::path(path.toStdU16String()), Text(false).toStdString());
  SetLine(saved.ok() ? tr("Saved to %1").arg(path)
                     : tr("Not saved: %1").arg(QString::fromStdString(saved.text)));
  return saved.ok();
}

}  // namespace app
