// SPDX-License-Identifier: MIT

#ifndef APP_APP_FOLDER_H_
#define APP_APP_FOLDER_H_

#include <QString>

#include "model/status.h"

namespace app {

// The folder where the program keeps its files: `programFolder`, or, where that cannot be
// written (the program was installed for all users), `userFolder`, which is prepared first;
// *prepared says how that went.
QString AppFolder(const QString& programFolder, const QString& userFolder, model::Status* prepared);

// Makes `userFolder` and copies the database and the settings file there that `programFolder`
// holds and `userFolder` does not.  What cannot be copied is left out and named in the first
// failure: the program then starts as on a first start, and the operator must know.
model::Status PrepareUserFolder(const QString& programFolder, const QString& userFolder);

}  // namespace app

#endif  // APP_APP_FOLDER_H_
