// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_model.h"

#include "views/xmap/marks.h"

namespace views {

XmapModel::XmapModel(const rules::XmapGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid) {}

int XmapModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.ChannelCount();
}

int XmapModel::columnCount(const QModelIndex& parent) const { return rowCount(parent); }

QVariant XmapModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case MarkRole:
      return static_cast<int>(grid_.MarkAt(Output(index) + 1, Input(index) + 1));
    case Qt::ToolTipRole:
      return QString(Names(index) + u'\n' + Meaning(index));
    case Qt::AccessibleTextRole:
      return QString(Names(index) + QStringLiteral(": ") + Meaning(index));
    default:
      return {};
  }
}

QVariant XmapModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (section < 0 || section >= grid_.ChannelCount()) return {};
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole && role != Qt::ToolTipRole) {
    return {};
  }
  const int channel = section + 1;
  const bool output = orientation == Qt::Vertical;
  const QString label =
      QString::fromStdString(output ? grid_.OutputLabel(channel) : grid_.InputLabel(channel));
  if (role == Qt::DisplayRole) return label;
  const QString number = QString::fromStdString(grid_.Number(channel));
  return (output ? tr("Out %1  %2") : tr("In %1  %2")).arg(number, label);
}

QString XmapModel::Names(const QModelIndex& index) const {
  return headerData(index.row(), Qt::Vertical, Qt::ToolTipRole).toString() +
         QStringLiteral("  <  ") +
         headerData(index.column(), Qt::Horizontal, Qt::ToolTipRole).toString();
}

QString XmapModel::Meaning(const QModelIndex& index) const {
  return MarkName(static_cast<rules::Mark>(data(index, MarkRole).toInt()));
}

void XmapModel::OutputsChanged(const rules::ChannelSet& outputs) {
  const int count = grid_.ChannelCount();
  for (int output = 1; output <= count; ++output) {
    if (!outputs.test(static_cast<std::size_t>(output))) continue;
    int last = output;
    while (last < count && outputs.test(static_cast<std::size_t>(last) + 1)) ++last;
    Q_EMIT dataChanged(CellOf(output, 1), CellOf(last, count),
                       {MarkRole, Qt::ToolTipRole, Qt::AccessibleTextRole});
    output = last;
  }
}

void XmapModel::LabelsChanged(Qt::Orientation orientation) {
  if (grid_.ChannelCount() == 0) return;
  Q_EMIT headerDataChanged(orientation, 0, grid_.ChannelCount() - 1);
}

}  // namespace views
