// SPDX-License-Identifier: MIT

#include "app/backups/save_copy.h"

#include <QDate>
#include <filesystem>
#include <memory>
#include <string>

#include "db/file_status.h"
#include "files/whole_file.h"
#include "views/widgets/save_dialog.h"

namespace app {

using Icon = model::ErrorReporter::Icon;

void SaveCopy::Ask() {
  // What is typed belongs to what is kept.
  if (!services_.storeEdits()) return;
  views::AskWhereToSave(
      services_.window, *this,
      {.name = QStringLiteral("aidSaveCopyDialog"),
       .title = tr("Save A Copy As"),
       .filters = tr("Database files (*.mdb)"),
       .fileName = QStringLiteral("Tesk-%1.mdb").arg(QDate::currentDate().toString(Qt::ISODate))},
      [this](const QString& path) { Write(path); });
}

void SaveCopy::Write(const QString& path) {
  const std::filesystem::path target(path.toStdU16String());
  if (services_.files.IsOwnFile(target)) {
    Refuse(tr("A copy cannot take the place of the console's own database. Choose another name."));
    return;
  }
  // Nor of any other file of the console, nor of one that somebody needs for something else.
  if (!path.endsWith(QStringLiteral(".mdb"), Qt::CaseInsensitive)) {
    Refuse(tr("The name of a copy must end in .mdb. Choose another name."));
    return;
  }
  const auto tell = [this, path](const model::Status& status) {
    if (status.ok()) {
      Q_EMIT NoteRequested(tr("Copy saved: %1").arg(path));
    } else {
      Refuse(tr("%1 could not be written: %2")
                 .arg(path, QString::fromStdString(status.Description())));
    }
  };
  // The thread shares them instead of copying them.
  const auto bytes = std::make_shared<std::string>();
  if (const model::Status status = services_.files.ReadWorkingCopy(bytes.get()); !status.ok()) {
    tell(status);
    return;
  }
  services_.writer.Begin([target, bytes] { return db::StatusOf(files::Replace(target, *bytes)); },
                         tell);
}

void SaveCopy::Refuse(const QString& text) {
  services_.reporter.Show(Icon::Exclamation, "Control Error", text.toStdString());
}

}  // namespace app
