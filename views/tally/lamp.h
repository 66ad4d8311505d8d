// SPDX-License-Identifier: MIT

#ifndef VIEWS_TALLY_LAMP_H_
#define VIEWS_TALLY_LAMP_H_

#include <QColor>
#include <QWidget>

namespace views {

// The fixed colours of a lamp, and what is drawn on them.
inline constexpr QColor kRespondingColour{0x00, 0xFF, 0x00};
inline constexpr QColor kRespondingInk{0x00, 0x00, 0x00};
inline constexpr QColor kSilentColour{0xC0, 0x00, 0x00};
inline constexpr QColor kSilentInk{0xFF, 0xFF, 0xFF};

// A round lamp that is green with a dot, or dark red with a slash, so that its state can be read
// without the colour.  It begins dark red.
class Lamp : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QColor color READ Colour)

 public:
  explicit Lamp(QWidget* parent);

  void SetOn(bool on);
  bool IsOn() const { return isOn_; }
  QColor Colour() const { return isOn_ ? kRespondingColour : kSilentColour; }

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isOn_ = false;
};

}  // namespace views

#endif  // VIEWS_TALLY_LAMP_H_
