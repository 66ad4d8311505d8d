// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_GUI_SUPPORT_H_
#define TESTS_VIEWS_GUI_SUPPORT_H_

#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWidget>
#include <stdexcept>

namespace test {

// The part of `whole` with that object name.  A part that is not there ends the test.
template <typename Part = QWidget>
Part& Find(const QObject& whole, const QString& name) {
  auto* const part = whole.findChild<Part*>(name);
  if (part == nullptr) throw std::runtime_error("there is no " + name.toStdString());
  return *part;
}
template <typename Part = QWidget>
Part& Find(const QObject& whole, const char* name) {
  return Find<Part>(whole, QString(QLatin1String(name)));
}

// The dialogs of that name over `window` that are shown.
QList<QDialog*> ShownDialogs(const QWidget& window, const char* name);

// The sub-window that holds the form of that name; null for one that is not open.
QMdiSubWindow* SubWindow(const QMdiArea& area, const char* name);

}  // namespace test

#endif  // TESTS_VIEWS_GUI_SUPPORT_H_
