// SPDX-License-Identifier: MIT

#include "app/shell/link_lamp.h"

#include <QPainter>
#include <QPolygonF>

#include "views/widgets/link_colours.h"

namespace app {
namespace {

constexpr int kWidth = 24;
constexpr int kLeastHeight = 16;
constexpr double kStroke = 2.5;
constexpr double kReach = 4.5;  // of the cross from the middle, along both axes

constexpr QColor kTickOnLight{0x1B, 0x7A, 0x38};
constexpr QColor kTickOnDark{0x5F, 0xD3, 0x80};

}  // namespace

LinkLamp::LinkLamp(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("aidLinkLamp"));
  SayState();
}

void LinkLamp::SetConnected(bool connected) {
  if (connected == isConnected_) return;
  isConnected_ = connected;
  SayState();
  update();
}

void LinkLamp::SayState() {
  const QString state =
      isConnected_ ? tr("The switcher answers") : tr("The switcher does not answer");
  setToolTip(state);
  setAccessibleName(state);
}

QSize LinkLamp::sizeHint() const { return {kWidth, kLeastHeight}; }

void LinkLamp::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF middle = QRectF(rect()).center();
  if (isConnected_) {
    const bool dark = palette().color(QPalette::Window).lightnessF() < 0.5;
    painter.setPen(QPen(dark ? kTickOnDark : kTickOnLight, kStroke, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({middle + QPointF(-5, 0.5), middle + QPointF(-1.5, 4), middle + QPointF(5, -4)}));
    return;
  }
  painter.fillRect(rect(), views::kLinkDownGround);
  painter.setPen(QPen(views::kLinkDownInk, kStroke, Qt::SolidLine, Qt::RoundCap));
  const QPointF down(kReach, kReach);
  const QPointF up(kReach, -kReach);
  painter.drawLine(middle - down, middle + down);
  painter.drawLine(middle - up, middle + up);
}

}  // namespace app
