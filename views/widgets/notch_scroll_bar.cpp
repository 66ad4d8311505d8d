// SPDX-License-Identifier: MIT

#include "views/widgets/notch_scroll_bar.h"

#include <QWheelEvent>

namespace views {

NotchScrollBar::NotchScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {}

void NotchScrollBar::Turn(int angle) {
  // The wheel turned back acts at once.
  if ((angle > 0) != (turned_ > 0)) turned_ = 0;
  turned_ += angle;
  const int notches = turned_ / QWheelEvent::DefaultDeltasPerStep;
  turned_ -= notches * QWheelEvent::DefaultDeltasPerStep;
  setValue(value() - notches * singleStep());
}

void NotchScrollBar::wheelEvent(QWheelEvent* event) {
  Turn(event->angleDelta().y());
  event->accept();
}

}  // namespace views
