// SPDX-License-Identifier: MIT

#include "views/differences/difference_model.h"

#include <QSize>

#include <algorithm>
#include <utility>

namespace views {

void DifferenceModel::SetHeadings(const QString& before, const QString& after) {
  before_ = before;
  after_ = after;
  Q_EMIT headerDataChanged(Qt::Horizontal, kBefore, kAfter);
}

void DifferenceModel::SetRows(std::vector<Difference> rows, bool ticked, SayValues sayValues) {
  beginResetModel();
  sayValues_ = std::move(sayValues);
  rows_.clear();
  rows_.reserve(rows.size());
  tickableCount_ = 0;
  for (Difference& difference : rows) {
    const bool canBeTicked = difference.obstacle.isEmpty();
    tickableCount_ += canBeTicked ? 1 : 0;
    rows_.push_back({.difference = std::move(difference),
                     .ticked = ticked && canBeTicked,
                     .isSaid = sayValues_ == nullptr});
  }
  tickedCount_ = ticked ? tickableCount_ : 0;
  endResetModel();
  Q_EMIT TicksChanged();
}

void DifferenceModel::SetTicked(const std::vector<int>& rows, bool ticked) {
  int first = rowCount();
  int last = -1;
  for (const int row : rows) {
    if (!CanBeTicked(row) || IsTicked(row) == ticked) continue;
    rows_[static_cast<std::size_t>(row)].ticked = ticked;
    tickedCount_ += ticked ? 1 : -1;
    first = std::min(first, row);
    last = std::max(last, row);
  }
  if (last < 0) return;
  Q_EMIT dataChanged(index(first, kTick), index(last, kTick), {Qt::CheckStateRole});
  Q_EMIT TicksChanged();
}

int DifferenceModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DifferenceModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

Qt::ItemFlags DifferenceModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (index.column() == kTick && CanBeTicked(index.row())) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

const ChangeRow& DifferenceModel::RowWithTexts(int row) const {
  ShownRow& shown = rows_[static_cast<std::size_t>(row)];
  if (!std::exchange(shown.isSaid, true)) sayValues_(&shown.difference.row);
  return shown.difference.row;
}

QString DifferenceModel::Text(int row, int column) const {
  switch (column) {
    case kWhere:
      return Row(row).where;
    case kWhat:
      return Row(row).what;
    case kBefore:
      return RowWithTexts(row).before;
    case kAfter:
      return RowWithTexts(row).after;
    default:
      return {};
  }
}

QVariant DifferenceModel::data(const QModelIndex& index, int role) const {
  const Difference& difference = At(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return Text(index.row(), index.column());
    case Qt::CheckStateRole:
      if (index.column() != kTick || !CanBeTicked(index.row())) return {};
      return QVariant::fromValue(IsTicked(index.row()) ? Qt::Checked : Qt::Unchecked);
    case Qt::ToolTipRole:
      // A long value is cut by its column.
      return CanBeTicked(index.row()) ? Text(index.row(), index.column()) : difference.obstacle;
    case Qt::SizeHintRole:
      // Of one column; the width of that is the operator's.
      return index.column() == kWhere ? QVariant(QSize(0, rowHeight_)) : QVariant();
    case Qt::AccessibleTextRole:
      if (index.column() != kTick) return {};
      return CanBeTicked(index.row()) ? difference.row.what : difference.obstacle;
    default:
      return {};
  }
}

bool DifferenceModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kTick || !CanBeTicked(index.row())) {
    return false;
  }
  SetTicked({index.row()}, value.toInt() == Qt::Checked);
  return true;
}

QVariant DifferenceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kWhere:
      return tr("Station or output");
    case kWhat:
      return tr("What");
    case kBefore:
      return before_;
    case kAfter:
      return after_;
    default:
      return {};
  }
}

}  // namespace views
