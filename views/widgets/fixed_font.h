// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_FIXED_FONT_H_
#define VIEWS_WIDGETS_FIXED_FONT_H_

#include <QFont>

namespace views {

// "Courier New", or where it is not installed what comes closest, in `points`.
QFont FixedFont(double points);

}  // namespace views

#endif  // VIEWS_WIDGETS_FIXED_FONT_H_
