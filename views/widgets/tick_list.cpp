// SPDX-License-Identifier: MIT

#include "views/widgets/tick_list.h"

#include <QHeaderView>
#include <QTreeView>

namespace views {

void SetUpTickList(QTreeView& list) {
  list.setRootIsDecorated(false);
  list.setUniformRowHeights(true);
  list.setAlternatingRowColors(true);
  list.setAllColumnsShowFocus(true);
  list.setSelectionMode(QAbstractItemView::ExtendedSelection);
  list.setTabKeyNavigation(false);
  list.header()->setSectionsMovable(false);
}

}  // namespace views
