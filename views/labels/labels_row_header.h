// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABELS_ROW_HEADER_H_
#define VIEWS_LABELS_LABELS_ROW_HEADER_H_

#include <QHeaderView>

namespace views {

// The narrow header at the left of the grid of labels: a triangle at the current row, a pencil at a
// row with values that are not stored.
class LabelsRowHeader : public QHeaderView {
  Q_OBJECT

 public:
  explicit LabelsRowHeader(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  void setSelectionModel(QItemSelectionModel* selection) override;

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;
};

}  // namespace views

#endif  // VIEWS_LABELS_LABELS_ROW_HEADER_H_
