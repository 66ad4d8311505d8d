// SPDX-License-Identifier: MIT

#ifndef APP_VISIBLE_PLACE_H_
#define APP_VISIBLE_PLACE_H_

#include <QList>
#include <QRect>

namespace app {

// Where to show a window that is to stand at `place` on these screens, the primary one first: at
// `place`, or, when nothing of the window's upper edge could be reached with the mouse, in the
// upper left of the primary screen and no larger than it.
QRect VisiblePlace(const QRect& place, const QList<QRect>& screens);

}  // namespace app

#endif  // APP_VISIBLE_PLACE_H_
