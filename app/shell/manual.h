// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_MANUAL_H_
#define APP_SHELL_MANUAL_H_

#include <QPointer>

#include "app/shell/help_window.h"

namespace app {

// The manual, however it is shown: by the platform's help viewer, or in a window of the program.
class Manual {
 public:
  Manual() = default;
  ~Manual() { delete window_; }
  Manual(const Manual&) = delete;
  Manual& operator=(const Manual&) = delete;

  // Starts the help viewer.  Where it cannot be started, shows the window, at the place that
  // explains the dialog or box in front.
  void Show();

 private:
  QPointer<HelpWindow> window_;
};

}  // namespace app

#endif  // APP_SHELL_MANUAL_H_
