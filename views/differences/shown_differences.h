// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_
#define VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_

#include <QCollator>
#include <QSortFilterProxyModel>
#include <QStringList>

#include <vector>

namespace views {

class DifferenceModel;

// The differences in which some words stand, in the order that the operator chose: without a choice
// in that in which they were given, by station where that decides, and by numbers as numbers
// ("Button 3" before "Button 12").
class ShownDifferences : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  // `all` must outlive the object.
  explicit ShownDifferences(DifferenceModel& all);

  // Shows the rows with all of the words of `text`; all rows without one.
  void SetFilter(const QString& text);

  // The shown rows, by their number among all.
  std::vector<int> Rows() const;

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

 private:
  DifferenceModel& all_;
  QStringList words_;
  QCollator order_;
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_SHOWN_DIFFERENCES_H_
