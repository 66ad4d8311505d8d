// SPDX-License-Identifier: MIT

#include "views/widgets/held_enter.h"

#include <QKeyEvent>

namespace views {

HeldEnter::HeldEnter(QDialog& dialog, QPushButton& cancel) : QObject(&dialog) {
  dialog.installEventFilter(this);
  cancel.installEventFilter(this);
}

bool HeldEnter::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) {
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace views
