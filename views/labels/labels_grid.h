// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABELS_GRID_H_
#define VIEWS_LABELS_LABELS_GRID_H_

#include <QItemSelectionModel>
#include <QRect>
#include <QTableView>

#include <functional>

#include "stations/label_texts.h"

namespace views {

class LabelsDelegate;
class LabelsModel;

// The grid "jgAlphas": moves, editors and keys.  A row with values that are not stored is left
// only when they could be stored.
class LabelsGrid : public QTableView {
  Q_OBJECT

 public:
  // `storeRow` stores the row being edited; false when that failed.  `model` must outlive the
  // grid.
  LabelsGrid(LabelsModel& model, std::function<bool()> storeRow, QWidget* parent);

  // Takes the text of the open editor, if there is one, into the row and closes it.  False when
  // the column cannot hold the text: TextRefused tells, and the editor stays.
  bool CommitEditor();

  // The selected block; the current cell when nothing is selected.  Empty without a cell.
  QRect Block() const;
  // Selects a block, without moving the current cell.
  void SelectBlock(const QRect& block);

  // The arrow in the header.
  void ShowSortOrder();

 Q_SIGNALS:
  // The caption of a column (from 0) was clicked; the order is still what it was.
  void HeaderClicked(int column);
  // The text in the editor of this cell cannot be held there, and why; the editor stays open.
  void TextRefused(const QModelIndex& index, const stations::TextCheck& check);
  // A text went from the editor into the row being edited; it is not stored yet.
  void TextTaken(const QModelIndex& index, const QString& text);
  // The editor of a column refused a character: it holds as many as the column takes.
  void Full(stations::LabelColumn column);
  // Escape outside an editor: the row being edited is to get its stored values back.
  void DropRequested();
  // The keys of the clipboard: for Block().
  void CopyRequested();
  void PasteRequested();
  // The context menu is to open here, for the pointer or, by key, for the current cell.
  void MenuRequested(const QPoint& globalPosition);

 protected:
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  bool MayMoveTo(const QModelIndex& index);
  // To the next cell that can be edited, in either direction, and edits it.
  void Walk(int step);
  // Stores the row being edited and goes to the same column of the row `step` below; stays where
  // it is when that failed, or when there is no such row.
  void StoreAndStep(int step);
  // The middle of the current cell, on the screen.
  QPoint CurrentPlace() const;
  // Rows, columns and captions for the font: the columns have their required widths at the usual
  // one, and are wider for a larger one.
  void FitFont();
  int WidthFor(stations::LabelColumn column) const;
  // The notes have the room that the other columns leave.
  void WidenNotes();

  LabelsModel& model_;
  const std::function<bool()> storeRow_;
  LabelsDelegate* delegate_;
  bool moveRefused_ = false;  // of the last key or click
};

}  // namespace views

#endif  // VIEWS_LABELS_LABELS_GRID_H_
