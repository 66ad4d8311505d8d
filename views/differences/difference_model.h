// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_
#define VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_

#include <QAbstractTableModel>
#include <QString>

#include <vector>

#include "views/differences/difference.h"

namespace views {

// Differences in the order in which they were given, and which of them are ticked.
class DifferenceModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kTick, kWhere, kWhat, kBefore, kAfter, kColumnCount };

  using QAbstractTableModel::QAbstractTableModel;

  // What the two last columns are called.
  void SetHeadings(const QString& before, const QString& after);

  // How high a row is shown, in pixels, so that the boxes stand apart.
  void SetRowHeight(int height) { rowHeight_ = height; }

  // Replaces all rows; what can be ticked is, or is not.
  void SetRows(std::vector<Difference> rows, bool ticked);

  // REQUIRES: there is such a row
  const ChangeRow& Row(int row) const { return At(row).difference.row; }
  bool CanBeTicked(int row) const { return At(row).difference.obstacle.isEmpty(); }
  bool IsTicked(int row) const { return At(row).ticked; }
  // Ticks these rows or takes their ticks away, as far as they can have one.
  void SetTicked(const std::vector<int>& rows, bool ticked);
  int TickedCount() const { return tickedCount_; }

  // Whether all of these words stand in the row, in whatever column and case.
  bool Has(int row, const QStringList& words) const;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 Q_SIGNALS:
  void TicksChanged();

 private:
  struct Shown {
    Difference difference;
    QString searched;  // all its texts in lower case
    bool ticked;
  };

  const Shown& At(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  static QString Text(const ChangeRow& row, int column);

  int rowHeight_ = 0;
  QString before_;
  QString after_;
  std::vector<Shown> rows_;
  int tickedCount_ = 0;
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_
