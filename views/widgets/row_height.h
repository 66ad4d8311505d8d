// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_ROW_HEIGHT_H_
#define VIEWS_WIDGETS_ROW_HEIGHT_H_

#include <QFontMetrics>

namespace views {

// How high a row of a list is, in pixels, with the room between its text and the next row's.
inline int RowHeight(const QFontMetrics& font) { return font.height() + 6; }

}  // namespace views

#endif  // VIEWS_WIDGETS_ROW_HEIGHT_H_
