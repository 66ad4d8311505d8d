// SPDX-License-Identifier: MIT

#ifndef VIEWS_XMAP_XMAP_MODEL_H_
#define VIEWS_XMAP_XMAP_MODEL_H_

#include <QAbstractTableModel>

#include "model/locks.h"
#include "views/rules/xmap_grid.h"

namespace views {

// The body of the crosspoint map as rows, one per output, and columns, one per input.  Only here do
// 0-based indexes become 1-based channels.
class XmapModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Role {
    MarkRole = Qt::UserRole,  // int, 0 to 4
    LockRole,                 // of the header of a locked output: int, a model::Locks::Against
  };

  // Both must outlive the model; the grid keeps its size.
  XmapModel(const rules::XmapGrid& grid, const model::Locks& locks, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;

  // MarkRole; the tip as ToolTipRole; the cell in one sentence as AccessibleTextRole.
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  // The labels; what a screen reader says of a channel, its lock included; a tip that says what the
  // output hears as well, or where the input is heard; and what is locked.
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

  // The channels of an index, from 1; 0 of an invalid one.
  static int Output(const QModelIndex& index) { return index.isValid() ? index.row() + 1 : 0; }
  static int Input(const QModelIndex& index) { return index.isValid() ? index.column() + 1 : 0; }

  // The index of a crosspoint; an invalid one when there is no such crosspoint.
  QModelIndex CellOf(int output, int input) const { return index(output - 1, input - 1); }

  // Both names of a crosspoint, "Out 02  Sta. 002  <  In 04  Inpt 004", and what it shows,
  // "Crosspoint".  REQUIRES: a valid index
  QString Names(const QModelIndex& index) const;
  QString Meaning(const QModelIndex& index) const;

  // Call after the marks of these outputs have changed: one dataChanged for each run of rows.
  void OutputsChanged(const rules::ChannelSet& outputs);

  // Call after the labels, or the locks of the outputs, have changed.
  void LabelsChanged(Qt::Orientation orientation);

 private:
  // "Out 02  Sta. 002"
  QString Name(int channel, Qt::Orientation orientation) const;
  // How an output is locked, in words; empty when it is not.
  QString LockWords(int output) const;

  const rules::XmapGrid& grid_;
  const model::Locks& locks_;
};

}  // namespace views

#endif  // VIEWS_XMAP_XMAP_MODEL_H_
