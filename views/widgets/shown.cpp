// SPDX-License-Identifier: MIT

#include "views/widgets/shown.h"

namespace views {

void BringUp(QWidget& window) {
  if (window.isMinimized()) window.showNormal();
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace views
