// SPDX-License-Identifier: MIT

#include "tests/views/gui_support.h"

namespace test {

QList<QDialog*> ShownDialogs(const QWidget& window, const char* name) {
  QList<QDialog*> shown;
  for (auto* const dialog : window.findChildren<QDialog*>(QLatin1String(name))) {
    if (dialog->isVisible()) shown.append(dialog);
  }
  return shown;
}

QMdiSubWindow* SubWindow(const QMdiArea& area, const char* name) {
  for (QMdiSubWindow* const window : area.subWindowList()) {
    if (!window->isHidden() && window->widget()->objectName() == QLatin1String(name)) return window;
  }
  return nullptr;
}

}  // namespace test
