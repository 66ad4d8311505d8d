// SPDX-License-Identifier: MIT

#include "app/shell/command_letters.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace app {
namespace {

bool IsCommandLetter(const QKeyEvent& key) {
  const Qt::KeyboardModifiers modifiers =
      key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  return modifiers == Qt::AltModifier && !key.text().isEmpty() && key.text().at(0).isPrint();
}

}  // namespace

CommandLetters::CommandLetters(QObject* parent) : QObject(parent) {
#ifndef Q_OS_MACOS
  qApp->installEventFilter(this);
#endif
}

// Shortcuts were asked before: nobody has taken this one.
bool CommandLetters::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || qobject_cast<QLineEdit*>(watched) == nullptr ||
      !IsCommandLetter(static_cast<const QKeyEvent&>(*event))) {
    return QObject::eventFilter(watched, event);
  }
  event->ignore();
  return true;
}

}  // namespace app
