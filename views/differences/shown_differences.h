// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_
#define VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_

#include <QCollator>
#include <QSortFilterProxyModel>

#include <vector>

#include "views/differences/row_filter.h"

namespace views {

class DifferenceModel;

// The differences that a filter lets through, in the order that the operator chose: without a
// choice in that in which they were given, by station where that decides, and by numbers as numbers
// ("Button 3" before "Button 12").
class ShownDifferences : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  // `all` must outlive the object.
  explicit ShownDifferences(DifferenceModel& all);

  // Shows the rows that it lets through.
  void SetFilter(const RowFilter& filter);

  // The shown rows, by their number among all.
  std::vector<int> Rows() const;

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  DifferenceModel& all_;
  RowFilter filter_;
  QCollator order_;
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_
