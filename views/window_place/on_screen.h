// SPDX-License-Identifier: MIT

#ifndef VIEWS_WINDOW_PLACE_ON_SCREEN_H_
#define VIEWS_WINDOW_PLACE_ON_SCREEN_H_

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace views {

// How large to show a window that would like to be of size `wanted` on a screen with that room: no
// larger than what the screen has beside the frame that the desktop puts around the window.
QSize SizeOnScreen(const QSize& wanted, const QSize& room);

// Where to move a window with its frame, so that it sticks out of the screen's room no further
// than it has to; its upper left comes first.
QPoint CornerOnScreen(const QRect& frame, const QRect& room);

// Where to show a window that was stored at `place`.  There, when any part of it lies on one of the
// screens; else in the upper left of `home`, the room for windows on the primary screen, and no
// larger than that.
QRect VisiblePlace(const QRect& place, const QList<QRect>& screens, const QRect& home);

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_ON_SCREEN_H_
