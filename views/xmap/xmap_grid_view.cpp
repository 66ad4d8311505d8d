// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_grid_view.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

#include "views/widgets/plain_tip.h"
#include "views/xmap/xmap_corner.h"
#include "views/xmap/xmap_header.h"

namespace views {
namespace {

using rules::kFixedCells;

}  // namespace

XmapGridView::XmapGridView(const rules::XmapGrid& grid, XmapModel& cells, QWidget* parent)
    : QTableView(parent),
      grid_(grid),
      cells_(cells),
      rowHeader_(new XmapRowHeader(grid, this)),
      columnHeader_(new XmapColumnHeader(grid, this)),
      corner_(new XmapCorner(this)),
      warning_(new LinkWarning(this)),
      painter_(grid) {
  setObjectName(QStringLiteral("msfgXmap"));
  setLayoutDirection(Qt::LeftToRight);
  warning_->setObjectName(QStringLiteral("aidMapLink"));
  warning_->setAlignment(Qt::AlignCenter);
  warning_->setAttribute(Qt::WA_TransparentForMouseEvents);
  warning_->setFont(QGuiApplication::font());
  warning_->hide();
  setFrameShape(QFrame::NoFrame);
  setVerticalHeader(rowHeader_);
  setHorizontalHeader(columnHeader_);
  setModel(&cells);
  setCornerButtonEnabled(false);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(NoSelection);  // the current cell is the selected one
  setTabKeyNavigation(false);     // Tab leaves the grid
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  setContextMenuPolicy(Qt::DefaultContextMenu);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  connect(rowHeader_, &XmapHeader::ChannelPressed, this, [this](int output) {
    setFocus(Qt::MouseFocusReason);
    Select({output, 0});
  });
  connect(columnHeader_, &XmapHeader::ChannelPressed, this, [this](int input) {
    setFocus(Qt::MouseFocusReason);
    Select({0, input});
  });
  connect(rowHeader_, &XmapHeader::ChannelHovered, this, [this](int output) {
    SetHovered(QModelIndex());
    rowHeader_->SetHovered(HasCrosshair() ? output : 0);
  });
  connect(columnHeader_, &XmapHeader::ChannelHovered, this, [this](int input) {
    SetHovered(QModelIndex());
    columnHeader_->SetHovered(HasCrosshair() ? input : 0);
  });
  for (const XmapHeader* const header : {rowHeader_, columnHeader_}) {
    connect(header, &XmapHeader::MenuRequested, this,
            [this, side = header->orientation()](int channel, const QPoint& globalPosition) {
              Q_EMIT HeaderMenuRequested(side, channel, globalPosition);
            });
  }
  connect(&cells, &QAbstractItemModel::headerDataChanged, this,
          [this](Qt::Orientation orientation) {
            (orientation == Qt::Vertical ? rowHeader_ : columnHeader_)->LabelsChanged();
          });
  ApplyMetrics();
}

int XmapGridView::cellMark(int row, int column) const {
  return static_cast<int>(grid_.MarkAt(row, column));
}

QString XmapGridView::cellText(int row, int column) const {
  return QString::fromStdString(grid_.CellText(row, column));
}

QColor XmapGridView::cellColor(int row, int column) const {
  const int last = grid_.ChannelCount() + kFixedCells - 1;
  if (row < 0 || column < 0 || row > last || column > last) return {};
  return grid_.IsCrosspoint(row, column) ? BandColour(row, palette())
                                         : palette().color(QPalette::Active, QPalette::Button);
}

void XmapGridView::selectCell(int row, int column) {
  if (grid_.IsCrosspoint(row, column)) {
    Select({row - 1, column - 1});
  } else {
    selectionModel()->clearCurrentIndex();
  }
}

QPoint XmapGridView::selectedCell() const {
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return QPoint(-1, -1);
  return QPoint(XmapModel::Input(current) + 1, XmapModel::Output(current) + 1);
}

void XmapGridView::Select(const Crosspoint& crosspoint) {
  const Crosspoint before = Selected();
  const auto chosen = [](int wanted, int old) { return wanted >= 1 ? wanted : std::max(1, old); };
  MoveTo(cells_.CellOf(chosen(crosspoint.output, before.output),
                       chosen(crosspoint.input, before.input)));
  // By itself the view scrolls only to a cell that was not current before.
  scrollTo(currentIndex());
}

void XmapGridView::SelectTo(const Crosspoint& corner) {
  ExtendTo(cells_.CellOf(corner.output, corner.input));
}

rules::CellBlock XmapGridView::Block() const {
  const Crosspoint one = Selected();
  const Crosspoint other = ToCrosspoint(farCorner_);
  if (one == Crosspoint() || other == Crosspoint()) return {};
  return {.firstOutput = std::min(one.output, other.output),
          .lastOutput = std::max(one.output, other.output),
          .firstInput = std::min(one.input, other.input),
          .lastInput = std::max(one.input, other.input)};
}

void XmapGridView::MoveTo(const QModelIndex& index) {
  if (index == currentIndex()) {
    ExtendTo(index);
  } else {
    setCurrentIndex(index);
  }
}

void XmapGridView::ExtendTo(const QModelIndex& index) {
  if (!index.isValid() || !currentIndex().isValid() || index == farCorner_) return;
  farCorner_ = index;
  CornerChanged();
  scrollTo(index);
  Q_EMIT CurrentCellChanged();
}

void XmapGridView::CornerChanged() {
  const rules::CellBlock block = Block();
  if (block == scene_.block) return;
  viewport()->update(scene_.BlockRect(scene_.block) | scene_.BlockRect(block));
  scene_.block = block;
  PlaceWarning();
}

QModelIndex XmapGridView::NearestCell(const QPoint& point) const {
  const auto channel = [this](int at, int size) {
    return std::clamp(at < 0 ? 0 : at / size + 1, 1, grid_.ChannelCount());
  };
  return cells_.CellOf(channel(point.y() - scene_.origin.y(), scene_.metrics.cellHeight),
                       channel(point.x() - scene_.origin.x(), scene_.metrics.cellWidth));
}

void XmapGridView::SetZoom(int zoom) {
  zoom = std::clamp(zoom, kSmallestZoom, kLargestZoom);
  if (zoom == zoom_) return;
  zoom_ = zoom;
  ApplyMetrics();
  if (currentIndex().isValid()) scrollTo(currentIndex());
}

void XmapGridView::ApplyMetrics() {
  scene_.metrics = MetricsFor(grid_.ChannelCount(), zoom_);
  setFont(scene_.metrics.font);
  rowHeader_->SetMetrics(scene_.metrics);
  columnHeader_->SetMetrics(scene_.metrics);
  corner_->SetMetrics(scene_.metrics);
  XmapGridView::updateGeometries();
  viewport()->update();
}

void XmapGridView::SetCrosshair(bool visible) {
  if (visible == HasCrosshair()) return;
  scene_.crosshair = visible;
  ShowPosition();
  viewport()->update();
}

void XmapGridView::SetMatches(const rules::ChannelSet& outputs, const rules::ChannelSet& inputs) {
  rowHeader_->SetMatches(outputs);
  columnHeader_->SetMatches(inputs);
}

void XmapGridView::ShowOutput(int output) {
  QScrollBar* const bar = verticalScrollBar();
  const int top = (output - 1) * scene_.metrics.cellHeight;
  const int bottom = top + scene_.metrics.cellHeight - viewport()->height();
  bar->setValue(std::clamp(bar->value(), std::min(bottom, top), top));
}

void XmapGridView::ShowInput(int input) {
  QScrollBar* const bar = horizontalScrollBar();
  const int left = (input - 1) * scene_.metrics.cellWidth;
  const int right = left + scene_.metrics.cellWidth - viewport()->width();
  bar->setValue(std::clamp(bar->value(), std::min(right, left), left));
}

void XmapGridView::SetPending(const Crosspoint& crosspoint, bool pending) {
  const bool had = std::erase(scene_.pending, crosspoint) != 0;
  if (pending) scene_.pending.push_back(crosspoint);
  if (had != pending) viewport()->update(scene_.CellRect(crosspoint));
}

void XmapGridView::SetWarning(const QString& warning) {
  warning_->setText(warning);
  warning_->setHidden(warning.isEmpty());
  PlaceWarning();
  if (scene_.hatched == !warning.isEmpty()) return;
  scene_.hatched = !warning.isEmpty();
  viewport()->update();
}

void XmapGridView::PlaceWarning() {
  if (warning_->isHidden()) return;
  const QRect body = viewport()->geometry();
  QRect line(body.topLeft(), QSize(body.width(), warning_->sizeHint().height()));
  line.moveBottom(body.bottom());
  const auto covered = [&](const QRect& at) {
    const auto isCovered = [&](const QModelIndex& cell) {
      return cell.isValid() && CellRect(cell).translated(body.topLeft()).intersects(at);
    };
    if (hovered_.isValid()) return isCovered(hovered_) ? 1 : 0;
    return (isCovered(currentIndex()) ? 2 : 0) + (isCovered(farCorner_) ? 1 : 0);
  };
  QRect above = line;
  above.moveTop(body.top());
  if (covered(above) < covered(line)) line = above;
  warning_->setGeometry(line);
  warning_->raise();
}

void XmapGridView::UpdateCell(const QModelIndex& index) {
  if (!index.isValid()) return;
  const QRect cell = CellRect(index);
  if (!HasCrosshair()) {
    viewport()->update(cell);
    return;
  }
  // The lines before the cell belong to its neighbours.
  viewport()->update(QRect(0, cell.top() - 1, viewport()->width(), cell.height() + 1));
  viewport()->update(QRect(cell.left() - 1, 0, cell.width() + 1, viewport()->height()));
}

void XmapGridView::ShowPosition() {
  const Crosspoint current = HasCrosshair() ? Selected() : Crosspoint();
  const Crosspoint hovered = HasCrosshair() ? ToCrosspoint(hovered_) : Crosspoint();
  rowHeader_->SetCurrent(current.output);
  columnHeader_->SetCurrent(current.input);
  rowHeader_->SetHovered(hovered.output);
  columnHeader_->SetHovered(hovered.input);
  PlaceWarning();
}

void XmapGridView::SetHovered(const QModelIndex& index) {
  if (hovered_ == index) return;
  hovered_ = index;
  ShowPosition();
}

void XmapGridView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  if (grid_.ChannelCount() == 0) {
    painter.fillRect(viewport()->rect(), kGridGround);
    painter.setPen(Qt::black);
    painter.setFont(QGuiApplication::font());
    painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("No channels in the database"));
    return;
  }
  scene_.palette = palette();
  scene_.current = Selected();
  scene_.hasFocus = hasFocus();
  painter_.Paint(painter, event->region(), scene_);
}

bool XmapGridView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) SetHovered(QModelIndex());
  if (event->type() == QEvent::ToolTip) {
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    if (index.isValid()) {
      QToolTip::showText(help->globalPos(),
                         PlainTip(cells_.data(index, Qt::ToolTipRole).toString()), viewport(),
                         CellRect(index));
    } else {
      QToolTip::hideText();
    }
    return true;
  }
  return QTableView::viewportEvent(event);
}

void XmapGridView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) viewport()->update();
}

void XmapGridView::focusInEvent(QFocusEvent* event) {
  // Not the base class's, which would make a cell current where none is.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  QAbstractScrollArea::focusInEvent(event);
  UpdateCell(currentIndex());
}

void XmapGridView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  UpdateCell(currentIndex());
}

void XmapGridView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const QModelIndex index = indexAt(event->position().toPoint());
  if (!index.isValid()) return;
  const bool isLeft = event->button() == Qt::LeftButton;
  if (isLeft && event->modifiers() == Qt::ShiftModifier) {
    ExtendTo(index);
  } else if (event->button() != Qt::RightButton || scene_.block.Cells() <= 1 ||
             !scene_.BlockRect(scene_.block).contains(event->position().toPoint())) {
    MoveTo(index);  // a menu for what is chosen leaves it chosen
  }
  if (isLeft) pressedAt_ = event->position().toPoint();
}

void XmapGridView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  SetHovered(indexAt(point));
  if (pressedAt_ && (event->buttons() & Qt::LeftButton) != 0) {
    isDragging_ =
        isDragging_ || (point - *pressedAt_).manhattanLength() >= QApplication::startDragDistance();
    if (isDragging_) ExtendTo(NearestCell(point));
  }
  event->accept();
}

void XmapGridView::mouseReleaseEvent(QMouseEvent* event) {
  pressedAt_.reset();
  isDragging_ = false;
  event->accept();
}

void XmapGridView::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void XmapGridView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) {
    QTableView::wheelEvent(event);
    return;
  }
  if (const int delta = event->angleDelta().y(); delta != 0) Q_EMIT ZoomStepped(delta > 0 ? 1 : -1);
  event->accept();
}

void XmapGridView::keyPressEvent(QKeyEvent* event) {
  struct MoveKey {
    int key;
    CursorAction action;
  };
  static constexpr MoveKey kMoves[] = {
      {Qt::Key_Up, MoveUp},         {Qt::Key_Down, MoveDown},        {Qt::Key_Left, MoveLeft},
      {Qt::Key_Right, MoveRight},   {Qt::Key_Home, MoveHome},        {Qt::Key_End, MoveEnd},
      {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown}};
  const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
  for (const MoveKey& move : kMoves) {
    if (event->key() != move.key || (modifiers & Qt::AltModifier) != 0) continue;
    if ((modifiers & Qt::ShiftModifier) != 0 && currentIndex().isValid()) {
      ExtendTo(MoveCorner(move.action, modifiers));
    } else if (const QModelIndex index = moveCursor(move.action, modifiers); index.isValid()) {
      MoveTo(index);
    }
    event->accept();
    return;
  }
  if (event->key() == Qt::Key_Escape && scene_.block.Cells() > 1) {
    MoveTo(currentIndex());
    event->accept();
    return;
  }
  if (event->matches(QKeySequence::Copy)) {
    if (currentIndex().isValid()) {
      QGuiApplication::clipboard()->setText(
          cells_.data(currentIndex(), Qt::AccessibleTextRole).toString());
    }
    event->accept();
    return;
  }
  if (event->key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier) {
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    contextMenuEvent(&menu);
    event->accept();
    return;
  }
  // Enter and Space end here: nothing is sent by accident.
  const bool idle = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                    event->key() == Qt::Key_Space;
  const bool plain = modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier;
  const QString text = event->text();
  if (idle) {
    event->accept();
  } else if (plain && !text.isEmpty() && text.at(0).isPrint()) {
    Q_EMIT TextTyped(text);
    event->accept();
  } else {
    event->ignore();
  }
}

void XmapGridView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() == QContextMenuEvent::Mouse) {
    const QPoint position = viewport()->mapFromGlobal(event->globalPos());
    if (indexAt(position).isValid()) Q_EMIT MenuRequested(event->globalPos());
    return;
  }
  const QModelIndex current = currentIndex();
  if (!current.isValid()) return;
  scrollTo(current);
  Q_EMIT MenuRequested(viewport()->mapToGlobal(CellRect(current).center()));
}

void XmapGridView::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  UpdateOrigin();
  if (viewport()->underMouse()) {
    SetHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
  }
  PlaceWarning();
}

void XmapGridView::updateGeometries() {
  QTableView::updateGeometries();
  corner_->setGeometry(0, 0, rowHeader_->width(), columnHeader_->height());
  corner_->raise();
  horizontalScrollBar()->setSingleStep(scene_.metrics.cellWidth);
  verticalScrollBar()->setSingleStep(scene_.metrics.cellHeight);
  UpdateOrigin();
  PlaceWarning();
}

void XmapGridView::UpdateOrigin() {
  scene_.origin = QPoint(-columnHeader_->offset(), -rowHeader_->offset());
}

QModelIndex XmapGridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if ((modifiers & Qt::ControlModifier) != 0 && currentIndex().isValid()) {
    switch (action) {
      case MoveUp:
        return NextMarked(currentIndex(), -1, 0);
      case MoveDown:
        return NextMarked(currentIndex(), 1, 0);
      case MoveLeft:
        return NextMarked(currentIndex(), 0, -1);
      case MoveRight:
        return NextMarked(currentIndex(), 0, 1);
      default:
        break;
    }
  }
  return QTableView::moveCursor(action, modifiers);
}

QModelIndex XmapGridView::MoveCorner(CursorAction action, Qt::KeyboardModifiers modifiers) const {
  const int last = grid_.ChannelCount();
  const int page = std::max(1, viewport()->height() / scene_.metrics.cellHeight);
  const bool isFar = (modifiers & Qt::ControlModifier) != 0;
  Crosspoint to = ToCrosspoint(farCorner_);
  switch (action) {
    case MoveUp:
      to.output = isFar ? 1 : to.output - 1;
      break;
    case MoveDown:
      to.output = isFar ? last : to.output + 1;
      break;
    case MoveLeft:
      to.input = isFar ? 1 : to.input - 1;
      break;
    case MoveRight:
      to.input = isFar ? last : to.input + 1;
      break;
    case MovePageUp:
      to.output -= page;
      break;
    case MovePageDown:
      to.output += page;
      break;
    case MoveHome:
      to = {isFar ? 1 : to.output, 1};
      break;
    case MoveEnd:
      to = {isFar ? last : to.output, last};
      break;
    default:
      break;
  }
  return cells_.CellOf(std::clamp(to.output, 1, last), std::clamp(to.input, 1, last));
}

QModelIndex XmapGridView::NextMarked(const QModelIndex& from, int rowStep, int columnStep) const {
  QModelIndex index = from;
  do {
    index = index.sibling(index.row() + rowStep, index.column() + columnStep);
  } while (index.isValid() && cells_.data(index, XmapModel::MarkRole).toInt() == 0);
  return index;
}

void XmapGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  farCorner_ = current;
  CornerChanged();
  UpdateCell(previous);
  UpdateCell(current);
  ShowPosition();
  Q_EMIT CurrentCellChanged();
}

void XmapGridView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                               const QList<int>& roles) {
  // The base class tells assistive software, but repaints everything.
  if (QAccessible::isActive()) QTableView::dataChanged(topLeft, bottomRight, roles);
  viewport()->update(CellRect(topLeft) | CellRect(bottomRight));
}

}  // namespace views
