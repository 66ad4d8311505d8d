// SPDX-License-Identifier: MIT

#include "app/shell/edit_menu.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeySequence>
#include <QMenuBar>
#include <QMimeData>

namespace app {
namespace {

bool ClipboardHasText() {
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  return data != nullptr && data->hasText();
}

// "&Undo", "&Undo Label Of Station 17"
QString WithTitle(const QString& command, const std::optional<QString>& title) {
  return title && !title->isEmpty() ? command + u' ' + *title : command;
}

}  // namespace

EditMenu::EditMenu(const Services& services)
    : menu_(services.menu),
      views_(services.views),
      window_(services.window),
      undo_(AddEdit(Edit::Undo, "aidUndo", Qt::CTRL | Qt::Key_Z)),
      redo_(AddEdit(Edit::Redo, "aidRedo", Qt::CTRL | Qt::SHIFT | Qt::Key_Z)) {
  menu_.addSeparator();
  cut_ = AddEdit(Edit::Cut, "aidEditCut", QKeySequence::Cut);
  cut_->setText(tr("Cu&t"));
  copy_ = AddEdit(Edit::Copy, "aidEditCopy", QKeySequence::Copy);
  copy_->setText(tr("&Copy"));
  paste_ = AddEdit(Edit::Paste, "aidEditPaste", QKeySequence::Paste);
  paste_->setText(tr("&Paste"));
  // Fields and the grid of the labels have these keys of their own; the menu only shows them.
  for (QAction* const action : {cut_, copy_, paste_}) {
    action->setShortcutContext(Qt::WidgetShortcut);
  }
  menu_.addSeparator();
  menu_.addAction(&services.find);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*from*/, QWidget* to) { FocusMoved(to); });
  connect(&menu_, &QMenu::aboutToShow, this, &EditMenu::Open);
  connect(&menu_, &QMenu::aboutToHide, this, &EditMenu::Update);
  Update();
}

QAction* EditMenu::AddEdit(Edit edit, const char* name, const QKeySequence& keys) {
  auto* const action = new QAction(&menu_);
  action->setObjectName(QLatin1String(name));
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, [this, edit] { Run(edit); });
  menu_.addAction(action);
  return action;
}

void EditMenu::Offer(const std::optional<QString>& undo, const std::optional<QString>& redo) {
  undoable_ = undo;
  redoable_ = redo;
  Update();
}

// A menu that is opened takes the focus only for as long as it is open.
void EditMenu::FocusMoved(QWidget* to) {
  if (to == nullptr || to->window() != &window_) return;
  if (qobject_cast<QMenuBar*>(to) != nullptr) return;
  focus_ = to;
  Update();
}

void EditMenu::Update() {
  const bool inField = qobject_cast<QLineEdit*>(focus_) != nullptr;
  undo_->setText(WithTitle(tr("&Undo"), inField ? std::nullopt : undoable_));
  redo_->setText(WithTitle(tr("&Redo"), inField ? std::nullopt : redoable_));
  undo_->setEnabled(CanRun(Edit::Undo));
  redo_->setEnabled(CanRun(Edit::Redo));
  cut_->setEnabled(CanRun(Edit::Cut));
  copy_->setEnabled(CanRun(Edit::Copy));
  paste_->setEnabled(CanRun(Edit::Paste));
}

// Another program may hold what is on the clipboard, and answer late or not at all: it is asked for
// an open menu only.
void EditMenu::Open() {
  Update();
  if (paste_->isEnabled()) paste_->setEnabled(ClipboardHasText());
}

views::AlphasView* EditMenu::Labels() const {
  views::AlphasView* const labels = views_.Alphas();
  return labels != nullptr && focus_ != nullptr && labels->isAncestorOf(focus_) ? labels : nullptr;
}

bool EditMenu::CanRun(Edit edit) const {
  if (const auto* const field = qobject_cast<const QLineEdit*>(focus_.data())) {
    return CanRunInField(*field, edit);
  }
  switch (edit) {
    case Edit::Undo:
      return undoable_.has_value();
    case Edit::Redo:
      return redoable_.has_value();
    case Edit::Cut:
      return false;
    case Edit::Copy:
    case Edit::Paste:
      return Labels() != nullptr;
  }
  return false;
}

bool EditMenu::CanRunInField(const QLineEdit& field, Edit edit) const {
  switch (edit) {
    case Edit::Undo:
      return field.isUndoAvailable();
    case Edit::Redo:
      return field.isRedoAvailable();
    case Edit::Cut:
      return field.hasSelectedText() && !field.isReadOnly();
    case Edit::Copy:
      return field.hasSelectedText();
    case Edit::Paste:
      return !field.isReadOnly();
  }
  return false;
}

void EditMenu::Run(Edit edit) {
  if (auto* const field = qobject_cast<QLineEdit*>(focus_)) {
    RunInField(*field, edit);
    return;
  }
  switch (edit) {
    case Edit::Undo:
      Q_EMIT UndoRequested();
      break;
    case Edit::Redo:
      Q_EMIT RedoRequested();
      break;
    case Edit::Cut:
      break;
    case Edit::Copy:
      if (views::AlphasView* const labels = Labels()) labels->Copy();
      break;
    case Edit::Paste:
      if (views::AlphasView* const labels = Labels()) labels->Paste();
      break;
  }
}

void EditMenu::RunInField(QLineEdit& field, Edit edit) {
  switch (edit) {
    case Edit::Undo:
      field.undo();
      break;
    case Edit::Redo:
      field.redo();
      break;
    case Edit::Cut:
      field.cut();
      break;
    case Edit::Copy:
      field.copy();
      break;
    case Edit::Paste:
      field.paste();
      break;
  }
}

}  // namespace app
