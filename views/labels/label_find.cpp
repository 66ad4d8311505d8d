// SPDX-License-Identifier: MIT

#include "views/labels/label_find.h"

#include "views/labels/labels_model.h"

namespace views {

LabelFind::LabelFind(LabelsModel& model, QWidget* parent)
    : FindField(tr("%1 of %2").arg(8888).arg(8888), parent), model_(model) {}

void LabelFind::OpenFind() { Open(Text(), tr("Find label or station")); }

int LabelFind::Light() {
  matches_.clear();
  const QString wanted = Text();
  for (int row = 0; !wanted.isEmpty() && row < model_.rowCount(); ++row) {
    for (int column = 0; column < model_.columnCount(); ++column) {
      const QModelIndex cell = model_.index(row, column);
      const QString text = cell.data().toString();
      const bool isNumber = LabelsModel::Column(cell) == stations::LabelColumn::Station;
      if (isNumber ? text == wanted : text.contains(wanted, Qt::CaseInsensitive)) {
        matches_.push_back(cell);
      }
    }
  }
  model_.SetMatches(matches_);
  return static_cast<int>(matches_.size());
}

void LabelFind::PutOut() {
  matches_.clear();
  model_.SetMatches({});
}

void LabelFind::ShowFirst() { Q_EMIT FirstMatch(matches_.front()); }

void LabelFind::GoToMatch(int match) { Q_EMIT Chosen(matches_[static_cast<std::size_t>(match)]); }

}  // namespace views
