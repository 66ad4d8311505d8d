// SPDX-License-Identifier: MIT

#include "views/labels/labels_grid.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/labels/labels_delegate.h"
#include "views/labels/labels_model.h"
#include "views/labels/labels_row_header.h"
#include "views/rules/label_headings.h"
#include "views/widgets/scaled_font.h"
#include "views/window_place/twips.h"

namespace views {

using stations::LabelColumn;

namespace {

constexpr int kSmallestRowHeight = 20;
constexpr int kRowPadding = 6;
constexpr double kHeaderFontScale = 0.88;

// Asks before the current cell moves.
class GuardedSelection : public QItemSelectionModel {
 public:
  GuardedSelection(QAbstractItemModel& model, std::function<bool(const QModelIndex&)> mayMoveTo,
                   QObject* parent)
      : QItemSelectionModel(&model, parent), mayMoveTo_(std::move(mayMoveTo)) {}

  void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override {
    if (mayMoveTo_(index)) QItemSelectionModel::setCurrentIndex(index, command);
  }

 private:
  const std::function<bool(const QModelIndex&)> mayMoveTo_;
};

}  // namespace

LabelsGrid::LabelsGrid(LabelsModel& rows, Asks asks, QWidget* parent)
    : QTableView(parent), rows_(rows), asks_(std::move(asks)), delegate_(new LabelsDelegate(this)) {
  setObjectName(QStringLiteral("jgAlphas"));
  setFrameShape(QFrame::NoFrame);
  setVerticalHeader(new LabelsRowHeader(this));
  setModel(&rows);
  QItemSelectionModel* const before = selectionModel();
  setSelectionModel(new GuardedSelection(
      rows, [this](const QModelIndex& index) { return MayMoveTo(index); }, this));
  delete before;
  setItemDelegate(delegate_);
  setSelectionMode(ContiguousSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setContextMenuPolicy(Qt::DefaultContextMenu);

  QHeaderView* const header = horizontalHeader();
  // A click on the header sorts; it does not select the column as well.
  disconnect(header, &QHeaderView::sectionPressed, this, nullptr);
  disconnect(header, &QHeaderView::sectionEntered, this, nullptr);
  header->setSectionsClickable(true);
  header->setSortIndicatorShown(true);
  header->setHighlightSections(false);
  connect(header, &QHeaderView::sectionClicked, this, &LabelsGrid::HeaderClicked);
  ShowSortOrder();
  FitFont();

  connect(&rows, &LabelsModel::MarkChanged, verticalHeader()->viewport(),
          qOverload<>(&QWidget::update));
  // Laid out before anything is painted, so that a sort costs one repaint.
  connect(&rows, &QAbstractItemModel::layoutChanged, this, [this] {
    verticalHeader()->doItemsLayout();
    horizontalHeader()->doItemsLayout();
    executeDelayedItemsLayout();
  });
  connect(delegate_, &LabelsDelegate::EnterPressed, this, &LabelsGrid::StoreAndStep);
  connect(delegate_, &LabelsDelegate::ChoiceMade, this, [this] { CommitEditor(); });
  connect(delegate_, &LabelsDelegate::TabPressed, this, &LabelsGrid::Walk);
  connect(delegate_, &LabelsDelegate::Full, this, &LabelsGrid::Full);
  connect(delegate_, &LabelsDelegate::TextTaken, this, &LabelsGrid::TextTaken);
}

void LabelsGrid::FitFont() {
  verticalHeader()->setDefaultSectionSize(
      std::max(kSmallestRowHeight, fontMetrics().height() + kRowPadding));
  // A smaller font for the captions, which have to fit beside the arrow.
  QHeaderView* const header = horizontalHeader();
  header->setFont(Scaled(font(), kHeaderFontScale));
  for (int column = 0; column < header->count(); ++column) {
    header->resizeSection(column, WidthFor(static_cast<LabelColumn>(column)));
  }
  WidenNotes();
}

int LabelsGrid::WidthFor(LabelColumn column) const {
  const double scale = std::max(1.0, ScaleOf(font()));
  return static_cast<int>(std::lround(ToPixels(rules::Heading(column).twips) * scale));
}

void LabelsGrid::WidenNotes() {
  QHeaderView* const header = horizontalHeader();
  constexpr int kNotes = static_cast<int>(LabelColumn::Notes);
  const int room = viewport()->width() - (header->length() - header->sectionSize(kNotes));
  header->resizeSection(kNotes, std::max(WidthFor(LabelColumn::Notes), room));
}

void LabelsGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  WidenNotes();
}

void LabelsGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitFont();
}

void LabelsGrid::ShowSortOrder() {
  horizontalHeader()->setSortIndicator(rows_.SortColumn(), rows_.SortOrder());
}

bool LabelsGrid::CommitEditor() {
  QWidget* const editor = delegate_->Editor();
  if (editor == nullptr) return true;
  const stations::TextCheck check = delegate_->CheckEditor();
  if (!check.ok()) {
    Q_EMIT TextRefused(delegate_->EditedIndex(), check);
    return false;
  }
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
  return true;
}

bool LabelsGrid::MayMoveTo(const QModelIndex& index) {
  if (index == currentIndex()) return true;
  moveRefused_ =
      !CommitEditor() || (rows_.HasEdit() && index.row() != rows_.EditedRow() && !asks_.storeRow());
  return !moveRefused_;
}

// After a refused move the selection stays, too.
void LabelsGrid::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
  if (!moveRefused_) QTableView::setSelection(rect, command);
}

// Whether this is the operator about to change the cell.
bool LabelsGrid::BeginsEdit(const QModelIndex& index, EditTrigger trigger, const QEvent* event) {
  if ((index.flags() & Qt::ItemIsEditable) == 0) return false;
  if (trigger != AnyKeyPressed) return trigger == DoubleClicked || trigger == EditKeyPressed;
  // What an input method composes comes with the same trigger.
  if (event->type() == QEvent::InputMethod) return true;
  if (event->type() != QEvent::KeyPress) return false;
  const QString text = static_cast<const QKeyEvent*>(event)->text();
  return !text.isEmpty() && text.at(0).isPrint();
}

bool LabelsGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  const bool wasOpen = delegate_->Editor() != nullptr;
  if (!wasOpen && BeginsEdit(index, trigger, event) && !asks_.mayEdit()) return false;
  const bool opened = QTableView::edit(index, trigger, event);
  if (!wasOpen && delegate_->Editor() != nullptr) rows_.SetRowOfEditor(index.row());
  if (opened && !wasOpen && (trigger == DoubleClicked || trigger == EditKeyPressed)) {
    if (auto* const choice = qobject_cast<QComboBox*>(delegate_->Editor())) choice->showPopup();
  }
  return opened;
}

void LabelsGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  delegate_->Forget(editor);
  rows_.SetRowOfEditor(-1);
  QTableView::closeEditor(editor, hint);
}

void LabelsGrid::Walk(int step) {
  if (!CommitEditor()) return;
  const int columns = rows_.columnCount();
  const int cells = rows_.rowCount() * columns;
  int cell = currentIndex().row() * columns + currentIndex().column();
  QModelIndex next;
  do {
    cell += step;
    if (cell < 0 || cell >= cells) return;
    next = rows_.index(cell / columns, cell % columns);
  } while ((next.flags() & Qt::ItemIsEditable) == 0);
  selectionModel()->setCurrentIndex(next, QItemSelectionModel::ClearAndSelect);
  if (currentIndex() == next) QTableView::edit(next);
}

void LabelsGrid::StoreAndStep(int step) {
  if (!asks_.storeRow()) return;
  const QModelIndex next = currentIndex().siblingAtRow(currentIndex().row() + step);
  if (next.isValid()) selectionModel()->setCurrentIndex(next, QItemSelectionModel::ClearAndSelect);
}

QRect LabelsGrid::Block() const {
  QModelIndexList cells = selectionModel()->selectedIndexes();
  if (cells.isEmpty() && currentIndex().isValid()) cells.append(currentIndex());
  QRect block;
  for (const QModelIndex& cell : cells) block |= QRect(cell.column(), cell.row(), 1, 1);
  return block;
}

void LabelsGrid::SelectBlock(const QRect& block) {
  selectionModel()->select(QItemSelection(rows_.index(block.top(), block.left()),
                                          rows_.index(block.bottom(), block.right())),
                           QItemSelectionModel::ClearAndSelect);
}

void LabelsGrid::keyPressEvent(QKeyEvent* event) {
  moveRefused_ = false;
  if (event->matches(QKeySequence::Copy)) {
    Q_EMIT CopyRequested();
  } else if (event->matches(QKeySequence::Paste)) {
    Q_EMIT PasteRequested();
  } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
    Q_EMIT MenuRequested(CurrentPlace());
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    StoreAndStep(StepOfEnter(*event));
  } else if (event->key() == Qt::Key_Escape && rows_.HasEdit()) {
    Q_EMIT DropRequested();
  } else {
    QTableView::keyPressEvent(event);
  }
}

void LabelsGrid::mousePressEvent(QMouseEvent* event) {
  // Before the toolkit selects anything.
  moveRefused_ = false;
  const QModelIndex pressed = indexAt(event->pos());
  if (pressed.isValid() && !MayMoveTo(pressed)) {
    if (QWidget* const editor = delegate_->Editor()) editor->setFocus();
    return;
  }
  QTableView::mousePressEvent(event);
}

// A drag to another row selects nothing while the row has values to be stored first.
void LabelsGrid::mouseMoveEvent(QMouseEvent* event) {
  const bool leaves = rows_.HasEdit() && indexAt(event->pos()).row() != rows_.EditedRow();
  if (event->buttons() == Qt::NoButton || !leaves) QTableView::mouseMoveEvent(event);
}

void LabelsGrid::contextMenuEvent(QContextMenuEvent* event) {
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  Q_EMIT MenuRequested(byKey ? CurrentPlace() : event->globalPos());
}

QPoint LabelsGrid::CurrentPlace() const {
  return viewport()->mapToGlobal(visualRect(currentIndex()).center());
}

}  // namespace views
