// SPDX-License-Identifier: MIT

#include "views/labels/label_find.h"

#include "views/labels/labels_model.h"

namespace views {

LabelFind::LabelFind(LabelsModel& rows, QWidget* parent)
    : FindField(tr("%1 of %2").arg(8888).arg(8888), parent), rows_(rows) {}

void LabelFind::OpenFind() { Open(Text(), tr("Find label or station")); }

int LabelFind::Highlight() {
  matches_.clear();
  const QString wanted = Text();
  for (int row = 0; !wanted.isEmpty() && row < rows_.rowCount(); ++row) {
    for (int column = 0; column < rows_.columnCount(); ++column) {
      const QModelIndex cell = rows_.index(row, column);
      const QString text = cell.data().toString();
      const bool isNumber = LabelsModel::Column(cell) == stations::LabelColumn::Station;
      if (isNumber ? text == wanted : text.contains(wanted, Qt::CaseInsensitive)) {
        matches_.push_back(cell);
      }
    }
  }
  rows_.SetMatches(matches_);
  return static_cast<int>(matches_.size());
}

void LabelFind::ClearHighlights() {
  matches_.clear();
  rows_.SetMatches({});
}

void LabelFind::ShowFirst() { Q_EMIT FirstMatch(matches_.front()); }

void LabelFind::GoToMatch(int match) { Q_EMIT Chosen(matches_[static_cast<std::size_t>(match)]); }

}  // namespace views
