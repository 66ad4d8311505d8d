// SPDX-License-Identifier: MIT

#include "app/journal/changes_model.h"

#include <QDateTime>
#include <algorithm>
#include <iterator>
#include <utility>

#include "views/change_words.h"

namespace app {
namespace {

// So many acts are read without a pause: a picture of a screen that shows 60 in a second.
constexpr int kActsAtOnce = 100;

QString DateAndTime(const std::string& time) {
  const QDateTime at = QDateTime::fromString(QString::fromStdString(time), Qt::ISODate);
  return at.isValid() ? at.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                      : QString::fromStdString(time);
}

}  // namespace

ChangesModel::ChangesModel(QObject* parent) : QAbstractTableModel(parent) {
  connect(&reading_, &QTimer::timeout, this, &ChangesModel::ReadPiece);
}

void ChangesModel::Read(std::unique_ptr<const stations::JournalContents> journal,
                        std::deque<std::string> waiting) {
  Begin(std::move(journal), std::move(waiting), 0);
}

void ChangesModel::ReadRun(std::unique_ptr<const stations::JournalContents> journal,
                           std::int64_t run) {
  Begin(std::move(journal), {}, run);
}

// Of all runs for 0.
void ChangesModel::Begin(std::unique_ptr<const stations::JournalContents> journal,
                         std::deque<std::string> waiting, std::int64_t run) {
  beginResetModel();
  rows_.clear();
  journal_ = std::move(journal);
  waiting_ = std::move(waiting);
  acts_.clear();
  for (const stations::JournalLine& line : journal_->Lines()) {
    const bool isMeant = run == 0 || line.run == run;
    if (isMeant && line.kind == stations::JournalLine::Kind::Act) acts_.push_back(line.content);
  }
  acts_.insert(acts_.end(), waiting_.begin(), waiting_.end());
  next_ = acts_.size();
  endResetModel();
  ReadPiece();
}

void ChangesModel::ReadPiece() {
  std::vector<Row> read;
  for (int acts = 0; next_ > 0 && acts < kActsAtOnce; ++acts) {
    stations::Act act;
    if (!stations::ReadAct(acts_[--next_], &act)) continue;
    std::ranges::move(RowsOf(act), std::back_inserter(read));
  }
  if (!read.empty()) {
    const int end = rowCount();
    beginInsertRows({}, end, end + static_cast<int>(read.size()) - 1);
    std::ranges::move(read, std::back_inserter(rows_));
    endInsertRows();
  }
  if (next_ > 0) {
    reading_.start(0);
  } else {
    reading_.stop();
    acts_.clear();
    waiting_.clear();
    journal_.reset();
    Q_EMIT ReadToEnd();
  }
}

void ChangesModel::Add(const stations::Act& act) {
  std::vector<Row> rows = RowsOf(act);
  if (rows.empty()) return;
  beginInsertRows({}, 0, static_cast<int>(rows.size()) - 1);
  rows_.insert(rows_.begin(), std::make_move_iterator(rows.begin()),
               std::make_move_iterator(rows.end()));
  endInsertRows();
}

std::vector<ChangesModel::Row> ChangesModel::RowsOf(const stations::Act& act) {
  const QString time = DateAndTime(act.time);
  const QString from = views::OriginWords(act.origin);
  std::vector<Row> rows;
  for (const stations::Change& change : act.changes) {
    for (views::ChangeRow& row : views::ChangeRows({&change, 1})) {
      rows.push_back({.cells = {time, std::move(row.where), std::move(row.what),
                                std::move(row.before), std::move(row.after), from},
                      .place = PlaceOf(change, row.fields.front())});
    }
  }
  return rows;
}

int ChangesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ChangesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumnCount;
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  if (role == kStationRole) return row.place.station;
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return row.cells[static_cast<std::size_t>(index.column())];
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kTime:
      return tr("Time");
    case kWhere:
      return tr("Station or output");
    case kWhat:
      return tr("What");
    case kBefore:
      return tr("Before");
    case kAfter:
      return tr("After");
    case kFrom:
      return tr("From");
    default:
      return {};
  }
}

}  // namespace app
