// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_CORNER_H_
#define VIEWS_XMAP_XMAP_CORNER_H_

#include <QWidget>

#include "views/xmap/xmap_look.h"

namespace views {

// The four header cells in the corner of the crosspoint map.  The first shows the crosspoint
// mark; its tip explains all marks.
class XmapCorner : public QWidget {
  Q_OBJECT

 public:
  explicit XmapCorner(QWidget* parent = nullptr);

  void SetMetrics(const XmapMetrics& metrics);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  XmapMetrics metrics_;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_CORNER_H_
