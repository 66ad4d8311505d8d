// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_GRID_VIEW_H_
#define VIEWS_XMAP_XMAP_GRID_VIEW_H_

#include <QColor>
#include <QPoint>
#include <QTableView>

#include <optional>

#include "views/rules/xmap_grid.h"
#include "views/widgets/link_warning.h"
#include "views/xmap/xmap_model.h"
#include "views/xmap/xmap_painter.h"

namespace views {

class XmapCorner;
class XmapHeader;

// The crosspoint grid "msfgXmap".  It paints marks, selection and crosshair, moves the current
// cell, and sends nothing, whatever is clicked or pressed in it.
//
// Its accessors speak in the coordinates of the whole grid: rows and columns 0 and 1 are the
// header, and the crosspoint of output o and input i is row o + 1, column i + 1.
class XmapGridView : public QTableView {
  Q_OBJECT

 public:
  // Both must outlive the view.
  XmapGridView(const rules::XmapGrid& grid, XmapModel& cells, QWidget* parent = nullptr);

  // The mark of a cell, 0 for none, 1 to 4.
  Q_INVOKABLE int cellMark(int row, int column) const;
  // The text of a cell: labels and numbers of the header.
  Q_INVOKABLE QString cellText(int row, int column) const;
  // The ground of a cell; an invalid colour where there is no cell.
  Q_INVOKABLE QColor cellColor(int row, int column) const;
  // Makes a crosspoint the current cell.  A header cell is never current: asking for one, or
  // for a cell that is not there, leaves no cell current.
  Q_INVOKABLE void selectCell(int row, int column);
  // The current cell, its column as x and its row as y; (-1, -1) when there is none.
  Q_INVOKABLE QPoint selectedCell() const;

  // The current cell by its channels.
  Crosspoint Selected() const { return ToCrosspoint(currentIndex()); }
  // Makes a crosspoint the current cell, and brings it into sight.  A channel that is 0 stays as it
  // is, or becomes the first when no cell is current.  REQUIRES: both within 0..ChannelCount
  void Select(const Crosspoint& crosspoint);

  // Chooses all cells from the current one to this one, and brings that into sight.
  void SelectTo(const Crosspoint& corner);

  // The chosen cells: a rectangle with the current cell at one of its corners, or that alone; empty
  // when there is none.
  rules::CellBlock Block() const;

  // The size of everything, in per cent; 75 to 200, others are clamped.
  void SetZoom(int zoom);
  int Zoom() const { return zoom_; }

  // Highlights the current row and column, and those under the pointer.
  void SetCrosshair(bool visible);
  bool HasCrosshair() const { return scene_.crosshair; }

  // The outputs and inputs whose labels match a search.
  void SetMatches(const rules::ChannelSet& outputs, const rules::ChannelSet& inputs);

  // Brings the header of a channel into sight without moving the current cell.
  void ShowOutput(int output);
  void ShowInput(int input);

  // Hatches the map and writes the warning over it; empty for none.  The line gives way to the
  // pointer, or else to the corners of what is chosen.
  void SetWarning(const QString& warning);

  // Outlines a crosspoint by dots: a command was sent and the switcher has not reported yet.
  void SetPending(const Crosspoint& crosspoint, bool pending);

 Q_SIGNALS:
  // The current cell, or what is chosen beside it, is another.
  void CurrentCellChanged();
  // A printable character was typed.
  void TextTyped(const QString& text);
  // The menu of a channel was asked for in a header; the outputs are the vertical side.
  void HeaderMenuRequested(Qt::Orientation side, int channel, const QPoint& globalPosition);
  // The wheel was turned with Ctrl: +1 or -1.
  void ZoomStepped(int step);
  // The context menu was asked for, by the pointer or the keyboard.
  void MenuRequested(const QPoint& globalPosition);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                   const QList<int>& roles) override;

 private:
  static Crosspoint ToCrosspoint(const QModelIndex& index) {
    return {XmapModel::Output(index), XmapModel::Input(index)};
  }
  QRect CellRect(const QModelIndex& index) const { return scene_.CellRect(ToCrosspoint(index)); }
  // Makes a cell the current one, and the only one that is chosen.
  void MoveTo(const QModelIndex& index);
  // Chooses all cells from the current one to this.
  void ExtendTo(const QModelIndex& index);
  // Where a key leads that extends what is chosen.
  QModelIndex MoveCorner(CursorAction action, Qt::KeyboardModifiers modifiers) const;
  // The cell at a point of the viewport, or the next one to it.
  QModelIndex NearestCell(const QPoint& point) const;
  void CornerChanged();
  QModelIndex NextMarked(const QModelIndex& from, int rowStep, int columnStep) const;
  // Asks for a repaint of a cell, or of its row and column where the crosshair runs.
  void UpdateCell(const QModelIndex& index);
  // Tells the headers where the current cell and the pointer are.
  void ShowPosition();
  void SetHovered(const QModelIndex& index);
  void ApplyMetrics();
  void UpdateOrigin();
  void PlaceWarning();

  const rules::XmapGrid& grid_;
  XmapModel& cells_;
  XmapHeader* rowHeader_;
  XmapHeader* columnHeader_;
  XmapCorner* corner_;
  LinkWarning* warning_;
  XmapPainter painter_;
  XmapScene scene_;
  int zoom_ = 100;
  QPersistentModelIndex hovered_;
  QPersistentModelIndex farCorner_;  // of the chosen cells; the other one is the current cell
  std::optional<QPoint> pressedAt_;  // where the pointer is held down
  bool isDragging_ = false;          // it has gone far enough from there
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_GRID_VIEW_H_
