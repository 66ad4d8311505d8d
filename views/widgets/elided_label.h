// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_ELIDED_LABEL_H_
#define VIEWS_WIDGETS_ELIDED_LABEL_H_

#include <QLabel>

namespace views {

// A line of text that can be narrower than its text: what does not fit is replaced by "…", at the
// end unless `mode` says where else.  text() stays whole.
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

}  // namespace views

#endif  // VIEWS_WIDGETS_ELIDED_LABEL_H_
