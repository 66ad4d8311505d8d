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

// Reads what the folder's settings say of device, panels and port into *plan; without a settings
// file these are a new console's.
model::Status ReadSettings(const QString& folder, ConsolePlan* plan);

// The device that the console of the folder has when none is named: the machine's own port of
// the number that its settings give.
QString OwnDevice(const QString& folder);

// Where the places of a console's windows are kept whose settings name no section for them: in a
// section of its own from now on, or still in the one that such consoles share.
enum class Places : std::uint8_t { Own, AsTheyAre };

// Makes the folder with the console's executable and its settings.  What is there stays: the
// database, and of the settings every line but those that the plan is about; a section for the
// places of the windows that they name stays, too.  Refused while a console works in the folder,
// which would write its own settings over these.
model::Status MakeConsoleFolder(const ConsolePlan& plan, const QString& installedProgram,
                                Places places);

// Makes the folder's executable the same as the installed one.  It is replaced as a whole, also
// while it runs; after a failure it is as it was.
model::Status UpdateProgram(const QString& installedProgram, const QString& folder);

}  // namespace tesksetup

#endif  // TOOLS_TESKSETUP_CONSOLE_FOLDER_H_
