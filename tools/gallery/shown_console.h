// SPDX-License-Identifier: MIT

#ifndef TOOLS_GALLERY_SHOWN_CONSOLE_H_
#define TOOLS_GALLERY_SHOWN_CONSOLE_H_

#include <QAction>

#include <initializer_list>
#include <string>

#include "switcher/live_commands.h"
#include "tools/gallery/no_switcher.h"
#include "tools/stage/stage.h"
#include "views/services.h"

namespace gallery {

// A stage with a view to be drawn.  Parts that are asked for by name must be there.
class ShownConsole : public stage::Stage {
 public:
  explicit ShownConsole(int channels = 64) : Stage(channels) {}
  ~ShownConsole() override { window.reset(); }  // the view, before what it works with

  views::Services Services();

  // A part of the view by its name.
  template <typename Widget>
  Widget& Find(const QString& name) {
    auto* const found = subWindow->findChild<Widget*>(name);
    if (found == nullptr) qFatal("no %s", qPrintable(name));
    return *found;
  }
  void Trigger(const char* action) { Find<QAction>(QLatin1String(action)).trigger(); }

  // Makes a cell of a grid the current one; rows and columns from 0, without headers.
  void GoToCell(const QString& grid, int row, int column);

  // Keys go to where the focus is.
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  static void Type(const char* text);

  DeadLine port;
  NoSwitcher switcher;
  model::Locks locks;
  ::switcher::KnownMap knownMap{model};
  stations::Changes changes{locks};
  ::switcher::UnsentMessages unsentMessages{{.model = model,
                                             .database = [this] { return database.get(); },
                                             .changes = changes,
                                             .today = [] { return kToday; }}};
  views::UnsentTables unsent{unsentMessages};
  ::switcher::LiveCommands commands{{.model = model, .port = port, .reporter = switcher}, &locks};
};

// 64 flags, with those of `members` set; they count from 1.
std::string Flags(std::initializer_list<int> members);

}  // namespace gallery

#endif  // TOOLS_GALLERY_SHOWN_CONSOLE_H_
