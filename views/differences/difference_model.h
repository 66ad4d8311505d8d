// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_
#define VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_

#include <QAbstractTableModel>
#include <QString>

#include <functional>
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

  // Makes the texts `before` and `after` of a row.
  using SayValues = std::function<void(ChangeRow* row)>;

  // Replaces all rows and ticks all of them that can be ticked, or none.  Rows may come without
  // `before` and `after` when there is a `sayValues`: it is called the first time that these texts
  // of a row are asked for.
  void SetRows(std::vector<Difference> rows, bool ticked, SayValues sayValues = nullptr);

  // REQUIRES: there is such a row.  `before` and `after` may still be empty: Text() has them.
  const Difference& At(int row) const { return Shown(row).difference; }
  const ChangeRow& Row(int row) const { return At(row).row; }
  QString Text(int row, int column) const;
  bool CanBeTicked(int row) const { return At(row).obstacle.isEmpty(); }
  bool IsTicked(int row) const { return Shown(row).ticked; }
  // Ticks these rows or takes their ticks away, as far as they can have one.
  void SetTicked(const std::vector<int>& rows, bool ticked);
  int TickedCount() const { return tickedCount_; }
  // How many can be.
  int TickableCount() const { return tickableCount_; }

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
  struct ShownRow {
    Difference difference;
    bool ticked;
    bool isSaid;  // it has its texts
  };

  const ChangeRow& RowWithTexts(int row) const;
  const ShownRow& Shown(int row) const { return rows_[static_cast<std::size_t>(row)]; }

  int rowHeight_ = 0;
  QString before_;
  QString after_;
  mutable std::vector<ShownRow> rows_;  // the texts are put in when they are read
  SayValues sayValues_;
  int tickedCount_ = 0;
  int tickableCount_ = 0;
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_DIFFERENCE_MODEL_H_
