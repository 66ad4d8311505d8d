// SPDX-License-Identifier: MIT

#include "app/run/app_folder.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <filesystem>

#include "config/configuration.h"
#include "db/database_files.h"
#include "files/whole_file.h"

namespace app {

namespace {

std::filesystem::path Path(const QString& folder, const char* name = "") {
  return QDir(folder).filePath(QLatin1String(name)).toStdU16String();
}

bool IsDenied(std::error_code error) {
  return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
         error == std::errc::read_only_file_system;
}

// A link that leads nowhere at present is there.
bool IsThere(const std::filesystem::path& path) {
  files::Kind kind = files::Kind::Nothing;
  return files::KindOf(path, &kind) || kind != files::Kind::Nothing;
}

files::Outcome CopyIfLacking(const AppFolder& folder, const char* name, std::uint64_t most) {
  const std::filesystem::path original = Path(folder.program, name);
  const std::filesystem::path copy = folder.File(name);
  if (!IsThere(original) || IsThere(copy)) return {};
  return files::ReplaceByCopy(copy, original, most);
}

QString WithDate(const std::filesystem::path& path) {
  const QFileInfo file(QString::fromStdU16String(path.u16string()));
  return QStringLiteral("%1 (%2)").arg(
      QDir::toNativeSeparators(file.filePath()),
      file.lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
}

}  // namespace

std::filesystem::path AppFolder::File(const char* name) const { return Path(path, name); }

std::filesystem::path AppFolder::ProgramFile(const char* name) const { return Path(program, name); }

model::Status ChooseAppFolder(const QString& programFolder, const QString& userFolder,
                              AppFolder* folder) {
  const std::error_code error = files::CheckFolder(Path(programFolder));
  if (error && !IsDenied(error)) {
    return {model::kFileAccess,
            "Cannot write in " + programFolder.toStdString() + ": " + error.message()};
  }
  if (error) QDir().mkpath(userFolder);  // what stands in its way shows when it is locked
  *folder = {.path = error ? userFolder : programFolder, .program = programFolder, .lacks = {}};
  return {};
}

void PrepareAppFolder(AppFolder* folder) {
  if (!folder->IsTheUsers()) return;
  for (const auto& [name, most] :
       {std::pair{db::kMainFile, db::kLargestFile},
        std::pair{config::kConfigurationFile, config::kLargestIniFile}}) {
    const files::Outcome copied = CopyIfLacking(*folder, name, most);
    if (!copied.ok() && folder->lacks.ok()) folder->lacks = {model::kFileAccess, copied.text};
  }
}

QString OtherDatabase(const AppFolder& folder) {
  if (!folder.IsTheUsers()) return {};
  const std::filesystem::path used = folder.File(db::kMainFile);
  const std::filesystem::path other = folder.ProgramFile(db::kMainFile);
  if (!IsThere(used) || !IsThere(other)) return {};
  bool same = false;
  const files::Outcome compared = files::Compare(used, other, &same);
  if (compared.ok() && same) return {};
  const QString difference =
      compared.ok() ? QCoreApplication::translate("AppFolder", "They differ.")
                    : QCoreApplication::translate("AppFolder", "It cannot be compared: %1.")
                          .arg(QString::fromStdString(compared.text));
  return QCoreApplication::translate(
             "AppFolder",
             "There Are Two Databases\r\rThe program's folder cannot be written, so this console "
             "works on\r%1\rand not on\r%2\r%3 Before anything is sent to the switcher, "
             "make sure that it is the right one.")
      .arg(WithDate(used), WithDate(other), difference);
}

}  // namespace app
