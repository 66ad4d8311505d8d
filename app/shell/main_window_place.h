// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_MAIN_WINDOW_PLACE_H_
#define APP_SHELL_MAIN_WINDOW_PLACE_H_

#include <QCoreApplication>

#include "app/shell/main_window.h"
#include "config/window_settings.h"
#include "views/window_place/placement.h"

namespace app {

// The place of the main window in the user's settings.
class MainWindowPlace {
  Q_DECLARE_TR_FUNCTIONS(MainWindowPlace)

 public:
  // Both must outlive the object.
  MainWindowPlace(MainWindow& window, config::WindowSettings& settings)
      : window_(window), placement_(settings, QStringLiteral("Main")) {}

  // Puts the window where the settings say.  A place that no screen shows is kept in the settings
  // until the window is moved: the screen may be back tomorrow.
  void Restore();

  // Stores the place, unless the window is minimised.
  void Save();

 private:
  MainWindow& window_;
  views::Placement placement_;
};

}  // namespace app

#endif  // APP_SHELL_MAIN_WINDOW_PLACE_H_
