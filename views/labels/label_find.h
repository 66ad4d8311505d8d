// SPDX-License-Identifier: MIT

#ifndef VIEWS_LABELS_LABEL_FIND_H_
#define VIEWS_LABELS_LABEL_FIND_H_

#include <QModelIndex>

#include <vector>

#include "views/widgets/find_field.h"

namespace views {

class LabelsModel;

// The field over the grid of labels: finds the cells that hold a text, and stations by their
// number, row by row.
class LabelFind : public FindField {
  Q_OBJECT

 public:
  // `rows` must outlive the field.
  explicit LabelFind(LabelsModel& rows, QWidget* parent = nullptr);

  // Opens, keeping the text of the last search, and takes the focus.
  void OpenFind();

 Q_SIGNALS:
  // The first match of a new search.
  void FirstMatch(const QModelIndex& index);
  // Enter: go to this cell.
  void Chosen(const QModelIndex& index);

 protected:
  int Highlight() override;
  void ClearHighlights() override;
  void ShowFirst() override;
  void GoToMatch(int match) override;

 private:
  LabelsModel& rows_;
  std::vector<QModelIndex> matches_;
};

}  // namespace views

#endif  // VIEWS_LABELS_LABEL_FIND_H_
