// SPDX-License-Identifier: MIT

#include "views/labels/alphas_view.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>
#include <utility>

#include "views/labels/label_find.h"
#include "views/labels/label_messages.h"
#include "views/labels/labels_grid.h"
#include "views/rules/label_headings.h"
#include "views/rules/label_paste.h"
#include "views/widgets/icon.h"
#include "views/widgets/tool_band.h"

namespace views {
namespace {

using stations::LabelColumn;
using switcher::Table;

constexpr int kFindMargin = 6;

constexpr Tool kDownload = {"ID_DownloadAlphas", "Download Labels",
                            "Send Station And Input Labels To Switcher", "download-alphas"};
constexpr Tool kQdvStatus = {"ID_QDVStatus", "QDV Status",
                             "Click To Display Current QDV Output Module Status", "qdv-status",
                             true};

}  // namespace

AlphasView::AlphasView(const Services& services, QWidget* parent)
    : MainView(QStringLiteral("frmAlphas"), QStringLiteral("Station Labels"),
               QStringLiteral("Alphas"), services.settings, parent),
      services_(services) {
  setWindowIcon(Icon(QStringLiteral("station-labels")));
  tools_ = new ToolBand(QStringLiteral("AlphasButtons"), tr("Label tools"), *this);
  tools_->Add(kDownload, [this] { DownloadLabels(); });
  tools_->Add(kQdvStatus, [this] { Q_EMIT QdvStatusRequested(); });
  showInMap_ = new QAction(Icon(QStringLiteral("xpoint-map")), tr("Show In &Map"), this);
  showInMap_->setObjectName(QStringLiteral("aidShowInMap"));
  showInMap_->setShortcut(Qt::CTRL | Qt::Key_M);
  showInMap_->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  connect(showInMap_, &QAction::triggered, this, &AlphasView::ShowInMap);
  addAction(showInMap_);
  SetupAlphaView();
  find_ = new LabelFind(rows_, this);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(tools_);
  layout->addWidget(grid_);
  setFocusProxy(grid_);
  ConnectGrid();
  UpdateLabels();
  grid_->setCurrentIndex(rows_.index(0, static_cast<int>(LabelColumn::StationLabel)));
}

void AlphasView::SetupAlphaView() {
  grid_ = new LabelsGrid(rows_,
                         {.mayEdit = [this] { return !RefusedByLock(services_); },
                          .storeRow = [this] { return StoreRow(); }},
                         this);
  grid_->setAccessibleName(windowTitle());
}

void AlphasView::ConnectGrid() {
  connect(grid_, &LabelsGrid::HeaderClicked, this, &AlphasView::SortBy);
  connect(grid_, &LabelsGrid::DropRequested, &rows_, &LabelsModel::DropEdit);
  connect(grid_, &LabelsGrid::CopyRequested, this, &AlphasView::Copy);
  connect(grid_, &LabelsGrid::PasteRequested, this, &AlphasView::Paste);
  connect(grid_, &LabelsGrid::MenuRequested, this, &AlphasView::ShowMenu);
  connect(
      grid_, &LabelsGrid::TextRefused, this,
      [this](const QModelIndex& index, const stations::TextCheck& check) {
        Refuse(CellRefusalText(rows_.StationText(index.row()), LabelsModel::Column(index), check));
      });
  connect(grid_, &LabelsGrid::TextTaken, this,
          [this](const QModelIndex& index, const QString& text) {
            const QString note =
                LabelNote(rows_.StationText(index.row()), LabelsModel::Column(index), text);
            if (!note.isEmpty()) Q_EMIT NoteRequested(note);
          });
  connect(grid_, &LabelsGrid::Full, this, [this](LabelColumn column) {
    Q_EMIT NoteRequested(tr("%1 takes %2 characters")
                             .arg(QString::fromLatin1(rules::Heading(column).caption))
                             .arg(stations::Spec(column).maxLength));
  });
  connect(&rows_, &LabelsModel::MarkChanged, this, &AlphasView::EditChanged);
  connect(find_, &LabelFind::FirstMatch, grid_,
          [this](const QModelIndex& index) { grid_->scrollTo(index); });
  connect(find_, &LabelFind::Chosen, grid_, &QAbstractItemView::setCurrentIndex);
  connect(find_, &LabelFind::Closed, this, [this] { grid_->setFocus(Qt::OtherFocusReason); });
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget* /*from*/, const QWidget* to) { FocusMoved(to); });
}

// Going to another view stores the row.  The tools of this view store it themselves when they need
// to; boxes, menus and other programs do not count.  On the way to another view there may be no
// focus for a moment.
void AlphasView::FocusMoved(const QWidget* to) {
  if (to == nullptr || to->window() != window()) return;
  const bool isHere = to == this || to == parentWidget() || isAncestorOf(to);
  if (hadFocus_ && !isHere) StoreRow();
  hadFocus_ = isHere;
}

void AlphasView::UpdateLabels() {
  std::vector<stations::LabelRecord> records;
  const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::ReadLabelRecords(stations, &records);
  });
  if (status.ok() || !records.empty()) {
    const bool sameRows = rows_.HasSameStations(records);
    if (!sameRows) grid_->CommitEditor();
    const QModelIndex current = grid_->currentIndex();
    const int column = current.column();
    const std::optional<jet::Value> station =
        current.isValid()
            ? std::optional(rows_.Records()[static_cast<std::size_t>(current.row())].Station())
            : std::nullopt;
    const QPoint scrolled(grid_->horizontalScrollBar()->value(),
                          grid_->verticalScrollBar()->value());
    rows_.SetRecords(std::move(records));
    if (!sameRows && station) {
      const auto& shown = rows_.Records();
      const auto row = std::ranges::find_if(
          shown, [&](const stations::LabelRecord& each) { return each.Station() == *station; });
      if (row != shown.end()) {
        grid_->setCurrentIndex(rows_.index(static_cast<int>(row - shown.begin()), column));
      }
      grid_->horizontalScrollBar()->setValue(scrolled.x());
      grid_->verticalScrollBar()->setValue(scrolled.y());
    }
    find_->Refresh();
  }
  const std::string failure = status.ok() ? std::string() : status.Description();
  if (!failure.empty() && failure != reportedFailure_) {
    ShowFailure(services_, "Error Reading Station Labels", status);
  }
  reportedFailure_ = failure;
}

void AlphasView::GoTo(int station, LabelColumn column) {
  const auto& records = rows_.Records();
  const auto record =
      std::ranges::find(records, jet::Value(station), &stations::LabelRecord::Station);
  if (record == records.end()) return;
  grid_->setCurrentIndex(
      rows_.index(static_cast<int>(record - records.begin()), static_cast<int>(column)));
  grid_->setFocus(Qt::OtherFocusReason);
}

bool AlphasView::StoreRow() {
  if (!grid_->CommitEditor()) return false;
  if (!rows_.HasEdit()) return true;
  const stations::LabelEdit change = rows_.Edit();
  stations::LabelRecord stored;
  const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::StoreLabelRecord(stations, change, services_.Operator(), &stored);
  });
  if (!status.ok()) {
    ShowFailure(services_, "Error Storing Station Labels", status);
    return false;
  }
  rows_.RecordsStored({stored});
  Announce();
  return true;
}

void AlphasView::Announce() {
  find_->Refresh();
  Q_EMIT LabelsChanged();
}

void AlphasView::SortBy(int column) {
  const bool descending = column == rows_.SortColumn() && rows_.SortOrder() == Qt::AscendingOrder;
  if (StoreRow()) {
    rows_.sort(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    find_->Refresh();
  }
  grid_->ShowSortOrder();
}

void AlphasView::Copy() {
  const QRect block = grid_->Block();
  if (block.isEmpty()) return;
  rules::TextBlock cells;
  for (int row = block.top(); row <= block.bottom(); ++row) {
    std::vector<std::string>& texts = cells.emplace_back();
    for (int column = block.left(); column <= block.right(); ++column) {
      texts.push_back(rows_.Text(row, static_cast<LabelColumn>(column)));
    }
  }
  QGuiApplication::clipboard()->setText(QString::fromStdString(rules::WriteBlock(cells)));
}

void AlphasView::Paste() {
  const QRect at = grid_->Block();
  if (at.isEmpty() || RefusedByLock(services_) || !StoreRow()) return;
  const rules::TextBlock block =
      rules::ParseBlock(QGuiApplication::clipboard()->text().toStdString());
  const rules::PastePlan plan =
      rules::PlanPaste(block, rows_.Records(), static_cast<std::size_t>(at.top()),
                       static_cast<LabelColumn>(at.left()));
  if (!plan.refusal.ok()) {
    const int row = std::min(static_cast<int>(plan.refusal.row), rows_.rowCount() - 1);
    Refuse(PasteRefusalText(rows_.StationText(row), plan.refusal));
    return;
  }
  std::vector<stations::LabelRecord> stored;
  const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
    return stations::StoreLabelRecords(stations, plan.changes, services_.Operator(), &stored);
  });
  if (!status.ok()) {
    ShowFailure(services_, "Error Storing Station Labels", status);
    return;
  }
  rows_.RecordsStored(stored);
  std::size_t columns = 1;
  for (const std::vector<std::string>& row : block) columns = std::max(columns, row.size());
  grid_->SelectBlock(
      QRect(at.left(), at.top(), static_cast<int>(columns), static_cast<int>(block.size())));
  for (const stations::LabelEdit& change : plan.changes) {
    for (const stations::LabelChange& each : change.changes) {
      const QString note =
          LabelNote(QString::number(change.station.Int()), each.column,
                    QString::fromStdString(stations::CellText(each.column, each.value)));
      if (!note.isEmpty()) Q_EMIT NoteRequested(note);
    }
  }
  if (!plan.changes.empty()) Announce();
}

// Two messages, each of which reports its own failure: when one table cannot be read, the other is
// sent all the same.
void AlphasView::DownloadLabels() {
  if (!StoreRow()) return;
  SendTables(services_, {{.table = Table::OutputLabels}, {.table = Table::InputLabels}});
}

void AlphasView::Refuse(const QString& text) { ShowRefusal(services_, text.toStdString()); }

void AlphasView::ShowFind() {
  find_->OpenFind();
  PlaceFind();
}

void AlphasView::PlaceFind() {
  const QRect body = grid_->viewport()->geometry().translated(grid_->pos());
  find_->move(std::max(0, body.right() - find_->width() - kFindMargin), body.top() + kFindMargin);
}

void AlphasView::ShowMenu(const QPoint& globalPosition) {
  auto* const menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("aidAlphasMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [menu](const char* name, const QString& text, const QKeySequence& keys) {
    // The keys work in the grid anyway; the menu only shows them.
    QAction* const action = menu->addAction(text + u'\t' + keys.toString(QKeySequence::NativeText));
    action->setObjectName(QString::fromLatin1(name));
    return action;
  };
  connect(add("aidCopy", tr("&Copy"), QKeySequence::Copy), &QAction::triggered, this,
          &AlphasView::Copy);
  connect(add("aidPaste", tr("&Paste"), QKeySequence::Paste), &QAction::triggered, this,
          &AlphasView::Paste);
  connect(add("aidFind", tr("&Find…"), QKeySequence::Find), &QAction::triggered, this,
          &AlphasView::ShowFind);
  if (const int column = grid_->currentIndex().column(); column >= 0) {
    QAction* const sort = menu->addAction(
        tr("&Sort By “%1”").arg(rows_.headerData(column, Qt::Horizontal).toString()));
    sort->setObjectName(QStringLiteral("aidSort"));
    connect(sort, &QAction::triggered, this, [this, column] { SortBy(column); });
  }
  menu->addAction(showInMap_);
  menu->addSeparator();
  menu->addActions(tools_->actions());
  menu->popup(globalPosition);
}

void AlphasView::ShowInMap() {
  const QModelIndex current = grid_->currentIndex();
  if (!current.isValid()) return;
  const int station = rows_.StationText(current.row()).toInt();
  if (station < 1) return;
  Q_EMIT ShowInMapRequested(station, LabelsModel::Column(current) == LabelColumn::InputLabel);
}

bool AlphasView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Find)) {
    // The main window finds channels with this key; in this view it finds labels.
    event->accept();
    return true;
  }
  return MainView::event(event);
}

void AlphasView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) {
    ShowFind();
    event->accept();
  } else {
    MainView::keyPressEvent(event);
  }
}

void AlphasView::resizeEvent(QResizeEvent* event) {
  MainView::resizeEvent(event);
  PlaceFind();
}

void AlphasView::closeEvent(QCloseEvent* event) {
  if (StoreRow()) {
    MainView::closeEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace views
