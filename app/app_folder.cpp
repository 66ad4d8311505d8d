// SPDX-License-Identifier: MIT

#include "app/app_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "config/configuration.h"
#include "db/database_files.h"

namespace app {

QString AppFolder(const QString& programFolder, const QString& userFolder) {
  if (QFileInfo(programFolder).isWritable()) return programFolder;
  PrepareUserFolder(programFolder, userFolder);
  return userFolder;
}

void PrepareUserFolder(const QString& programFolder, const QString& userFolder) {
  QDir().mkpath(userFolder);
  for (const char* const name : {db::kMainFile, config::kConfigurationFile}) {
    const QString original = QDir(programFolder).filePath(QLatin1String(name));
    const QString copy = QDir(userFolder).filePath(QLatin1String(name));
    if (!QFile::exists(original) || QFile::exists(copy)) continue;
    if (QFile::copy(original, copy)) {
      QFile::setPermissions(copy, QFile::permissions(copy) | QFile::ReadOwner | QFile::WriteOwner);
    }
  }
}

}  // namespace app
