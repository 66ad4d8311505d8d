// SPDX-License-Identifier: MIT

#include "app/app_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "config/configuration.h"
#include "db/database_files.h"

namespace app {

namespace {

// The error number of a file that cannot be copied.
constexpr int kFileAccess = 75;

}  // namespace

QString AppFolder(const QString& programFolder, const QString& userFolder,
                  model::Status* prepared) {
  *prepared = {};
  if (QFileInfo(programFolder).isWritable()) return programFolder;
  *prepared = PrepareUserFolder(programFolder, userFolder);
  return userFolder;
}

model::Status PrepareUserFolder(const QString& programFolder, const QString& userFolder) {
  model::Status status;
  QDir().mkpath(userFolder);
  for (const char* const name : {db::kMainFile, config::kConfigurationFile}) {
    QFile original(QDir(programFolder).filePath(QLatin1String(name)));
    const QString copy = QDir(userFolder).filePath(QLatin1String(name));
    if (!original.exists() || QFile::exists(copy)) continue;
    if (original.copy(copy)) {
      QFile::setPermissions(copy, QFile::permissions(copy) | QFile::ReadOwner | QFile::WriteOwner);
    } else if (status.ok()) {
      status = {kFileAccess, "Cannot copy " + original.fileName().toStdString() + ": " +
                                 original.errorString().toStdString()};
    }
  }
  return status;
}

}  // namespace app
