// SPDX-License-Identifier: MIT

#ifndef APP_ELIDED_LABEL_H_
#define APP_ELIDED_LABEL_H_

#include <QLabel>

namespace app {

// A line of text that gives way when there is no room, instead of asking for more: what does not
// fit is replaced by "…".  text() stays whole.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr) : QLabel(parent) {}

  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace app

#endif  // APP_ELIDED_LABEL_H_
