// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_LINK_COLOURS_H_
#define VIEWS_WIDGETS_LINK_COLOURS_H_

#include <QColor>

namespace views {

// What tells of a link that is down has this ground and this ink, whatever the palette.
inline constexpr QColor kLinkDownGround{0xC0, 0x00, 0x00};
inline constexpr QColor kLinkDownInk{0xFF, 0xFF, 0xFF};

}  // namespace views

#endif  // VIEWS_WIDGETS_LINK_COLOURS_H_
