// SPDX-License-Identifier: MIT

#ifndef APP_RUN_APP_FOLDER_H_
#define APP_RUN_APP_FOLDER_H_

#include <QString>
#include <filesystem>

#include "model/status.h"

namespace app {

// The folder where a console keeps its files.
struct AppFolder {
  QString path;
  QString program;  // the folder of the program

  // What could not be copied into the user's folder.  The console then makes nothing anew there:
  // factory defaults must not take the place of the house's tables.
  model::Status lacks;

  // The path of a file in it, and of one in the folder of the program.
  std::filesystem::path File(const char* name) const;
  std::filesystem::path ProgramFile(const char* name) const;

  // The program's own folder cannot be written: it was installed for all users, or somebody has
  // locked it.
  bool IsTheUsers() const { return path != program; }
};

// Chooses the folder: `programFolder`, or, where the system says that it may not be written,
// `userFolder`, which is made.  For any other reason (a network drive that stutters) there is no
// folder now, and the failure says why.
model::Status ChooseAppFolder(const QString& programFolder, const QString& userFolder,
                              AppFolder* folder);

// Copies the database and the settings file into the user's folder that the program's holds and
// the user's does not.  What cannot be copied is left out, and the first failure stands in
// `lacks`.  Nothing is done to the program's own folder.
void PrepareAppFolder(AppFolder* folder);

// Names both databases, with their dates, when the user's folder is used and its database is not,
// or cannot be seen to be, the one in the program's folder; else empty.
QString OtherDatabase(const AppFolder& folder);

}  // namespace app

#endif  // APP_RUN_APP_FOLDER_H_
