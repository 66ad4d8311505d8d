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

// The grid "jgAlphas": moves, editors and keys.  The operator can leave a row with values that are
// not stored only when storing them succeeds.
class LabelsGrid : public QTableView {
  Q_OBJECT

 public:
  struct Asks {
    std::function<bool()> mayEdit;   // whether cells may be edited now; says why not
    std::function<bool()> storeRow;  // stores the row being edited; false when that failed
  };
  // `rows` must outlive the grid.
  LabelsGrid(LabelsModel& rows, Asks asks, QWidget* parent);

  // Takes the text of the open editor, if there is one, into the row and closes it.  False when
  // the column cannot hold the text: TextRefused is emitted, and the editor stays open.
  bool CommitEditor();

  // The selected block; the current cell when nothing is selected.  Empty without a cell.
  QRect Block() const;
  // Selects a block, without moving the current cell.
  void SelectBlock(const QRect& block);

  // Puts the arrow in the header at the column that the rows are sorted by.
  void ShowSortOrder();

 Q_SIGNALS:
  // The caption of a column (from 0) was clicked; the order is still what it was.
  void HeaderClicked(int column);
  // This cell cannot hold the text of its editor, and why; the editor stays open.
  void TextRefused(const QModelIndex& index, const stations::TextCheck& check);
  // A text went from the editor into the row being edited; it is not stored yet.
  void TextTaken(const QModelIndex& index, const QString& text);
  // The editor of a column refused a character: it holds as many as the column takes.
  void Full(stations::LabelColumn column);
  // Escape outside an editor: the edit of the row is to be undone.
  void DropRequested();
  // The keys of the clipboard: for Block().
  void CopyRequested();
  void PasteRequested();
  // The context menu is to open here: at the pointer or, asked for by key, at the current cell.
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
  static bool BeginsEdit(const QModelIndex& index, EditTrigger trigger, const QEvent* event);
  bool MayMoveTo(const QModelIndex& index);
  // To the next cell that can be edited, in either direction, and edits it.
  void Walk(int step);
  // Stores the row being edited and goes down `step` rows in the same column; stays where it is
  // when storing failed or there is no such row.
  void StoreAndStep(int step);
  // The middle of the current cell, on the screen.
  QPoint CurrentPlace() const;
  // Fits rows, columns and captions to the font.  The columns have their fixed widths in the usual
  // font, and larger ones in a larger font.
  void FitFont();
  int WidthFor(stations::LabelColumn column) const;
  // Gives the notes the room that the other columns leave.
  void WidenNotes();

  LabelsModel& rows_;
  const Asks asks_;
  LabelsDelegate* delegate_;
  bool moveRefused_ = false;  // the last key or click was not allowed to leave its cell
};

}  // namespace views

#endif  // VIEWS_LABELS_LABELS_GRID_H_
