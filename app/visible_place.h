// SPDX-License-Identifier: MIT

#ifndef APP_VISIBLE_PLACE_H_
#define APP_VISIBLE_PLACE_H_

#include <QList>
#include <QRect>

namespace app {

// Where to show a window that is to stand at `place`: there when any part of it lies on one of
// these screens, however large it is; else in the upper left of `home`, the room for windows on
// the primary screen, and no larger than that.
QRect VisiblePlace(const QRect& place, const QList<QRect>& screens, const QRect& home);

}  // namespace app

#endif  // APP_VISIBLE_PLACE_H_
