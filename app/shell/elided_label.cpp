// SPDX-License-Identifier: MIT

#include "app/shell/elided_label.h"

#include <QStyle>
#include <QStylePainter>

namespace app {

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  const QRect room = contentsRect();
  painter.drawItemText(room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                       fontMetrics().elidedText(text(), mode_, room.width()), foregroundRole());
}

}  // namespace app
