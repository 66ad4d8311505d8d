// SPDX-License-Identifier: MIT

#include "views/widgets/elided_label.h"

#include <QStyle>
#include <QStylePainter>

namespace views {

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QStylePainter painter(this);
  const QRect room = contentsRect();
  painter.drawItemText(room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                       fontMetrics().elidedText(text(), mode_, room.width()), foregroundRole());
}

}  // namespace views
