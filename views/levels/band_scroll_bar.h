// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_BAND_SCROLL_BAR_H_
#define VIEWS_LEVELS_BAND_SCROLL_BAR_H_

#include <QScrollBar>

namespace views {

// A vertical scroll bar whose steps are so large that a notch of the wheel is one of them.
class BandScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  explicit BandScrollBar(QWidget* parent);

  // Scrolls by as many steps as the wheel was turned, one for 120 of `angle` (away from the
  // operator is positive, and scrolls up); what a touch pad turns bit by bit adds up.
  void Turn(int angle);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  int turned_ = 0;  // and not scrolled yet
};

}  // namespace views

#endif  // VIEWS_LEVELS_BAND_SCROLL_BAR_H_
