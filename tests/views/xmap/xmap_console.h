// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_XMAP_XMAP_CONSOLE_H_
#define TESTS_VIEWS_XMAP_XMAP_CONSOLE_H_

#include <QAction>
#include <QColor>
#include <QList>
#include <QPoint>
#include <QPointer>
#include <string>

#include "tests/views/view_console.h"
#include "views/xmap/xmap_view.h"

namespace test {

// A crosspoint map in its surroundings.
class XmapConsole : public ViewConsole {
 public:
  using ViewConsole::ViewConsole;

  // Opens the map in a sub-window of the main window.
  views::XmapView& Open();

  // Presses keys in the grid, or clicks a cell of it, named as the grid names cells.
  void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void ClickCell(int row, int column, Qt::MouseButton button = Qt::LeftButton);

  // What the grid's own accessors say, called by name.
  int Mark(int row, int column);
  QString CellText(int row, int column);
  QColor Colour(int row, int column);
  void SelectCell(int row, int column);
  QPoint SelectedCell();
  // The marks of a grid row, one character a cell: "." for none, then "1" to "4".
  std::string Row(int row);

  QWidget& Grid();
  // The middle of a cell in the coordinates of the grid's viewport.
  QPoint CellCentre(int row, int column);

  QPointer<views::XmapView> view;
};

// The report of a crosspoint on an inhibited cell.
inline constexpr char kConflict[] =
    "exclamation|Synchronization Warning|Crosspoint selection received for Inhibited "
    "Crosspoint.\n";

// What stands on the tool band, separators included.
QList<QAction*> BandActions(const views::XmapView& view);

// The colour of a widget at a logical point.
QColor PixelOf(QWidget& widget, const QPoint& point);

// The body of the grid, without its headers.
QWidget& Viewport(XmapConsole& console);

}  // namespace test

#endif  // TESTS_VIEWS_XMAP_XMAP_CONSOLE_H_
