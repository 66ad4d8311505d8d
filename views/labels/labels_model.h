// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABELS_MODEL_H_
#define VIEWS_LABELS_LABELS_MODEL_H_

#include <QAbstractTableModel>
#include <QFont>
#include <QPersistentModelIndex>

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "stations/label_texts.h"
#include "stations/labels.h"

namespace views {

// The stations as the grid shows them: the stored values, in the order that the operator chose, and
// for the one row being edited its new values instead.  It reads and writes no database.
class LabelsModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Role {
    DuplicateRole = Qt::UserRole,  // bool: another station has the same label
    MatchRole,                     // bool: the search found it
    EditedRole,  // bool, of a row's header: it has values that are not stored, or an editor
  };

  explicit LabelsModel(QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  // The edit value of "Hidden" is 0 or 1, or invalid when neither is stored; of a text, the text.
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

  // Puts a new value into the row being edited.  False, without a change, when another row is being
  // edited or the column cannot take the value.  Setting the stored value undoes the edit.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  // Orders the rows by their stored values, as the database does; equal ones by their stations.
  void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
  int SortColumn() const { return sortColumn_; }
  Qt::SortOrder SortOrder() const { return sortOrder_; }

  // Replaces the stored values.  The rows are sorted again, unless one is being edited: then they
  // stay where they are.  The edit is kept as long as its station is there.
  void SetRecords(std::vector<stations::LabelRecord> records);

  // Whether these records are of the stations that the model has: SetRecords then keeps what
  // refers to rows, such as an open editor.
  bool HasSameStations(const std::vector<stations::LabelRecord>& records) const;

  // What is stored, row by row.
  const std::vector<stations::LabelRecord>& Records() const { return rows_; }

  // The row being edited.
  bool HasEdit() const { return edit_.has_value(); }
  int EditedRow() const;  // -1 without one
  // REQUIRES: HasEdit()
  const stations::LabelEdit& Edit() const { return *edit_; }
  void DropEdit();
  // An editor was opened in a row, or, with -1, closed.
  void SetRowOfEditor(int row);

  // These records were stored.  No row changes its place; if one of them was being edited, its edit
  // ends.
  void RecordsStored(const std::vector<stations::LabelRecord>& records);

  static stations::LabelColumn Column(const QModelIndex& index) {
    return static_cast<stations::LabelColumn>(index.column());
  }
  // The station of a row in words: its number, or "" without one.
  QString StationText(int row) const;
  // What a cell shows.
  std::string Text(int row, stations::LabelColumn column) const;

  // The cells that the search found.
  void SetMatches(const std::vector<QModelIndex>& matches);

 Q_SIGNALS:
  // EditedRole of some row has changed.  Not headerDataChanged, after which the whole grid is laid
  // out again.
  void MarkChanged();

 private:
  using Stations = std::vector<QString>;

  const jet::Value& ShownValue(int row, stations::LabelColumn column) const;
  bool IsHidden(int row) const;
  QString DuplicateTip(int row, stations::LabelColumn column) const;
  // The stations that show this label, when there are several; else null.
  const Stations* Namesakes(int row, stations::LabelColumn column) const;
  void FindDuplicates();
  void Put(stations::LabelColumn column, const jet::Value& value, int row);
  void RowChanged();
  bool ComesBefore(const stations::LabelRecord& a, const stations::LabelRecord& b) const;
  void SortRows();

  std::vector<stations::LabelRecord> rows_;  // as they are shown
  int sortColumn_ = 0;
  Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
  std::optional<stations::LabelEdit> edit_;
  std::string editedKey_;  // the order key of the edited station
  QPersistentModelIndex rowOfEditor_;
  std::array<std::unordered_map<std::string, Stations>, stations::kLabelColumnCount> namesakes_;
  std::vector<bool> matches_;  // by row and column
  QFont labelFont_;
};

}  // namespace views

#endif  // VIEWS_LABELS_LABELS_MODEL_H_
