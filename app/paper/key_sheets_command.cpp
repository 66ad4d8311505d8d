// SPDX-License-Identifier: MIT

#include "app/paper/key_sheets_command.h"

#include <filesystem>

#include "app/paper/say_written.h"
#include "files/whole_file.h"
#include "views/widgets/shown.h"

namespace app {

void KeySheetsCommand::Ask() {
  if (views::IsShown(sheets_) || !services_.storeEdits()) return;
  Open();
}

void KeySheetsCommand::WriteAll(const QString& path) {
  if (!views::IsShown(sheets_)) Open().WriteAll(path);
}

views::KeySheetsWindow& KeySheetsCommand::Open() {
  const auto save = [this](const QString& path, const QByteArray& bytes) {
    return SayWritten(services_.data, path,
                      files::Replace(std::filesystem::path(path.toStdU16String()),
                                     {bytes.constData(), static_cast<std::size_t>(bytes.size())}));
  };
  sheets_ = new views::KeySheetsWindow(
      services_.data, {.printing = services_.printing, .save = save}, &services_.window);
  sheets_->setAttribute(Qt::WA_DeleteOnClose);
  connect(sheets_, &views::KeySheetsWindow::NoteRequested, this, &KeySheetsCommand::NoteRequested);
  sheets_->open();
  return *sheets_;
}

}  // namespace app
