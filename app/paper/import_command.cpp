// SPDX-License-Identifier: MIT

#include "app/paper/import_command.h"

#include <QFileDialog>
#include <QFileInfo>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>

#include "files/whole_file.h"
#include "views/widgets/shown.h"

namespace app {
namespace {

// More than a system of 256 stations with every target in every button comes to.
constexpr std::uint64_t kLargestImport = 8 << 20;

}  // namespace

void ImportCommand::Ask() {
  if (views::IsShown(import_) || views::RefusedByLock(services_.data)) return;
  // What is typed belongs to what is there now.
  if (!services_.storeEdits()) return;
  auto* const dialog = new QFileDialog(&services_.window, tr("Import"), QString(),
                                       tr("CSV files (*.csv);;All files (*)"));
  dialog->setObjectName(QStringLiteral("aidImportDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(QFileDialog::ExistingFile);
  connect(dialog, &QFileDialog::fileSelected, this, &ImportCommand::Open);
  dialog->open();
}

void ImportCommand::Open(const QString& path) {
  std::string bytes;
  const files::Outcome read =
      files::ReadWhole(std::filesystem::path(path.toStdU16String()), kLargestImport, &bytes);
  if (!read.ok()) {
    views::ShowRefusal(
        services_.data,
        tr("%1 could not be read: %2").arg(path, QString::fromStdString(read.text)).toStdString());
    return;
  }
  import_ = new views::ImportWindow(services_.data, QFileInfo(path).fileName(), std::move(bytes),
                                    &services_.window);
  import_->setAttribute(Qt::WA_DeleteOnClose);
  connect(import_, &views::ImportWindow::Imported, this, &ImportCommand::NoteRequested);
  import_->open();
}

}  // namespace app
