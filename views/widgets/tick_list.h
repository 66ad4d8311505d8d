// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_TICK_LIST_H_
#define VIEWS_WIDGETS_TICK_LIST_H_

class QTreeView;

namespace views {

// Gives a flat list of rows with check boxes the look and the keys that all of them have: striped
// rows of one height, several of which can be selected, columns that stay where they are, and Tab
// for what comes behind the list.
void SetUpTickList(QTreeView& list);

}  // namespace views

#endif  // VIEWS_WIDGETS_TICK_LIST_H_
