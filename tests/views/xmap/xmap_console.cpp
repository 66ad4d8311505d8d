// SPDX-License-Identifier: MIT

#include "tests/views/xmap/xmap_console.h"

#include <QAction>
#include <QTableView>
#include <QTest>
#include <QToolBar>

namespace test {
views::XmapView& XmapConsole::Open() {
  view = new views::XmapView(Services());
  Show(view);
  return *view;
}

void XmapConsole::PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&Grid(), key, modifiers);
}

void XmapConsole::ClickCell(int row, int column, Qt::MouseButton button) {
  auto& table = static_cast<QTableView&>(Grid());
  QTest::mouseClick(table.viewport(), button, Qt::NoModifier, CellCentre(row, column));
}

QWidget& XmapConsole::Grid() { return *view->findChild<QWidget*>(QStringLiteral("msfgXmap")); }

QPoint XmapConsole::CellCentre(int row, int column) {
  auto& table = static_cast<QTableView&>(Grid());
  return table.visualRect(table.model()->index(row - 2, column - 2)).center();
}

int XmapConsole::Mark(int row, int column) {
  int mark = -1;
  QMetaObject::invokeMethod(&Grid(), "cellMark", Q_RETURN_ARG(int, mark), Q_ARG(int, row),
                            Q_ARG(int, column));
  return mark;
}

QString XmapConsole::CellText(int row, int column) {
  QString text;
  QMetaObject::invokeMethod(&Grid(), "cellText", Q_RETURN_ARG(QString, text), Q_ARG(int, row),
                            Q_ARG(int, column));
  return text;
}

QColor XmapConsole::Colour(int row, int column) {
  QColor colour;
  QMetaObject::invokeMethod(&Grid(), "cellColor", Q_RETURN_ARG(QColor, colour), Q_ARG(int, row),
                            Q_ARG(int, column));
  return colour;
}

void XmapConsole::SelectCell(int row, int column) {
  QMetaObject::invokeMethod(&Grid(), "selectCell", Q_ARG(int, row), Q_ARG(int, column));
}

QPoint XmapConsole::SelectedCell() {
  QPoint cell;
  QMetaObject::invokeMethod(&Grid(), "selectedCell", Q_RETURN_ARG(QPoint, cell));
  return cell;
}

std::string XmapConsole::Row(int row) {
  std::string marks;
  for (int column = 2; column <= model.ChannelCount + 1; ++column) {
    marks += ".1234"[Mark(row, column)];
  }
  return marks;
}

QList<QAction*> BandActions(const views::XmapView& view) {
  return view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"))->actions();
}

QColor PixelOf(QWidget& widget, const QPoint& point) {
  const QImage image = widget.grab().toImage();
  return image.pixelColor((QPointF(point) * image.devicePixelRatio()).toPoint());
}

QWidget& Viewport(XmapConsole& console) {
  return *static_cast<QTableView&>(console.Grid()).viewport();
}

}  // namespace test
