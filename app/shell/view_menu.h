// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_VIEW_MENU_H_
#define APP_SHELL_VIEW_MENU_H_

#include <QMenu>
#include <QObject>
#include <functional>

#include "app/shell/open_views.h"

namespace app {

// Fills the View menu: helps for reading the crosspoint map, the search of the view that the
// operator works in, the event log, what was changed, and the full screen.  They change looks only.
class ViewMenu : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QMenu& menu;
    OpenViews& views;
    QWidget& window;  // the main window
  };

  // All must outlive the object.
  explicit ViewMenu(const Services& services);

  // The command that finds, in the view that the operator works in.
  QAction& FindCommand() { return *find_; }

 Q_SIGNALS:
  // The commands that show the event log and what was changed.
  void EventLogRequested();
  void RecentChangesRequested();

 private:
  QAction* AddAction(const char* name, const QString& caption, const QKeySequence& shortcut,
                     const std::function<void()>& operation);
  void AddMapAction(const char* name, const QString& caption, const views::MapCommand& command);
  void Update();

  QMenu& menu_;
  OpenViews& views_;
  QList<QAction*> mapActions_;
  QAction* crosshair_;
  QAction* find_ = nullptr;
};

}  // namespace app

#endif  // APP_SHELL_VIEW_MENU_H_
