// SPDX-License-Identifier: MIT

#ifndef TOOLS_TESKSETUP_CONSOLE_PLAN_H_
#define TOOLS_TESKSETUP_CONSOLE_PLAN_H_

#include <QString>

namespace tesksetup {

// What the installer decides about a console.
struct ConsolePlan {
  QString name;    // in the applications menu
  QString folder;  // an absolute path
  QString device;  // of its serial line; empty: the machine's own port
  bool servesPanels = false;
  int ipPort = 1250;  // of its panels
};

}  // namespace tesksetup

#endif  // TOOLS_TESKSETUP_CONSOLE_PLAN_H_
