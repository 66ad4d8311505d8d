// SPDX-License-Identifier: MIT

#ifndef APP_PAPER_SAY_WRITTEN_H_
#define APP_PAPER_SAY_WRITTEN_H_

#include <QString>

#include "files/whole_file.h"
#include "views/services.h"

namespace app {

// Whether a file of the operator's was written.  He is told when it was not, and why.
bool SayWritten(const views::Services& services, const QString& path,
                const files::Outcome& outcome);

}  // namespace app

#endif  // APP_PAPER_SAY_WRITTEN_H_
