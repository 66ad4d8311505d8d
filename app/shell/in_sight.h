// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_IN_SIGHT_H_
#define APP_SHELL_IN_SIGHT_H_

#include <QMdiArea>
#include <QRect>
#include <QWidget>

namespace app {

// Scrolls the area until `part` of a widget in it is seen, or as much of it as there is room for,
// its beginning first; no further than it has to.  An area that is not shown yet has no room to go
// by, and stays as it is.
void BringInSight(QMdiArea& area, const QWidget& widget, const QRect& part);

}  // namespace app

#endif  // APP_SHELL_IN_SIGHT_H_
