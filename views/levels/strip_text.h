// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_STRIP_TEXT_H_
#define VIEWS_LEVELS_STRIP_TEXT_H_

#include <QFont>
#include <QStringList>

namespace views {

// How all strips of the input levels are drawn: one as wide as the other, in one font.
struct StripText {
  QFont font;     // of the level and of the label
  int width = 0;  // of a strip, in logical pixels
};

// The space between the texts of two strips, in logical pixels.
inline constexpr int kStripSpace = 6;

// In `font` made smaller, as wide as the widest of the labels and the lowest level need, but no
// wider than `largestWidth`.  Where that is too little the letters become narrower, and then
// smaller; what is too wide even so has to be cut.
StripText FitStrips(const QFont& font, const QStringList& labels, int largestWidth);

}  // namespace views

#endif  // VIEWS_LEVELS_STRIP_TEXT_H_
