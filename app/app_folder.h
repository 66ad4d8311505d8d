// SPDX-License-Identifier: MIT

#ifndef APP_APP_FOLDER_H_
#define APP_APP_FOLDER_H_

#include <QString>

namespace app {

// The folder where the program keeps its files: `programFolder`, or, where that cannot be
// written (the program was installed for all users), `userFolder`, which is prepared first.
QString AppFolder(const QString& programFolder, const QString& userFolder);

// Makes `userFolder` and copies the database and the settings file there that `programFolder`
// holds and `userFolder` does not.  What cannot be copied is left out: the program then starts
// as on a first start, and says what it cannot open.
void PrepareUserFolder(const QString& programFolder, const QString& userFolder);

}  // namespace app

#endif  // APP_APP_FOLDER_H_
