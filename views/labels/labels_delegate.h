// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABELS_DELEGATE_H_
#define VIEWS_LABELS_LABELS_DELEGATE_H_

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

#include "stations/label_texts.h"

class QKeyEvent;

namespace views {

// How many rows Enter moves down after the row is stored: 1, with Shift -1.
int StepOfEnter(const QKeyEvent& event);

// Draws and edits the cells of the grid of labels.
//
// An editor stays open until its text is taken or dropped: losing the focus to another window or a
// box does not close it, and a text that the column cannot hold keeps it open.
class LabelsDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit LabelsDelegate(QObject* parent = nullptr);

  // The open editor, or null, and its cell.
  QWidget* Editor() const { return editor_; }
  QModelIndex EditedIndex() const { return index_; }
  // What keeps the open editor from closing.
  stations::TextCheck CheckEditor() const;

  // The view has closed the editor.
  void Forget(const QWidget* editor);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 Q_SIGNALS:
  // In an editor: Enter, and Tab (1) or Shift+Tab (-1).
  void EnterPressed(int step);
  void TabPressed(int step);
  // A choice was made in a drop-down list.
  void ChoiceMade();
  // The editor of a column refuses more characters.
  void Full(stations::LabelColumn column) const;
  // A text went from an editor into the row.
  void TextTaken(const QModelIndex& index, const QString& text) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  // The view opens editors through a const interface.
  mutable QPointer<QWidget> editor_;
  mutable QPersistentModelIndex index_;
};

}  // namespace views

#endif  // VIEWS_LABELS_LABELS_DELEGATE_H_
