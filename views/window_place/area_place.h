// SPDX-License-Identifier: MIT
//
// Places of child windows in a work area, in coordinates that scrolling does not change: those of
// the viewport when nothing is scrolled.

#ifndef VIEWS_WINDOW_PLACE_AREA_PLACE_H_
#define VIEWS_WINDOW_PLACE_AREA_PLACE_H_

#include <QRect>
#include <QWidget>

namespace views {

// Where a child window stands; for a window in no work area, its place in its parent.
QRect PlaceInArea(const QWidget& window);

// Puts a child window there.
void PutInArea(QWidget& window, const QRect& place);

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_AREA_PLACE_H_
