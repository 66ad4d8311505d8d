// SPDX-License-Identifier: MIT

#include "views/widgets/tool_band.h"

#include <QAction>
#include <QEvent>
#include <QResizeEvent>
#include <QToolButton>

#include "views/widgets/icon.h"

namespace views {
namespace {

constexpr int kIconSize = 16;

}  // namespace

ToolBand::ToolBand(const QString& name, const QString& accessibleName, QWidget& view)
    : QToolBar(&view), view_(view) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setIconSize(QSize(kIconSize, kIconSize));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
}

QAction* ToolBand::MakeAction(const Tool& tool, const std::function<void()>& run, QWidget& view) {
  auto* const action = new QAction(&view);
  const QString caption = QString::fromLatin1(tool.caption);
  action->setObjectName(QString::fromLatin1(tool.key));
  action->setIcon(Icon(QString::fromLatin1(tool.icon)));
  action->setText(caption);
  action->setIconText(caption);
  action->setToolTip(QString::fromLatin1(tool.tip));
  connect(action, &QAction::triggered, &view, run);
  return action;
}

QAction* ToolBand::Add(const Tool& tool, const std::function<void()>& run,
                       const QKeySequence& shortcut) {
  QAction* const action = MakeAction(tool, run, view_);
  if (tool.startsGroup) addSeparator();
  addAction(action);
  // The mnemonic works as a shortcut of the action, so that it acts at once, and also when the
  // tool is behind the overflow button.
  QList<QKeySequence> shortcuts;
  for (const QKeySequence& keys : {QKeySequence::mnemonic(action->text()), shortcut}) {
    if (!keys.isEmpty()) shortcuts.append(keys);
  }
  action->setShortcuts(shortcuts);
  view_.addAction(action);
  auto* const button = qobject_cast<QToolButton*>(widgetForAction(action));
  button->setObjectName(QStringLiteral("btn") + action->objectName().mid(3));
  button->setShortcut(QKeySequence());
  button->setFocusPolicy(Qt::TabFocus);
  button->setAccessibleName(action->text().remove(u'&'));
  button->setAccessibleDescription(action->toolTip());
  return action;
}

void ToolBand::Fit() {
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  // The band's own size hint is that of its last layout.
  int needed = 0;
  for (QAction* const action : actions()) needed += widgetForAction(action)->sizeHint().width();
  if (needed > width()) setToolButtonStyle(Qt::ToolButtonTextOnly);
}

void ToolBand::resizeEvent(QResizeEvent* event) {
  QToolBar::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) Fit();
}

void ToolBand::changeEvent(QEvent* event) {
  QToolBar::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Fit();
}

}  // namespace views
