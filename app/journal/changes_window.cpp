// SPDX-License-Identifier: MIT

#include "app/journal/changes_window.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <string>
#include <utility>

#include "files/whole_file.h"
#include "stations/journal/journal.h"
#include "views/rules/export_sheets.h"
#include "views/widgets/save_dialog.h"
#include "views/window_place/on_screen.h"

namespace app {

void ChangesFilter::SetFilter(const views::RowFilter& filter) {
  filter_ = filter;
  invalidateFilter();
}

bool ChangesFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  const QModelIndex first = sourceModel()->index(row, 0, parent);
  const int station = first.data(ChangesModel::kStationRole).toInt();
  return filter_.Accepts(station, station, ChangesModel::kColumnCount, [&first](int column) {
    return first.siblingAtColumn(column).data().toString();
  });
}

ChangesWindow::ChangesWindow(std::filesystem::path journal, QWidget* parent)
    : TableWindow({.window = QStringLiteral("frmChanges"),
                   .filter = QStringLiteral("txtFilterChg"),
                   .table = QStringLiteral("lstChanges"),
                   .said = QStringLiteral("lblSaidChg"),
                   .close = QStringLiteral("cmdCloseChg"),
                   .icon = QStringLiteral("recent-changes"),
                   .hint = views::RowFilter::HintText(),
                   .lines = tr("Changes"),
                   .columns = {24, 20, 14, 22, 22, 16}},
                  parent),
      journal_(std::move(journal)),
      goTo_(AddButton(QStringLiteral("cmdGoToChg"), tr("&Go To"),
                      tr("Show the selected change in its view"))),
      export_(AddButton(QStringLiteral("cmdExportChg"), tr("&Export…"),
                        tr("Save the changes that are shown as a CSV file"))) {
  shown_.setSourceModel(&changes_);
  SetLines(shown_);
  resize(views::SizeOnScreen(WantedSize(), screen()->availableSize()));
  connect(&Filter(), &QLineEdit::textChanged, this, &ChangesWindow::Look);
  Table().setSelectionMode(QAbstractItemView::SingleSelection);
  connect(&Table(), &QTableView::activated, this, &ChangesWindow::GoToCurrent);
  connect(Table().selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ChangesWindow::Update);
  for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
    connect(&shown_, signal, this, &ChangesWindow::Update);
  }
  connect(&shown_, &QAbstractItemModel::modelReset, this, &ChangesWindow::Update);
  connect(&changes_, &ChangesModel::ReadToEnd, this, &ChangesWindow::Update);
  connect(&goTo_, &QPushButton::clicked, this, &ChangesWindow::GoToCurrent);
  connect(&export_, &QPushButton::clicked, this, &ChangesWindow::AskWhereToExport);
}

void ChangesWindow::ShowAll(std::deque<std::string> waiting) {
  setWindowTitle(tr("Recent Changes"));
  run_ = 0;
  changes_.Read(Read(), std::move(waiting));
}

void ChangesWindow::ShowRun(std::int64_t run, const QString& title) {
  setWindowTitle(title);
  run_ = run;
  changes_.ReadRun(Read(), run);
}

std::unique_ptr<const stations::JournalContents> ChangesWindow::Read() {
  Filter().clear();
  std::string text;
  const files::Outcome read = files::ReadWhole(journal_, stations::Journal::kMostBytes, &text);
  const bool isSaid = !read.ok() && read.error != std::errc::no_such_file_or_directory;
  Say(isSaid ? QString::fromStdString(read.text) : QString());
  return std::make_unique<const stations::JournalContents>(std::move(text));
}

void ChangesWindow::Add(const stations::Act& act) {
  if (run_ == 0) changes_.Add(act);
}

void ChangesWindow::Say(const QString& text) {
  said_ = text;
  Update();
}

void ChangesWindow::Look(const QString& text) {
  shown_.SetFilter(views::RowFilter(text));
  Say({});  // that was of other rows
}

void ChangesWindow::Update() {
  goTo_.setEnabled(Table().selectionModel()->hasSelection());
  export_.setEnabled(changes_.IsRead() && shown_.rowCount() > 0);
  SetLine(said_.isEmpty() ? State() : said_);
}

// What the list says of itself.
QString ChangesWindow::State() const {
  if (!changes_.IsRead()) return tr("Reading…");
  if (changes_.rowCount() == 0) return tr("No changes yet");
  return shown_.rowCount() == 0 ? views::RowFilter::NoneText() : QString();
}

void ChangesWindow::GoToCurrent() {
  const QModelIndex row = Table().selectionModel()->selectedRows().value(0);
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
  Say(written.ok()
          ? tr("Written: %1").arg(path)
          : tr("%1 could not be written: %2").arg(path, QString::fromStdString(written.text)));
  return written.ok();
}

}  // namespace app
