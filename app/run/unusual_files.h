// SPDX-License-Identifier: MIT

#ifndef APP_RUN_UNUSUAL_FILES_H_
#define APP_RUN_UNUSUAL_FILES_H_

#include "app/run/app_folder.h"
#include "app/shell/status_bar.h"
#include "db/database_files.h"
#include "model/error_reporter.h"

namespace app {

// The files that a console works on, and where what is unusual about them is said.
struct UnusualFiles {
  const AppFolder& folder;
  const db::DatabaseFiles& database;
  StatusBar& status;
  model::ErrorReporter& reporter;
};

// Says what is not wrong with them, but what the operator must know: that they are the user's own,
// that there are two databases, that what is edited cannot be saved.
void SayWhatIsUnusual(const UnusualFiles& files);

}  // namespace app

#endif  // APP_RUN_UNUSUAL_FILES_H_
