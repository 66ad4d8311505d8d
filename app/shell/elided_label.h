// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_ELIDED_LABEL_H_
#define APP_SHELL_ELIDED_LABEL_H_

#include <QLabel>

namespace app {

// A line of text that gives way when there is no room, instead of asking for more: what does not
// fit is replaced by "…", at the end unless `mode` says where else.  text() stays whole.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr, Qt::TextElideMode mode = Qt::ElideRight)
      : QLabel(parent), mode_(mode) {}

  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Qt::TextElideMode mode_;
};

}  // namespace app

#endif  // APP_SHELL_ELIDED_LABEL_H_
