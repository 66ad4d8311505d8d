// SPDX-License-Identifier: MIT
//
// A console's entry in the user's applications menu.

#ifndef TOOLS_TESKSETUP_MENU_ENTRY_H_
#define TOOLS_TESKSETUP_MENU_ENTRY_H_

#include <QByteArray>
#include <QString>

#include "model/status.h"
#include "tools/tesksetup/console_plan.h"

namespace tesksetup {

// The name of the file with the entry of a folder's console.  Each folder has its own.
QString MenuEntryName(const QString& folder);

// The entry's text: `starter` (the path of this program) starts the console of the folder.
QByteArray MenuEntry(const ConsolePlan& plan, const QString& starter);

// Whether the menu in `menuFolder` has an entry for the folder's console.
bool IsInMenu(const QString& folder, const QString& menuFolder);

// Adds the entry to the menu, or replaces it, in `menuFolder`, which is made if need be.
model::Status AddToMenu(const ConsolePlan& plan, const QString& starter, const QString& menuFolder);

}  // namespace tesksetup

#endif  // TOOLS_TESKSETUP_MENU_ENTRY_H_
