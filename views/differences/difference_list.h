// SPDX-License-Identifier: MIT

#ifndef VIEWS_DIFFERENCES_DIFFERENCE_LIST_H_
#define VIEWS_DIFFERENCES_DIFFERENCE_LIST_H_

#include <QWidget>

#include <cstdint>
#include <vector>

#include "views/differences/difference.h"
#include "views/differences/difference_model.h"
#include "views/differences/shown_differences.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace views {

// A list of differences under a field that filters it, for a window around it: "Station 12,
// Button 3: TALK 5, LISTEN 5".
//
// Where one may choose, each row has a check box: Space ticks the selected rows or takes their
// ticks away, two buttons do so with all that are shown.  What the filter hides keeps its tick, and
// the line below the list says so.  A row that cannot be ticked says why in its tip.
class DifferenceList : public QWidget {
  Q_OBJECT

 public:
  enum class Choice : std::uint8_t { Ticks, None };

  // How the list is called and what it is called; the names of the two objects are the window's.
  struct Names {
    QString filter;  // the object name of the field
    QString list;    // that of the item view
    QString before;  // the headings of the two last columns: "Here", "Switcher"
    QString after;
    Choice choice = Choice::Ticks;
  };
  explicit DifferenceList(const Names& names, QWidget* parent = nullptr);

  // Replaces what is listed; what can be ticked is, or is not.  The filter stays.  `sayValues` as
  // DifferenceModel says.
  void SetRows(std::vector<Difference> rows, bool ticked = false,
               DifferenceModel::SayValues sayValues = nullptr);

  // The ticked rows, those that the filter hides among them, in the order in which they were given.
  // With `sayValues` given, `before` and `after` may still be empty.
  std::vector<ChangeRow> Ticked() const;
  // Those that could be ticked and are not.
  std::vector<ChangeRow> Unticked() const;
  // Takes the ticks away of the rows that are about the same as one of these.
  void Untick(const std::vector<ChangeRow>& rows);
  int TickedCount() const { return all_.TickedCount(); }
  int RowCount() const { return all_.rowCount(); }

 Q_SIGNALS:
  // TickedCount() may have changed.
  void TicksChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LayOut(const Names& names);
  void MakeList(const Names& names);
  void Filter(const QString& text);
  void TickShown(bool ticked);
  void TickSelected();
  void Count();

  DifferenceModel all_;
  ShownDifferences shown_;
  const Choice choice_;
  QLineEdit* filter_;
  QTreeView* list_;
  QLabel* count_;
  QPushButton* tickAll_;
  QPushButton* tickNone_;
};

}  // namespace views

#endif  // VIEWS_DIFFERENCES_DIFFERENCE_LIST_H_
