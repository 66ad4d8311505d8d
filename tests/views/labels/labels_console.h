// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_LABELS_LABELS_CONSOLE_H_
#define TESTS_VIEWS_LABELS_LABELS_CONSOLE_H_

#include <QLineEdit>
#include <QTableView>

#include <string>
#include <vector>

#include "tests/views/view_console.h"
#include "views/labels/alphas_view.h"

namespace test {

// Columns of the grid.
enum LabelsColumn { kStation, kLabel, kInput, kHidden, kSystemInput, kSystemOutput, kNotes };

using Texts = std::vector<std::string>;

// A console with the station labels open, as the operator sees and handles them.  Rows count
// from 0 and are those of the grid.
class LabelsConsole : public ViewConsole {
 public:
  explicit LabelsConsole(int channels = 64) : ViewConsole(channels) {}

  views::AlphasView& Open();

  QTableView& Grid();
  // The texts of a column from the first row down.
  Texts Column(int column, int rows);
  QString Cell(int row, int column);
  QVariant CellData(int row, int column, int role);
  bool IsMarkedEdited(int row);

  // What the operator does.
  void Click(int row, int column);
  void DoubleClick(int row, int column);
  void ClickHeader(int column);
  void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void Type(const std::string& text);
  // Selects a block by dragging over it.
  void Drag(int firstRow, int firstColumn, int lastRow, int lastColumn);
  void Paste(const QString& text);
  std::string Copy();

  // The row of a station, and the current cell as "row,column".
  int RowOf(int station);
  QString Current();
  // The open editor; null when none is open.
  QWidget* Editor();

  // What the view said, in order: "edited 1 5" (table, station), "sent 1 9999", "labels",
  // "note ...", "tally".
  std::vector<std::string> said;
  views::AlphasView* view = nullptr;
};

}  // namespace test

#endif  // TESTS_VIEWS_LABELS_LABELS_CONSOLE_H_
