// SPDX-License-Identifier: MIT

#ifndef VIEWS_LEVELS_LEVEL_SLIDER_H_
#define VIEWS_LEVELS_LEVEL_SLIDER_H_

#include <QPainter>
#include <QSlider>
#include <QStyleOptionSlider>

namespace views {

// A slider for the gain of one input, loud at the top.  Every change acts on the switcher at once,
// so it must not be changed by accident: the wheel scrolls the sliders instead, and Home and End,
// which would jump to full gain or none, do nothing.
class LevelSlider : public QSlider {
  Q_OBJECT

 public:
  explicit LevelSlider(QWidget* parent);

  // Whether the switcher has reported a gain; until then the slider's ground is hatched.
  void SetReported(bool reported);

  // Whether the operator holds it: from the press of a mouse button or key on it to the release.
  bool IsHeld() const { return mouseIsDown_ || keyIsDown_; }

  // The middle of the handle while the slider stands at `value`, in pixels from the widget's top.
  double HandleY(int value) const { return HandleAt(value).center().y(); }

 Q_SIGNALS:
  // A mouse button or key was released on it, or it lost the focus.
  void Released();
  // The focus came to it, from another widget of the window.
  void Entered();
  // A digit or a sign was typed: another level is to be entered, which begins with it.
  void LevelTyped(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  QStyleOptionSlider OptionAt(int value) const;
  QRectF HandleAt(int value) const;
  void PaintHatching(QPainter& painter) const;
  void PaintMarks(QPainter& painter) const;
  void PaintEdges(QPainter& painter) const;

  bool isReported_ = true;
  bool mouseIsDown_ = false;
  bool keyIsDown_ = false;
};

}  // namespace views

#endif  // VIEWS_LEVELS_LEVEL_SLIDER_H_
