// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_LEGEND_H_
#define VIEWS_XMAP_XMAP_LEGEND_H_

#include <QWidget>

namespace views {

// One line with the marks of the crosspoint map and their names, for a status bar.
class XmapLegend : public QWidget {
  Q_OBJECT

 public:
  explicit XmapLegend(QWidget* parent = nullptr);

  // The same as the text of a tool tip: a line per mark, pictures included.
  static QString Tip(const QPalette& palette);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_LEGEND_H_
