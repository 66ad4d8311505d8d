// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_LINK_WARNING_H_
#define VIEWS_WIDGETS_LINK_WARNING_H_

#include <QLabel>

namespace views {

// A line that warns of a link that is down, in the colours which always tell of one.
class LinkWarning : public QLabel {
  Q_OBJECT

 public:
  explicit LinkWarning(QWidget* parent = nullptr);
};

}  // namespace views

#endif  // VIEWS_WIDGETS_LINK_WARNING_H_
