// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_EDIT_MENU_H_
#define APP_SHELL_EDIT_MENU_H_

#include <QLineEdit>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>
#include <optional>

#include "app/shell/open_views.h"

namespace app {

// Fills the Edit menu.  In a field for text its commands are those of the field; elsewhere Undo and
// Redo are of what was stored, and the labels can be copied and pasted.  Each command of the
// open menu can be chosen exactly when it does something.
class EditMenu : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QMenu& menu;
    OpenViews& views;
    QWidget& window;  // the main window
    QAction& find;    // the command that finds, of the View menu
  };

  // All must outlive the object.
  explicit EditMenu(const Services& services);

  // What Undo and Redo would take back and do again outside of a field, in words like "Label Of
  // Station 17"; nothing where there is nothing to do.
  void Offer(const std::optional<QString>& undo, const std::optional<QString>& redo);

 Q_SIGNALS:
  void UndoRequested();
  void RedoRequested();

 private:
  enum class Edit { Undo, Redo, Cut, Copy, Paste };

  QAction* AddEdit(Edit edit, const char* name, const QKeySequence& keys);
  void FocusMoved(QWidget* to);
  void Update();
  void Open();
  void Run(Edit edit);
  void RunInField(QLineEdit& field, Edit edit);
  bool CanRun(Edit edit) const;
  bool CanRunInField(const QLineEdit& field, Edit edit) const;
  // The labels, if the operator works in them; else null.
  views::AlphasView* Labels() const;

  QMenu& menu_;
  OpenViews& views_;
  QWidget& window_;
  QPointer<QWidget> focus_;  // what the operator works in, also while a menu is open
  std::optional<QString> undoable_;
  std::optional<QString> redoable_;
  QAction* undo_;
  QAction* redo_;
  QAction* cut_;
  QAction* copy_;
  QAction* paste_;
};

}  // namespace app

#endif  // APP_SHELL_EDIT_MENU_H_
