// SPDX-License-Identifier: MIT

#include "views/levels/level_scale.h"

#include <QPainter>

#include "views/rules/levels.h"

namespace views {
namespace {

QString Text(int level) {
  return QString::fromStdString(rules::LevelText(rules::kUnityValue - level));
}

}  // namespace

LevelScale::LevelScale(const LevelSlider& slider, QWidget* parent)
    : QWidget(parent), slider_(slider) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

QSize LevelScale::sizeHint() const {
  return {QFontMetrics(font()).horizontalAdvance(Text(-20)) + 2, 0};
}

void LevelScale::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  QFont bold = font();
  bold.setBold(true);
  for (int level = 0; level >= -60; level -= 20) {
    painter.setFont(level == 0 ? bold : font());
    const double y = slider_.HandleY(rules::kUnityValue - level);
    const QPointF middle = mapFromGlobal(slider_.mapToGlobal(QPointF(0, y)));
    const double height = painter.fontMetrics().height();
    painter.drawText(QRectF(0, middle.y() - height / 2, width(), height),
                     Qt::AlignRight | Qt::AlignVCenter, Text(level));
  }
}

}  // namespace views
