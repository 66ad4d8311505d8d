// SPDX-License-Identifier: MIT

#ifndef VIEWS_WINDOW_PLACE_VISIBLE_PLACE_H_
#define VIEWS_WINDOW_PLACE_VISIBLE_PLACE_H_

#include <QList>
#include <QRect>

namespace views {

// Where to show a window that was stored at `place`.  There, when any part of it lies on one of the
// screens; else in the upper left of `home`, the room for windows on the primary screen, and no
// larger than that.
QRect VisiblePlace(const QRect& place, const QList<QRect>& screens, const QRect& home);

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_VISIBLE_PLACE_H_
