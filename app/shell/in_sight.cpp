// SPDX-License-Identifier: MIT

#include "app/shell/in_sight.h"

#include <QScrollBar>
#include <algorithm>

namespace app {
namespace {

// How far to move so that `low` to `high` lies within 0 to `room`; its beginning comes first.
int Way(int low, int high, int room) {
  if (low < 0) return low;
  return high > room ? std::min(low, high - room) : 0;
}

}  // namespace

void BringInSight(QMdiArea& area, const QWidget& widget, const QRect& part) {
  if (!area.isVisible()) return;
  const QRect there(widget.mapTo(area.viewport(), part.topLeft()), part.size());
  const QSize room = area.viewport()->size();
  QScrollBar& across = *area.horizontalScrollBar();
  QScrollBar& down = *area.verticalScrollBar();
  across.setValue(across.value() + Way(there.left(), there.right() + 1, room.width()));
  down.setValue(down.value() + Way(there.top(), there.bottom() + 1, room.height()));
}

}  // namespace app
