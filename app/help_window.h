// SPDX-License-Identifier: MIT

#ifndef APP_HELP_WINDOW_H_
#define APP_HELP_WINDOW_H_

#include <QWidget>

namespace app {

// The manual that ships with the program, in a window of its own.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);
};

// Starts the help viewer with the help file.  False when it cannot be started.
bool StartHelpViewer();

}  // namespace app

#endif  // APP_HELP_WINDOW_H_
