// SPDX-License-Identifier: MIT

#include "app/run/unusual_files.h"

#include <QCoreApplication>

namespace app {

void SayWhatIsUnusual(const UnusualFiles& files) {
  const auto say = [&](const QString& text) {
    files.reporter.Show(model::ErrorReporter::Icon::Exclamation, "Orvo Intercom Control",
                        text.toStdString());
  };
  if (files.folder.IsTheUsers()) files.status.SetFolder(files.folder.path);
  if (const QString other = OtherDatabase(files.folder); !other.isEmpty()) say(other);
  if (files.database.IsWriteProtected()) {
    say(QCoreApplication::translate(
        "UnusualFiles",
        "Tesk.mdb Is Write-Protected\r\rWhat is edited cannot be saved, unless the "
        "protection is taken off before the console is closed."));
  }
}

}  // namespace app
