// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_SCALED_FONT_H_
#define VIEWS_WIDGETS_SCALED_FONT_H_

#include <QFont>

namespace views {

// The height of the usual font in pixels, that of nine points: the first sizes of the windows are
// made for it.
inline constexpr double kUsualFont = 12;

// How much larger than the usual font it is.
double ScaleOf(const QFont& font);

// `scale` of a font whose size is given in points or in pixels.
QFont Scaled(const QFont& font, double scale);

// The font, smaller where the text is wider than `room`, but no smaller than `least` of it.
QFont Fitting(const QFont& font, const QString& text, int room, double least);

}  // namespace views

#endif  // VIEWS_WIDGETS_SCALED_FONT_H_
