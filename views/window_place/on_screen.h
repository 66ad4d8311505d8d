// SPDX-License-Identifier: MIT

#ifndef VIEWS_WINDOW_PLACE_ON_SCREEN_H_
#define VIEWS_WINDOW_PLACE_ON_SCREEN_H_

#include <QRect>
#include <QSize>
#include <QWidget>

namespace views {

// How large to show a window that would like to be of size `wanted` on a screen with that room: no
// larger than what the screen has beside the frame that the desktop puts around the window.
QSize SizeOnScreen(const QSize& wanted, const QSize& room);

// Where to move a window with its frame, so that it sticks out of the screen's room no further
// than it has to; its upper left comes first.
QPoint CornerOnScreen(const QRect& frame, const QRect& room);

// Whether a window that deletes itself when it is closed is still there: a closed one is hidden
// until then.
inline bool IsShown(const QWidget* window) { return window != nullptr && window->isVisible(); }

// Shows a window of its own before all others, also when it was minimised.
void BringUp(QWidget& window);

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_ON_SCREEN_H_
