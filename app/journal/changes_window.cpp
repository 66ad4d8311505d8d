// SPDX-License-Identifier: MIT

#include "app/journal/changes_window.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>
#include <memory>
#include <string>
#include <utility>

#include "files/whole_file.h"
#include "stations/journal/journal.h"
#include "views/rules/export_sheets.h"
#include "views/widgets/icon.h"
#include "views/widgets/save_dialog.h"
#include "views/window_place/on_screen.h"

namespace app {
namespace {

constexpr QSize kFirstSize(860, 460);

// In characters, column by column; the last one takes what is left.
constexpr int kWidths[] = {26, 21, 16, 26, 26};

}  // namespace

void ChangesFilter::Look(const QString& text) {
  text_ = text.trimmed();
  bool isNumber = false;
  station_ = text_.toInt(&isNumber);
  if (!isNumber) station_ = 0;
  invalidateFilter();
}

bool ChangesFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  const QModelIndex first = sourceModel()->index(row, 0, parent);
  if (station_ != 0) return first.data(ChangesModel::kStationRole).toInt() == station_;
  for (int column = 0; column < ChangesModel::kColumnCount; ++column) {
    const QString text = first.siblingAtColumn(column).data().toString();
    if (text.contains(text_, Qt::CaseInsensitive)) return true;
  }
  return false;
}

ChangesWindow::ChangesWindow(std::filesystem::path journal, QWidget* parent)
    : QWidget(parent, Qt::Window),
      journal_(std::move(journal)),
      filter_(new QLineEdit(this)),
      list_(new QTableView(this)),
      said_(new QLabel(this)),
      goTo_(new QPushButton(tr("&Go To"), this)),
      export_(new QPushButton(tr("&Export…"), this)) {
  setObjectName(QStringLiteral("frmChanges"));
  setWindowIcon(views::Icon(QStringLiteral("recent-changes")));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(views::SizeOnScreen(kFirstSize, screen()->availableSize()));
  Build();
}

void ChangesWindow::Build() {
  shown_.setSourceModel(&changes_);

  filter_->setObjectName(QStringLiteral("txtFilterChg"));
  filter_->setPlaceholderText(tr("A station's number, or a word…"));
  filter_->setAccessibleName(tr("Filter"));
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, &shown_, &ChangesFilter::Look);

  list_->setObjectName(QStringLiteral("lstChanges"));
  list_->setAccessibleName(tr("Changes"));
  list_->setModel(&shown_);
  list_->setSelectionBehavior(QAbstractItemView::SelectRows);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setTabKeyNavigation(false);
  list_->setShowGrid(false);
  list_->setAlternatingRowColors(true);
  list_->setWordWrap(false);
  list_->verticalHeader()->hide();
  list_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  for (int column = 0; column < ChangesModel::kColumnCount - 1; ++column) {
    list_->setColumnWidth(column, kWidths[column] * fontMetrics().averageCharWidth());
  }
  list_->horizontalHeader()->setStretchLastSection(true);
  list_->horizontalHeader()->setHighlightSections(false);
  list_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  connect(list_, &QTableView::activated, this, &ChangesWindow::GoToCurrent);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ChangesWindow::Update);
  for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
    connect(&shown_, signal, this, &ChangesWindow::Update);
  }
  connect(&shown_, &QAbstractItemModel::modelReset, this, &ChangesWindow::Update);

  goTo_->setObjectName(QStringLiteral("cmdGoToChg"));
  goTo_->setToolTip(tr("Show the selected change in its view"));
  connect(goTo_, &QPushButton::clicked, this, &ChangesWindow::GoToCurrent);
  export_->setObjectName(QStringLiteral("cmdExportChg"));
  export_->setToolTip(tr("Save the changes that are shown as a CSV file"));
  connect(export_, &QPushButton::clicked, this, &ChangesWindow::AskWhereToExport);
  auto* const close = new QPushButton(tr("Close"), this);
  close->setObjectName(QStringLiteral("cmdCloseChg"));
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  said_->setObjectName(QStringLiteral("lblSaidChg"));
  said_->setTextFormat(Qt::PlainText);

  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(said_, 1);
  for (QPushButton* const button : {goTo_, export_, close}) buttons->addWidget(button);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(filter_);
  layout->addWidget(list_, 1);
  layout->addLayout(buttons);

  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, filter_,
          qOverload<>(&QWidget::setFocus));
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
  filter_->setFocus();
}

void ChangesWindow::ShowAll() {
  setWindowTitle(tr("Recent Changes"));
  Read(0);
}

void ChangesWindow::ShowRun(std::int64_t run, const QString& title) {
  setWindowTitle(title);
  Read(run);
}

void ChangesWindow::Read(std::int64_t run) {
  run_ = run;
  filter_->clear();
  said_->clear();
  std::string text;
  const files::Outcome read = files::ReadWhole(journal_, stations::Journal::kMostBytes, &text);
  changes_.Read(std::make_unique<const stations::JournalContents>(std::move(text)), run);
  Update();
  if (!read.ok() && read.error != std::errc::no_such_file_or_directory) {
    Say(QString::fromStdString(read.text));
  }
}

void ChangesWindow::Add(const stations::Act& act) {
  if (run_ == 0) changes_.Add(act);
}

void ChangesWindow::Say(const QString& text) { said_->setText(text); }

void ChangesWindow::Update() {
  goTo_->setEnabled(list_->selectionModel()->hasSelection());
  export_->setEnabled(shown_.rowCount() > 0);
}

void ChangesWindow::GoToCurrent() {
  const QModelIndex row = list_->selectionModel()->selectedRows().value(0);
  if (row.isValid()) Q_EMIT GoToRequested(changes_.Place(shown_.mapToSource(row).row()));
}

void ChangesWindow::AskWhereToExport() {
  views::AskWhereToSave(*this, *this,
                        {.name = QStringLiteral("aidExportChanges"),
                         .title = tr("Export Changes"),
                         .filters = tr("CSV files (*.csv);;All files (*)"),
                         .fileName = QStringLiteral("changes.csv")},
                        [this](const QString& path) { ExportTo(path); });
}

bool ChangesWindow::ExportTo(const QString& path) {
  rules::Sheet sheet;
  for (int column = 0; column < ChangesModel::kColumnCount; ++column) {
    sheet.captions.push_back(
        shown_.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString());
  }
  for (int row = 0; row < shown_.rowCount(); ++row) {
    std::vector<std::string>& cells = sheet.rows.emplace_back();
    for (int column = 0; column < ChangesModel::kColumnCount; ++column) {
      cells.push_back(shown_.index(row, column).data().toString().toStdString());
    }
  }
  const files::Outcome written =
      files::Replace(std::filesystem::path(path.toStdU16String()), rules::ToCsv(sheet));
  said_->setText(
      written.ok()
          ? tr("Written: %1").arg(path)
          : tr("%1 could not be written: %2").arg(path, QString::fromStdString(written.text)));
  return written.ok();
}

}  // namespace app
