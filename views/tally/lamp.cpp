// SPDX-License-Identifier: MIT

#include "views/tally/lamp.h"

#include <QPainter>

namespace views {
namespace {

constexpr int kSize = 22;
constexpr double kDotRadius = 4;
constexpr double kSlashReach = 4.5;  // from the middle, along both axes
constexpr double kSlashWidth = 2.5;

}  // namespace

Lamp::Lamp(QWidget* parent) : QWidget(parent) { setFixedSize(kSize, kSize); }

void Lamp::SetOn(bool on) {
  if (on == isOn_) return;
  isOn_ = on;
  update();
}

QSize Lamp::sizeHint() const { return {kSize, kSize}; }

void Lamp::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // The rim sets the lamp off from a ground of any colour.
  painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
  painter.setBrush(Colour());
  painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  const QPointF middle = QRectF(rect()).center();
  if (isOn_) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(kRespondingInk);
    painter.drawEllipse(middle, kDotRadius, kDotRadius);
  } else {
    painter.setPen(QPen(kSilentInk, kSlashWidth, Qt::SolidLine, Qt::RoundCap));
    const QPointF end(kSlashReach, -kSlashReach);
    painter.drawLine(middle - end, middle + end);
  }
}

}  // namespace views
