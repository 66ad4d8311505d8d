// SPDX-License-Identifier: MIT

#include "views/levels/level_slider.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "views/rules/levels.h"

namespace views {
namespace {

constexpr int kPageStep = 3;  // dB

// The marks beside the slider, from the middle of the widget outwards, in pixels.
constexpr double kTickInner = 9;
constexpr double kTickOuter = 14;
constexpr double kUnityOuter = 18;

constexpr float kFaint = 0.5F;      // of the ink
constexpr float kHatching = 0.25F;  // of the ink
constexpr int kBesideHatching = 4;  // a gap to the neighbour's

// A slider as a screen reader tells of it: in dB, louder upwards.
class AccessibleLevel : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleLevel(LevelSlider* slider) : QAccessibleWidget(slider, QAccessible::Slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) return QString::fromStdString(rules::LevelText(Value()));
    return QAccessibleWidget::text(kind);
  }

  QVariant currentValue() const override { return rules::DecibelsOf(Value()); }
  QVariant minimumValue() const override { return rules::DecibelsOf(Slider()->maximum()); }
  QVariant maximumValue() const override { return rules::DecibelsOf(Slider()->minimum()); }
  QVariant minimumStepSize() const override { return Slider()->singleStep(); }
  void setCurrentValue(const QVariant& decibels) override {
    Slider()->setValue(rules::kUnityValue - decibels.toInt());
  }

 private:
  LevelSlider* Slider() const { return static_cast<LevelSlider*>(object()); }
  int Value() const { return Slider()->value(); }
};

QAccessibleInterface* MakeAccessible(const QString& className, QObject* object) {
  if (className != QLatin1String("views::LevelSlider") || object == nullptr) return nullptr;
  return new AccessibleLevel(static_cast<LevelSlider*>(object));
}

// One pixel inside the edges, the corners left out: so small it looks as a rounded one does that is
// smoothed, which would be a fifth of all that a step of a drag costs.
void PaintRoundedFrame(QPainter& painter, const QRectF& around, const QColor& ink) {
  const double width = around.width() - 2;
  const double height = around.height() - 2;
  painter.fillRect(QRectF(around.left() + 1, around.top(), width, 1), ink);
  painter.fillRect(QRectF(around.left() + 1, around.bottom() - 1, width, 1), ink);
  painter.fillRect(QRectF(around.left(), around.top() + 1, 1, height), ink);
  painter.fillRect(QRectF(around.right() - 1, around.top() + 1, 1, height), ink);
}

}  // namespace

LevelSlider::LevelSlider(QWidget* parent) : QSlider(Qt::Vertical, parent) {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  setRange(0, rules::kLargestSliderValue);
  setSingleStep(1);
  setPageStep(kPageStep);
  // Value 0 is at the top, and the keys that go up make the value smaller.
  setInvertedAppearance(true);
  setInvertedControls(true);
  setFocusPolicy(Qt::StrongFocus);
}

void LevelSlider::SetReported(bool reported) {
  if (reported == isReported_) return;
  isReported_ = reported;
  update();
}

// The style is told that the slider is not inverted, so that it fills it from the bottom to the
// handle: the fuller, the louder.
QStyleOptionSlider LevelSlider::OptionAt(int value) const {
  QStyleOptionSlider option;
  initStyleOption(&option);
  option.upsideDown = true;
  option.sliderPosition = minimum() + maximum() - value;
  option.sliderValue = option.sliderPosition;
  option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
  if (isSliderDown()) {
    option.activeSubControls = QStyle::SC_SliderHandle;
    option.state |= QStyle::State_Sunken;
  }
  return option;
}

QRectF LevelSlider::HandleAt(int value) const {
  const QStyleOptionSlider option = OptionAt(value);
  return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

void LevelSlider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!isReported_) PaintHatching(painter);
  PaintMarks(painter);
  const QStyleOptionSlider option = OptionAt(sliderPosition());
  style()->drawComplexControl(QStyle::CC_Slider, &option, &painter, this);
  PaintEdges(painter);
}

void LevelSlider::PaintHatching(QPainter& painter) const {
  QColor ink = palette().color(QPalette::WindowText);
  ink.setAlphaF(kHatching);
  painter.fillRect(rect().adjusted(kBesideHatching, 0, -kBesideHatching, 0),
                   QBrush(ink, Qt::BDiagPattern));
}

void LevelSlider::PaintMarks(QPainter& painter) const {
  QColor ink = palette().color(QPalette::WindowText);
  for (int level = 0; level >= -60; level -= 20) {
    const bool unity = level == 0;
    ink.setAlphaF(unity ? 1 : kFaint);
    const double thickness = unity ? 2 : 1;
    const double outer = unity ? kUnityOuter : kTickOuter;
    const double middle = width() / 2.0;
    const double top = HandleY(rules::kUnityValue - level) - thickness / 2;
    painter.fillRect(QRectF(middle - outer, top, outer - kTickInner, thickness), ink);
    painter.fillRect(QRectF(middle + kTickInner, top, outer - kTickInner, thickness), ink);
  }
}

// Not every style shows the handle in every palette, nor which slider has the focus.
void LevelSlider::PaintEdges(QPainter& painter) const {
  QColor ink = palette().color(QPalette::WindowText);
  const QRectF handle = HandleAt(sliderPosition());
  const double y = handle.center().y();
  painter.fillRect(QRectF(handle.left() + 3, y - 0.5, handle.width() - 6, 1), ink);
  ink.setAlphaF(kFaint);
  PaintRoundedFrame(painter, handle, ink);
  if (!hasFocus()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRoundedRect(QRectF(rect()).adjusted(4, 1, -4, -1), 4, 4);
}

void LevelSlider::mousePressEvent(QMouseEvent* event) {
  QSlider::mousePressEvent(event);
  if (event->button() == Qt::LeftButton) mouseIsDown_ = true;
}

void LevelSlider::mouseReleaseEvent(QMouseEvent* event) {
  QSlider::mouseReleaseEvent(event);
  if (event->button() != Qt::LeftButton) return;
  mouseIsDown_ = false;
  Q_EMIT Released();
}

void LevelSlider::keyPressEvent(QKeyEvent* event) {
  const bool jumps = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  if (jumps || event->modifiers().testFlag(Qt::ControlModifier)) {
    event->ignore();
    return;
  }
  const QString text = event->text();
  if (text.size() == 1 && (text[0].isDigit() || text[0] == u'-' || text[0] == u'+')) {
    event->accept();
    Q_EMIT LevelTyped(text);
    return;
  }
  QSlider::keyPressEvent(event);
  if (event->isAccepted()) keyIsDown_ = true;
}

void LevelSlider::keyReleaseEvent(QKeyEvent* event) {
  QSlider::keyReleaseEvent(event);
  if (event->isAutoRepeat()) return;
  keyIsDown_ = false;
  Q_EMIT Released();
}

void LevelSlider::focusInEvent(QFocusEvent* event) {
  QSlider::focusInEvent(event);
  if (event->reason() != Qt::ActiveWindowFocusReason) Q_EMIT Entered();
}

// The release of what was pressed will go to another widget.
void LevelSlider::focusOutEvent(QFocusEvent* event) {
  QSlider::focusOutEvent(event);
  mouseIsDown_ = false;
  keyIsDown_ = false;
  setSliderDown(false);
  Q_EMIT Released();
}

void LevelSlider::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace views
