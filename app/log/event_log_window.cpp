// SPDX-License-Identifier: MIT

#include "app/log/event_log_window.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>

#include "files/whole_file.h"
#include "views/widgets/icon.h"
#include "views/widgets/save_dialog.h"
#include "views/window_place/on_screen.h"

namespace app {
namespace {

constexpr QSize kLogSize(720, 420);

}  // namespace

EventLogWindow::EventLogWindow(EventLog& log, QWidget* parent)
    : QWidget(parent, Qt::Window),
      log_(log),
      filter_(new QLineEdit(this)),
      list_(new QTableView(this)),
      said_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmEventLog"));
  setWindowTitle(tr("Event Log"));
  setWindowIcon(views::Icon(QStringLiteral("event-log")));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(views::SizeOnScreen(kLogSize, screen()->availableSize()));
  Build();
}

void EventLogWindow::Build() {
  shown_.setFilterCaseSensitivity(Qt::CaseInsensitive);
  shown_.setFilterKeyColumn(-1);
  shown_.setSourceModel(&log_);

  filter_->setObjectName(QStringLiteral("aidLogFilter"));
  filter_->setPlaceholderText(tr("Show only lines with…"));
  filter_->setAccessibleName(tr("Filter"));
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, &shown_, &QSortFilterProxyModel::setFilterFixedString);

  list_->setObjectName(QStringLiteral("aidLogLines"));
  list_->setAccessibleName(tr("Events"));
  list_->setModel(&shown_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  list_->setShowGrid(false);
  list_->setAlternatingRowColors(true);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  const int character = fontMetrics().averageCharWidth();
  list_->setColumnWidth(EventLog::kTime, 12 * character);
  list_->setColumnWidth(EventLog::kKind, 12 * character);
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setHighlightSections(false);
  connect(&shown_, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
    const QScrollBar& bar = *list_->verticalScrollBar();
    atEnd_ = bar.value() == bar.maximum();
  });
  connect(&shown_, &QAbstractItemModel::rowsInserted, this, [this] {
    if (atEnd_) list_->scrollToBottom();
  });

  auto* const copy = new QPushButton(tr("&Copy"), this);
  copy->setObjectName(QStringLiteral("aidLogCopy"));
  copy->setToolTip(tr("Copy the selected lines, or all that are shown"));
  connect(copy, &QPushButton::clicked, this, &EventLogWindow::Copy);
  auto* const save = new QPushButton(tr("&Save…"), this);
  save->setObjectName(QStringLiteral("aidLogSave"));
  save->setToolTip(tr("Save the lines that are shown as a text file"));
  connect(save, &QPushButton::clicked, this, &EventLogWindow::AskWhereToSave);
  auto* const close = new QPushButton(tr("Close"), this);
  close->setObjectName(QStringLiteral("aidLogClose"));
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  said_->setObjectName(QStringLiteral("aidLogSaid"));
  said_->setTextFormat(Qt::PlainText);

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(said_, 1);
  for (QPushButton* const button : {copy, save, close}) buttons->addWidget(button);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(filter_);
  layout->addWidget(list_, 1);
  layout->addLayout(buttons);

  list_->installEventFilter(this);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_,
          qOverload<>(&QWidget::setFocus));
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  list_->scrollToBottom();
  filter_->setFocus();
}

// The list would copy one cell.
bool EventLogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
    Copy();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

QString EventLogWindow::Text(bool selectedOnly) const {
  std::vector<int> rows;
  if (selectedOnly) {
    for (const QModelIndex& index : list_->selectionModel()->selectedRows()) {
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
  Say(tr("Copied"));
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
  Say(saved.ok() ? tr("Saved to %1").arg(path)
                 : tr("Not saved: %1").arg(QString::fromStdString(saved.text)));
  return saved.ok();
}

void EventLogWindow::Say(const QString& text) { said_->setText(text); }

}  // namespace app
