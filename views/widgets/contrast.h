// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_CONTRAST_H_
#define VIEWS_WIDGETS_CONTRAST_H_

#include <QColor>

namespace views {

// Relative luminance, 0 black to 1 white.
double Luminance(const QColor& colour);

// Whether dark ink is hard to read on this colour.
bool IsDark(const QColor& ground);

// How far two colours stand apart: 1 the same, 21 black and white.
double Contrast(const QColor& a, const QColor& b);

// `share` (0 to 1) of `colour` over `ground`.
QColor Blend(const QColor& colour, const QColor& ground, double share);

}  // namespace views

#endif  // VIEWS_WIDGETS_CONTRAST_H_
