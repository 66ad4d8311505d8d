// SPDX-License-Identifier: MIT

#include "views/widgets/save_dialog.h"

#include <QFileDialog>

namespace views {

void AskWhereToSave(QWidget& window, QObject& context, const SaveQuestion& question,
                    const std::function<void(const QString& path)>& save) {
  auto* const dialog = new QFileDialog(&window, question.title, QString(), question.filters);
  dialog->setObjectName(question.name);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix(question.fileName.section(u'.', -1));
  dialog->selectFile(question.fileName);
  QObject::connect(dialog, &QFileDialog::fileSelected, &context, save);
  dialog->open();
}

}  // namespace views
