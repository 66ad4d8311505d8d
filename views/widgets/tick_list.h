// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_TICK_LIST_H_
#define VIEWS_WIDGETS_TICK_LIST_H_

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;
class QWidget;

namespace views {

// Gives a flat list of rows with check boxes the look and the keys that all of them have: striped
// rows of one height, several of which can be selected, columns that stay where they are, and Tab
// for what comes behind the list.
void SetUpTickList(QTreeView& list);

// What stands around such a list: above it the field that filters its rows, below it the words that
// count them and the two buttons that tick every row that is shown, or none.
struct AroundTickList {
  QLineEdit& find;
  QLabel& count;
  QPushButton& tickAll;
  QPushButton& tickNone;
};

// Gives them the manner that they have around every such list, and lays them out with it to fill
// `owner`.  Their words and what they do are the owner's.
void LayOutTickList(QWidget& owner, QTreeView& list, const AroundTickList& around);

}  // namespace views

#endif  // VIEWS_WIDGETS_TICK_LIST_H_
