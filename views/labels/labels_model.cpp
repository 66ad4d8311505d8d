// SPDX-License-Identifier: MIT

#include "views/labels/labels_model.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>
#include <numeric>
#include <utility>

#include "views/rules/label_headings.h"
#include "views/widgets/plain_tip.h"

namespace views {
namespace {

using stations::LabelColumn;
using stations::LabelRecord;

constexpr int kTipStations = 8;  // that a tip names
constexpr int kColumns = stations::kLabelColumnCount;

const std::string& KeyOf(const LabelRecord& record) {
  return record.At(LabelColumn::Station).orderKey;
}

bool SameValues(const LabelRecord& a, const LabelRecord& b) {
  for (std::size_t i = 0; i < a.fields.size(); ++i) {
    if (a.fields[i].isReadable != b.fields[i].isReadable ||
        !(a.fields[i].value == b.fields[i].value)) {
      return false;
    }
  }
  return true;
}

// A label as it is sent, filled up with spaces: those at its end do not count.
std::string WithoutSpaces(std::string label) {
  label.erase(label.find_last_not_of(' ') + 1);
  return label;
}

// The desktop's fixed font, in the size of the other text.
QFont LabelFont() {
  QFont font = QGuiApplication::font();
  font.setFamily(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

}  // namespace

LabelsModel::LabelsModel(QObject* parent) : QAbstractTableModel(parent), labelFont_(LabelFont()) {}

int LabelsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int LabelsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

Qt::ItemFlags LabelsModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const LabelColumn column = Column(index);
  const bool isReadable = rows_[static_cast<std::size_t>(index.row())].At(column).isReadable;
  const bool editable = isReadable && column != LabelColumn::Station;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren |
         (editable ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

const jet::Value& LabelsModel::ShownValue(int row, LabelColumn column) const {
  const LabelRecord& record = rows_[static_cast<std::size_t>(row)];
  if (edit_ && KeyOf(record) == editedKey_) {
    for (const stations::LabelChange& change : edit_->changes) {
      if (change.column == column) return change.value;
    }
  }
  return record.At(column).value;
}

std::string LabelsModel::Text(int row, LabelColumn column) const {
  return stations::CellText(column, ShownValue(row, column));
}

QString LabelsModel::StationText(int row) const {
  return QString::fromStdString(Text(row, LabelColumn::Station));
}

bool LabelsModel::IsHidden(int row) const {
  return ShownValue(row, LabelColumn::Hidden).Int() == 1;
}

QVariant LabelsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const LabelColumn column = Column(index);
  switch (role) {
    case Qt::EditRole:
      if (column == LabelColumn::Hidden) {
        const std::optional<int> flag = stations::ParseHidden(Text(index.row(), column));
        return flag ? QVariant(*flag) : QVariant();
      }
      [[fallthrough]];
    case Qt::DisplayRole:
      return QString::fromStdString(Text(index.row(), column));
    case Qt::TextAlignmentRole:
      return static_cast<int>(Qt::AlignVCenter |
                              (column == LabelColumn::Station ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::FontRole: {
      QFont font = IsLabel(column) ? labelFont_ : QGuiApplication::font();
      font.setItalic(IsHidden(index.row()));
      return font;
    }
    case Qt::ToolTipRole: {
      const QString tip = DuplicateTip(index.row(), column);
      if (!tip.isEmpty()) return tip;
      if (column != LabelColumn::Notes) return {};
      return PlainTip(data(index).toString());  // they are often wider than their column
    }
    case Qt::AccessibleTextRole:
      return tr("Station %1, %2: %3")
          .arg(StationText(index.row()), QString::fromLatin1(rules::Heading(column).caption),
               data(index).toString());
    case Qt::AccessibleDescriptionRole:
      return DuplicateTip(index.row(), column);
    case DuplicateRole:
      return Namesakes(index.row(), column) != nullptr;
    case MatchRole: {
      const auto cell = static_cast<std::size_t>(index.row() * kColumns + index.column());
      return cell < matches_.size() && matches_[cell];
    }
    default:
      return {};
  }
}

QVariant LabelsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (section < 0) return {};
  if (orientation == Qt::Horizontal) {
    if (section >= kColumns) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
      return QString::fromLatin1(rules::kLabelHeadings[static_cast<std::size_t>(section)].caption);
    }
    if (role == Qt::TextAlignmentRole) {
      return static_cast<int>(Qt::AlignVCenter | (section == 0 ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
  }
  if (section >= rowCount()) return {};
  const bool isEdited =
      section == EditedRow() || (rowOfEditor_.isValid() && section == rowOfEditor_.row());
  switch (role) {
    case EditedRole:
      return isEdited;
    case Qt::ToolTipRole:
      return isEdited ? tr("Not stored yet: Enter stores the row, Escape gives it back")
                      : QString();
    case Qt::AccessibleTextRole:
      return (isEdited ? tr("Station %1, not stored yet") : tr("Station %1"))
          .arg(StationText(section));
    default:
      return {};
  }
}

int LabelsModel::EditedRow() const {
  if (!edit_) return -1;
  const auto row = std::find_if(rows_.begin(), rows_.end(), [this](const LabelRecord& record) {
    return KeyOf(record) == editedKey_;
  });
  return row == rows_.end() ? -1 : static_cast<int>(row - rows_.begin());
}

bool LabelsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || (flags(index) & Qt::ItemIsEditable) == 0) return false;
  if (edit_ && EditedRow() != index.row()) return false;
  const LabelColumn column = Column(index);
  if (column == LabelColumn::Hidden) {
    const int flag = value.toInt();
    if (!value.isValid() || (flag != 0 && flag != 1)) return false;
    Put(column, flag, index.row());
    return true;
  }
  const std::string text = value.toString().toStdString();
  if (!stations::CheckText(column, text).ok()) return false;
  Put(column, text, index.row());
  return true;
}

void LabelsModel::Put(LabelColumn column, const jet::Value& value, int row) {
  const std::string text = stations::CellText(column, value);
  if (text == Text(row, column)) return;
  const LabelRecord& record = rows_[static_cast<std::size_t>(row)];
  if (!edit_) {
    edit_ = stations::LabelEdit{record.Station(), {}};
    editedKey_ = KeyOf(record);
  }
  std::erase_if(edit_->changes,
                [column](const stations::LabelChange& change) { return change.column == column; });
  if (text != stations::CellText(column, record.At(column).value)) {
    edit_->changes.push_back({column, value});
  }
  if (edit_->changes.empty()) edit_.reset();
  RowChanged();
}

void LabelsModel::DropEdit() {
  const int row = EditedRow();
  edit_.reset();
  if (row >= 0) RowChanged();
}

void LabelsModel::SetRowOfEditor(int row) {
  const int before = rowOfEditor_.row();
  rowOfEditor_ = index(row, 0);
  if (rowOfEditor_.row() != before) Q_EMIT MarkChanged();
}

// Other rows may have the same label now, or no longer.
void LabelsModel::RowChanged() {
  FindDuplicates();
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
  Q_EMIT MarkChanged();
}

bool LabelsModel::HasSameStations(const std::vector<LabelRecord>& records) const {
  if (records.size() != rows_.size()) return false;
  const auto keys = [](const std::vector<LabelRecord>& of) {
    std::vector<std::string> sorted;
    sorted.reserve(of.size());
    for (const LabelRecord& record : of) sorted.push_back(KeyOf(record));
    std::sort(sorted.begin(), sorted.end());
    return sorted;
  };
  const std::vector<std::string> mine = keys(rows_);
  return mine == keys(records) && std::adjacent_find(mine.begin(), mine.end()) == mine.end();
}

void LabelsModel::SetRecords(std::vector<LabelRecord> records) {
  if (!HasSameStations(records)) {
    beginResetModel();
    rows_ = std::move(records);
    matches_.clear();
    SortRows();
    if (EditedRow() < 0) edit_.reset();
    FindDuplicates();
    endResetModel();
    return;
  }
  std::unordered_map<std::string, LabelRecord*> byStation;
  for (LabelRecord& record : records) byStation[KeyOf(record)] = &record;
  bool changed = false;
  for (LabelRecord& row : rows_) {
    LabelRecord& record = *byStation[KeyOf(row)];
    changed = changed || !SameValues(row, record);
    row = std::move(record);
  }
  if (!changed) return;
  FindDuplicates();
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
  const bool inOrder = std::is_sorted(
      rows_.begin(), rows_.end(),
      [this](const LabelRecord& a, const LabelRecord& b) { return ComesBefore(a, b); });
  if (!inOrder && !edit_ && !rowOfEditor_.isValid()) sort(sortColumn_, sortOrder_);
}

void LabelsModel::RecordsStored(const std::vector<LabelRecord>& records) {
  std::unordered_map<std::string, const LabelRecord*> byStation;
  for (const LabelRecord& record : records) byStation[KeyOf(record)] = &record;
  const int editedRow = EditedRow();
  for (LabelRecord& row : rows_) {
    const auto stored = byStation.find(KeyOf(row));
    if (stored == byStation.end()) continue;
    if (edit_ && stored->first == editedKey_) edit_.reset();
    row = *stored->second;
  }
  FindDuplicates();
  if (rows_.empty()) return;
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
  if (editedRow >= 0) Q_EMIT MarkChanged();
}

bool LabelsModel::ComesBefore(const LabelRecord& a, const LabelRecord& b) const {
  const auto column = static_cast<LabelColumn>(sortColumn_);
  const int order = a.At(column).orderKey.compare(b.At(column).orderKey);
  if (order != 0) return sortOrder_ == Qt::AscendingOrder ? order < 0 : order > 0;
  return KeyOf(a) < KeyOf(b);
}

void LabelsModel::SortRows() {
  std::stable_sort(rows_.begin(), rows_.end(), [this](const LabelRecord& a, const LabelRecord& b) {
    return ComesBefore(a, b);
  });
}

void LabelsModel::sort(int column, Qt::SortOrder order) {
  sortColumn_ = std::clamp(column, 0, kColumns - 1);
  sortOrder_ = order;
  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  const QModelIndexList before = persistentIndexList();
  std::vector<std::string> stations;  // of the persistent indexes
  stations.reserve(static_cast<std::size_t>(before.size()));
  for (const QModelIndex& each : before) {
    stations.push_back(KeyOf(rows_[static_cast<std::size_t>(each.row())]));
  }
  SortRows();
  std::unordered_map<std::string, int> rowOf;
  for (int row = 0; row < rowCount(); ++row)
    rowOf[KeyOf(rows_[static_cast<std::size_t>(row)])] = row;
  QModelIndexList after;
  after.reserve(before.size());
  for (qsizetype i = 0; i < before.size(); ++i) {
    after.append(index(rowOf[stations[static_cast<std::size_t>(i)]], before[i].column()));
  }
  changePersistentIndexList(before, after);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

const LabelsModel::Stations* LabelsModel::Namesakes(int row, LabelColumn column) const {
  if (!IsLabel(column) || IsHidden(row)) return nullptr;
  const auto& labels = namesakes_[static_cast<std::size_t>(column)];
  const auto found = labels.find(WithoutSpaces(Text(row, column)));
  return found == labels.end() || found->second.size() < 2 ? nullptr : &found->second;
}

// Hidden stations do not count: panels do not list them.
void LabelsModel::FindDuplicates() {
  for (const LabelColumn column : {LabelColumn::StationLabel, LabelColumn::InputLabel}) {
    auto& labels = namesakes_[static_cast<std::size_t>(column)];
    labels.clear();
    for (int row = 0; row < rowCount(); ++row) {
      if (IsHidden(row)) continue;
      const std::string label = WithoutSpaces(Text(row, column));
      if (!label.empty()) labels[label].push_back(StationText(row));
    }
  }
}

QString LabelsModel::DuplicateTip(int row, LabelColumn column) const {
  const Stations* const namesakes = Namesakes(row, column);
  if (namesakes == nullptr) return {};
  Stations others = *namesakes;
  std::erase(others, StationText(row));
  std::sort(others.begin(), others.end(),
            [](const QString& a, const QString& b) { return a.toInt() < b.toInt(); });
  if (others.size() == 1) return tr("Label also used by station %1").arg(others.front());
  QStringList named;
  for (const QString& station : others) {
    if (named.size() < kTipStations) named.append(station);
  }
  const QString list = named.join(QStringLiteral(", "));
  const auto more = static_cast<int>(others.size()) - kTipStations;
  return more > 0 ? tr("Label also used by stations %1 and %2 more").arg(list).arg(more)
                  : tr("Label also used by stations %1").arg(list);
}

void LabelsModel::SetMatches(const std::vector<QModelIndex>& matches) {
  std::vector<bool> cells;
  if (!matches.empty()) {
    cells.resize(rows_.size() * kColumns);
    for (const QModelIndex& match : matches) {
      cells[static_cast<std::size_t>(match.row() * kColumns + match.column())] = true;
    }
  }
  if (cells == matches_) return;
  matches_ = std::move(cells);
  if (!rows_.empty()) {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1), {MatchRole});
  }
}

}  // namespace views
