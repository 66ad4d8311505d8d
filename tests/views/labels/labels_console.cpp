// SPDX-License-Identifier: MIT

#include "tests/views/labels/labels_console.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTest>

#include "views/labels/labels_model.h"

namespace test {

views::AlphasView& LabelsConsole::Open() {
  view = new views::AlphasView(Services());
  using views::AlphasView;
  const auto say = [this](const char* what) {
    return [this, what](const switcher::TablePart& part) {
      said.push_back(what + std::to_string(static_cast<int>(part.table)) + " " +
                     std::to_string(part.station));
    };
  };
  QObject::connect(&unsent, &views::UnsentTables::Edited, view, say("edited "));
  QObject::connect(&unsent, &views::UnsentTables::Sent, view, say("sent "));
  QObject::connect(view, &AlphasView::LabelsChanged, [this] { said.emplace_back("labels"); });
  QObject::connect(view, &AlphasView::QdvStatusRequested, [this] { said.emplace_back("tally"); });
  QObject::connect(view, &AlphasView::NoteRequested,
                   [this](const QString& note) { said.push_back("note " + note.toStdString()); });
  Show(view);
  return *view;
}

QTableView& LabelsConsole::Grid() {
  return *view->findChild<QTableView*>(QStringLiteral("jgAlphas"));
}

QVariant LabelsConsole::CellData(int row, int column, int role) {
  return Grid().model()->index(row, column).data(role);
}

QString LabelsConsole::Cell(int row, int column) {
  return CellData(row, column, Qt::DisplayRole).toString();
}

Texts LabelsConsole::Column(int column, int rows) {
  Texts texts;
  for (int row = 0; row < rows; ++row) texts.push_back(Cell(row, column).toStdString());
  return texts;
}

bool LabelsConsole::IsMarkedEdited(int row) {
  return Grid().model()->headerData(row, Qt::Vertical, views::LabelsModel::EditedRole).toBool();
}

void LabelsConsole::Click(int row, int column) {
  const QModelIndex cell = Grid().model()->index(row, column);
  Grid().scrollTo(cell);
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, Qt::NoModifier,
                    Grid().visualRect(cell).center());
}

void LabelsConsole::DoubleClick(int row, int column) {
  Click(row, column);
  const QPoint at = Grid().visualRect(Grid().model()->index(row, column)).center();
  QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, Qt::NoModifier, at);
}

void LabelsConsole::ClickHeader(int column) {
  QHeaderView& header = *Grid().horizontalHeader();
  const QPoint at(header.sectionViewportPosition(column) + 10, header.height() / 2);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, at);
}

void LabelsConsole::Press(int key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

// Each letter goes where the focus is: the first one may have opened an editor.
void LabelsConsole::Type(const std::string& text) {
  for (const QChar letter : QString::fromStdString(text)) {
    const int key = letter.toUpper().unicode();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier, QString(letter));
      QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
  }
}

void LabelsConsole::Drag(int firstRow, int firstColumn, int lastRow, int lastColumn) {
  Click(firstRow, firstColumn);
  QWidget* const body = Grid().viewport();
  const QPoint from = Grid().visualRect(Grid().model()->index(firstRow, firstColumn)).center();
  const QPoint to = Grid().visualRect(Grid().model()->index(lastRow, lastColumn)).center();
  QTest::mousePress(body, Qt::LeftButton, Qt::NoModifier, from);
  QMouseEvent move(QEvent::MouseMove, to, body->mapToGlobal(to), Qt::LeftButton, Qt::LeftButton,
                   Qt::NoModifier);
  QApplication::sendEvent(body, &move);
  QTest::mouseRelease(body, Qt::LeftButton, Qt::NoModifier, to);
}

void LabelsConsole::Paste(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
  Press(Qt::Key_V, Qt::ControlModifier);
}

std::string LabelsConsole::Copy() {
  QGuiApplication::clipboard()->clear();
  Press(Qt::Key_C, Qt::ControlModifier);
  return QGuiApplication::clipboard()->text().toStdString();
}

int LabelsConsole::RowOf(int station) {
  for (int row = 0; row < Grid().model()->rowCount(); ++row) {
    if (Cell(row, kStation) == QString::number(station)) return row;
  }
  return -1;
}

QString LabelsConsole::Current() {
  const QModelIndex current = Grid().currentIndex();
  return QStringLiteral("%1,%2").arg(current.row()).arg(current.column());
}

QWidget* LabelsConsole::Editor() {
  for (QWidget* const editor :
       Grid().viewport()->findChildren<QWidget*>(QStringLiteral("edtLabel"))) {
    if (!editor->isHidden()) return editor;
  }
  return nullptr;
}

}  // namespace test
