// SPDX-License-Identifier: MIT

#include "views/differences/shown_differences.h"

#include <QLocale>

#include "views/differences/difference_model.h"

namespace views {

ShownDifferences::ShownDifferences(DifferenceModel& all)
    : all_(all), order_(QLocale(QLocale::English)) {
  order_.setNumericMode(true);
  order_.setCaseSensitivity(Qt::CaseInsensitive);
  setSourceModel(&all);
}

void ShownDifferences::SetFilter(const RowFilter& filter) {
  filter_ = filter;
  invalidateFilter();
}

std::vector<int> ShownDifferences::Rows() const {
  std::vector<int> rows;
  for (int row = 0; row < rowCount(); ++row) rows.push_back(mapToSource(index(row, 0)).row());
  return rows;
}

bool ShownDifferences::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
  const Difference& difference = all_.At(row);
  return filter_.Accepts(difference.first, difference.last, DifferenceModel::kColumnCount,
                         [this, row](int column) { return all_.Text(row, column); });
}

bool ShownDifferences::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  switch (left.column()) {
    case DifferenceModel::kTick:
      return !all_.IsTicked(left.row()) && all_.IsTicked(right.row());
    case DifferenceModel::kWhere:
      return all_.Row(left.row()).station < all_.Row(right.row()).station;
    default:
      // Without keys: long texts differ at their beginning, a key is made of all of one.
      return order_.compare(all_.Text(left.row(), left.column()),
                            all_.Text(right.row(), right.column())) < 0;
  }
}

}  // namespace views
