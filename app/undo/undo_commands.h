// SPDX-License-Identifier: MIT

#ifndef APP_UNDO_UNDO_COMMANDS_H_
#define APP_UNDO_UNDO_COMMANDS_H_

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "app/shell/edit_menu.h"
#include "app/shell/open_views.h"
#include "db/jet/database.h"
#include "stations/history.h"
#include "views/services.h"

namespace app {

// Takes edits back and does them again as the Edit menu asks, and says in the menu which is next.
// Commands that went to the switcher are no edits.
class UndoCommands : public QObject {
  Q_OBJECT

 public:
  struct Services {
    EditMenu& menu;
    OpenViews& views;
    views::Services data;
    std::function<jet::Database*()> database;  // the open one; null when there is none
  };

  // All must outlive the object.
  explicit UndoCommands(const Services& services);

 Q_SIGNALS:
  // What was undone or redone, or why it was not.
  void NoteRequested(const QString& note);

 private:
  void Go(stations::Direction direction);
  void ShowNext();
  std::optional<QString> NextTitle(stations::Direction direction) const;

  const Services services_;
  stations::History history_;
};

}  // namespace app

#endif  // APP_UNDO_UNDO_COMMANDS_H_
