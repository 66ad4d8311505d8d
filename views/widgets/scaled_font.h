// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_SCALED_FONT_H_
#define VIEWS_WIDGETS_SCALED_FONT_H_

#include <QFont>

namespace views {

// The height in pixels of the usual font, of nine points, for which the first sizes of the windows
// are made.
inline constexpr double kUsualFont = 12;

// How much larger a font is than the usual one.
double ScaleOf(const QFont& font);

// `scale` of a font whose size is given in points or in pixels.
QFont Scaled(const QFont& font, double scale);

// The font, made smaller until the text fits into `room`, but not below `least` of its size.
QFont Fitting(const QFont& font, const QString& text, int room, double least);

}  // namespace views

#endif  // VIEWS_WIDGETS_SCALED_FONT_H_
