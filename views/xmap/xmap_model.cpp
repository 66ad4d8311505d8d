// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_model.h"

#include "views/xmap/marks.h"
#include "views/xmap/xmap_words.h"

namespace views {

XmapModel::XmapModel(const rules::XmapGrid& grid, const model::Locks& locks, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid), locks_(locks) {}

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
  const int channel = section + 1;
  const bool output = orientation == Qt::Vertical;
  switch (role) {
    case Qt::DisplayRole:
      return QString::fromStdString(output ? grid_.OutputLabel(channel)
                                           : grid_.InputLabel(channel));
    case Qt::AccessibleTextRole: {
      const QString name = Name(channel, orientation);
      const QString lock = output ? LockWords(channel) : QString();
      return lock.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, lock);
    }
    case Qt::ToolTipRole:
      return QString(headerData(section, orientation, Qt::AccessibleTextRole).toString() + u'\n' +
                     (output ? HearsWords(grid_, channel) : HeardWords(grid_, channel)));
    case LockRole: {
      if (!output || !locks_.IsLocked(channel)) return {};
      return static_cast<int>(locks_.LockedOutputs().at(channel));
    }
    default:
      return {};
  }
}

QString XmapModel::Name(int channel, Qt::Orientation orientation) const {
  const bool output = orientation == Qt::Vertical;
  const QString label =
      QString::fromStdString(output ? grid_.OutputLabel(channel) : grid_.InputLabel(channel));
  return (output ? OutputNumber(grid_, channel) : InputNumber(grid_, channel)) +
         QStringLiteral("  ") + label;
}

QString XmapModel::LockWords(int output) const {
  if (!locks_.IsLocked(output)) return {};
  return locks_.IsLockedForPanels(output) ? tr("Output locked, for panels too")
                                          : tr("Output locked");
}

QString XmapModel::Names(const QModelIndex& index) const {
  return Name(Output(index), Qt::Vertical) + QStringLiteral("  <  ") +
         Name(Input(index), Qt::Horizontal);
}

QString XmapModel::Meaning(const QModelIndex& index) const {
  const QString mark = MarkName(static_cast<rules::Mark>(data(index, MarkRole).toInt()));
  const QString lock = LockWords(Output(index));
  return lock.isEmpty() ? mark : QStringLiteral("%1. %2").arg(mark, lock);
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
