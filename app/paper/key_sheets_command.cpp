// SPDX-License-Identifier: MIT

#include "app/paper/key_sheets_command.h"

#include <QAction>
#include <filesystem>

#include "app/paper/say_written.h"
#include "files/whole_file.h"
#include "views/widgets/save_dialog.h"
#include "views/widgets/shown.h"

namespace app {

KeySheetsCommand::KeySheetsCommand(const Services& services) : services_(services) {
  auto* const all = new QAction(tr("&Key Sheets As PDF…"), &services_.exports);
  all->setObjectName(QStringLiteral("aidExportKeySheetsPdf"));
  connect(all, &QAction::triggered, this, &KeySheetsCommand::AskWhereToWriteAll);
  services_.exports.addAction(all);
}

void KeySheetsCommand::Ask() {
  if (views::IsShown(sheets_) || !services_.storeEdits()) return;
  Open();
}

void KeySheetsCommand::AskWhereToWriteAll() {
  // What is typed belongs to what is exported.
  if (!services_.storeEdits()) return;
  views::AskWhereToSave(
      services_.window, *this,
      {.name = QStringLiteral("aidExportDialog"),
       .title = tr("Key Sheets As PDF"),
       .filters =
           tr("%1 files (*.%2);;All files (*)").arg(QStringLiteral("PDF"), QStringLiteral("pdf")),
       .fileName = QStringLiteral("key-sheets.pdf")},
      [this](const QString& path) { WriteAll(path); });
}

void KeySheetsCommand::WriteAll(const QString& path) {
  if (views::IsShown(sheets_)) {
    views::ShowRefusal(services_.data,
                       tr("%1 was not written: the window Key Sheets is open. Close it and export "
                          "again.")
                           .arg(path)
                           .toStdString());
    return;
  }
  Open().WriteAll(path);
}

views::KeySheetsWindow& KeySheetsCommand::Open() {
  const auto save = [this](const QString& path, const QByteArray& bytes) {
    return SayWritten(services_.data, path,
                      files::Replace(std::filesystem::path(path.toStdU16String()),
                                     {bytes.constData(), static_cast<std::size_t>(bytes.size())}));
  };
  sheets_ = new views::KeySheetsWindow(services_.data, save, &services_.window);
  sheets_->setAttribute(Qt::WA_DeleteOnClose);
  connect(sheets_, &views::KeySheetsWindow::NoteRequested, this, &KeySheetsCommand::NoteRequested);
  sheets_->open();
  return *sheets_;
}

}  // namespace app
