// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_TITLE_WIDTH_H_
#define VIEWS_WIDGETS_TITLE_WIDTH_H_

#include <QFontMetrics>
#include <QWidget>

namespace views {

// How wide a window has to be for a title of so many characters beside the icon and the buttons
// that a desktop puts into its title bar, whose font is as a rule bold and that of the window.
inline int TitleWidth(const QWidget& window, int characters) {
  constexpr int kIconAndButtons = 130;
  QFont font = window.font();
  font.setBold(true);
  return QFontMetrics(font).averageCharWidth() * characters + kIconAndButtons;
}

}  // namespace views

#endif  // VIEWS_WIDGETS_TITLE_WIDTH_H_
