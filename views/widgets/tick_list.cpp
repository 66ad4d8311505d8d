// SPDX-License-Identifier: MIT

#include "views/widgets/tick_list.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

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

void LayOutTickList(QWidget& owner, QTreeView& list, const AroundTickList& around) {
  around.find.setClearButtonEnabled(true);
  around.count.setTextFormat(Qt::PlainText);
  around.tickAll.setObjectName(QStringLiteral("aidTickAll"));
  around.tickNone.setObjectName(QStringLiteral("aidTickNone"));
  for (QPushButton* const button : {&around.tickAll, &around.tickNone}) {
    button->setAutoDefault(false);
  }

  auto* const below = new QHBoxLayout;
  below->addWidget(&around.count, 1);
  below->addWidget(&around.tickAll);
  below->addWidget(&around.tickNone);
  auto* const layout = new QVBoxLayout(&owner);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(&around.find);
  layout->addWidget(&list, 1);
  layout->addLayout(below);
}

}  // namespace views
