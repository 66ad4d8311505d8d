// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_NOTCH_SCROLL_BAR_H_
#define VIEWS_WIDGETS_NOTCH_SCROLL_BAR_H_

#include <QScrollBar>

namespace views {

// A vertical scroll bar with steps so large that each takes a whole notch of the wheel.
class NotchScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit NotchScrollBar(QWidget* parent);

  // Scrolls a step for each notch, 120 of `angle`, that the wheel was turned; positive is away
  // from the operator, and scrolls up.  The small turns of a touch pad add up.
  void Turn(int angle);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  int turned_ = 0;  // since the last step
};

}  // namespace views

#endif  // VIEWS_WIDGETS_NOTCH_SCROLL_BAR_H_
