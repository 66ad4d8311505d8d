// SPDX-License-Identifier: MIT
//
// Places in the own coordinates of a work area: those of its viewport when nothing is scrolled.
// Scrolling moves the child windows; in these coordinates they stay where they are.

#ifndef VIEWS_WINDOW_PLACE_AREA_PLACE_H_
#define VIEWS_WINDOW_PLACE_AREA_PLACE_H_

#include <QRect>
#include <QWidget>

namespace views {

// Where a child window stands.  What is in no work area has the place that its parent knows.
QRect PlaceInArea(const QWidget& window);

// Puts a child window there.
void PutInArea(QWidget& window, const QRect& place);

}  // namespace views

#endif  // VIEWS_WINDOW_PLACE_AREA_PLACE_H_
