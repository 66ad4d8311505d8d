// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_model.h"

#include "views/xmap/marks.h"
#include "views/xmap/xmap_words.h"

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
  if (role == Qt::ToolTipRole) {
    return QString(Name(orientation, channel) + u'\n' +
                   (output ? HearsWords(grid_, channel) : HeardWords(grid_, channel)));
  }
  return role == Qt::DisplayRole ? Label(orientation, channel) : Name(orientation, channel);
}

QString XmapModel::Label(Qt::Orientation side, int channel) const {
  return QString::fromStdString(side == Qt::Vertical ? grid_.OutputLabel(channel)
                                                     : grid_.InputLabel(channel));
}

QString XmapModel::Name(Qt::Orientation side, int channel) const {
  return (side == Qt::Vertical ? OutputNumber(grid_, channel) : InputNumber(grid_, channel)) +
         QStringLiteral("  ") + Label(side, channel);
}

QString XmapModel::Names(const QModelIndex& index) const {
  return Name(Qt::Vertical, Output(index)) + QStringLiteral("  <  ") +
         Name(Qt::Horizontal, Input(index));
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
