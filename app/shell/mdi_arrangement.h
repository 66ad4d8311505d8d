// SPDX-License-Identifier: MIT
//
// Arranging the child windows, from the upper left corner of the area, which is scrolled to.  The
// toolkit's own cascade shrinks them to stubs; these keep what can be kept.

#ifndef APP_SHELL_MDI_ARRANGEMENT_H_
#define APP_SHELL_MDI_ARRANGEMENT_H_

#include <QMdiArea>

namespace app {

// Stacks the windows that are not minimised from the top left, each one title bar further down
// and to the right, in their own sizes, the active one on top.  One that could stand within the
// area does: it becomes as much smaller as it would stick out.
void Cascade(QMdiArea& area);

// Full-width rows, or full-height columns, over the whole area; the order is that of creation.
void TileHorizontal(QMdiArea& area);
void TileVertical(QMdiArea& area);

// Puts the minimised windows in a row along the bottom, from the left.
void ArrangeIcons(QMdiArea& area);

}  // namespace app

#endif  // APP_SHELL_MDI_ARRANGEMENT_H_
