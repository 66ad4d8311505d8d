// SPDX-License-Identifier: MIT
//
// The folder of a console: its copy of the program, its settings.  A console keeps its files
// where its executable is, hence the copy; a link would lead back to the installed one.

#ifndef TOOLS_TESKSETUP_CONSOLE_FOLDER_H_
#define TOOLS_TESKSETUP_CONSOLE_FOLDER_H_

#include <QString>
#include <cstdint>

#include "model/status.h"
#include "tools/tesksetup/console_plan.h"

namespace tesksetup {

// The console's executable in a folder.
QString ProgramIn(const QString& folder);

// Whether the folder has a console's database or settings.
bool HoldsConsole(const QString& folder);

// Reads device, panels and port from the folder's settings into *plan; without a settings file,
// the defaults of a new console.
model::Status ReadSettings(const QString& folder, ConsolePlan* plan);

// The device of the folder's console when its settings name none: the machine's own port with the
// number in the settings.
QString OwnDevice(const QString& folder);

// Where a console keeps the places of its windows when its settings name no section for them: from
// now on in a section of its own, or still in the section that such consoles share.
enum class Places : std::uint8_t { Own, AsTheyAre };

// Makes the folder with the console's executable and its settings.  The database that is there
// stays, and every line of the settings but those of the plan; so does the section that they name
// for the places of the windows.  Refused while a console works in the folder, which would write
// its own settings over these.
model::Status MakeConsoleFolder(const ConsolePlan& plan, const QString& installedProgram,
                                Places places);

// Replaces the folder's executable by the installed one when they differ, also while it runs. After
// a failure it is as it was.
model::Status UpdateProgram(const QString& installedProgram, const QString& folder);

}  // namespace tesksetup

#endif  // TOOLS_TESKSETUP_CONSOLE_FOLDER_H_
