// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_LEVEL_SCALE_H_
#define VIEWS_LEVELS_LEVEL_SCALE_H_

#include <QWidget>

#include "views/levels/level_slider.h"

namespace views {

// The scale at the left of a band of sliders: the dB that their marks stand for.
class LevelScale : public QWidget {
  Q_OBJECT

 public:
  // `slider` is one of the band; the scale's heights are its.  It must outlive the scale.
  LevelScale(const LevelSlider& slider, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const LevelSlider& slider_;
};

}  // namespace views

#endif  // VIEWS_LEVELS_LEVEL_SCALE_H_
