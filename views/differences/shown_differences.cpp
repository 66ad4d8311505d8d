// SPDX-License-Identifier: MIT

#include "views/differences/shown_differences.h"

#include <QLocale>

#include <utility>

#include "views/differences/difference_model.h"

namespace views {

ShownDifferences::ShownDifferences(DifferenceModel& all)
    : all_(all), order_(QLocale(QLocale::English)) {
  order_.setNumericMode(true);
  order_.setCaseSensitivity(Qt::CaseInsensitive);
  connect(&all, &DifferenceModel::modelAboutToBeReset, this, [this] { keyColumn_ = -1; });
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
      return KeyOf(left).compare(KeyOf(right)) < 0;
  }
}

const QCollatorSortKey& ShownDifferences::KeyOf(const QModelIndex& index) const {
  if (std::exchange(keyColumn_, index.column()) != index.column()) {
    keys_.assign(static_cast<std::size_t>(all_.rowCount()), std::nullopt);
  }
  std::optional<QCollatorSortKey>& key = keys_[static_cast<std::size_t>(index.row())];
  if (!key) key = order_.sortKey(all_.Text(index.row(), index.column()));
  return *key;
}

}  // namespace views
