// SPDX-License-Identifier: MIT

#ifndef APP_JOURNAL_CHANGES_MODEL_H_
#define APP_JOURNAL_CHANGES_MODEL_H_

#include <QAbstractTableModel>
#include <QString>
#include <QTimer>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/journal/change_place.h"
#include "stations/journal/act.h"
#include "stations/journal/contents.h"

namespace app {

// What was changed, one row for each thing that got another value, the newest first.
//
// A journal of megabytes is read in pieces, so that its newest rows are there at once.
class ChangesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kTime, kWhere, kWhat, kBefore, kAfter, kFrom, kColumnCount };
  // Of a row: the number of its station, or output.
  static constexpr int kStationRole = Qt::UserRole;

  explicit ChangesModel(QObject* parent = nullptr);

  // Has the acts of a journal in the place of what it had, and newer ones that are not in it, as
  // stations::WriteAct() writes them, the oldest first.
  void Read(std::unique_ptr<const stations::JournalContents> journal,
            std::deque<std::string> waiting);
  // Has the acts of one of its runs.
  void ReadRun(std::unique_ptr<const stations::JournalContents> journal, std::int64_t run);

  // Adds the newest act.
  void Add(const stations::Act& act);

  // Whether all of it was read.
  bool IsRead() const { return next_ == 0; }

  // Where the views show it.
  const ViewPlace& Place(int row) const { return rows_[static_cast<std::size_t>(row)].place; }

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 Q_SIGNALS:
  // IsRead() is true now.
  void ReadToEnd();

 private:
  struct Row {
    std::array<QString, kColumnCount> cells;
    ViewPlace place;
  };

  static std::vector<Row> RowsOf(const stations::Act& act);
  void Begin(std::unique_ptr<const stations::JournalContents> journal,
             std::deque<std::string> waiting, std::int64_t run);
  void ReadPiece();

  std::unique_ptr<const stations::JournalContents> journal_;
  std::deque<std::string> waiting_;
  std::vector<std::string_view> acts_;  // those to be read, the oldest first
  std::size_t next_ = 0;                // so many of them are not read yet
  QTimer reading_;
  std::deque<Row> rows_;
};

}  // namespace app

#endif  // APP_JOURNAL_CHANGES_MODEL_H_
