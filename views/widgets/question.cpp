// SPDX-License-Identifier: MIT

#include "views/widgets/question.h"

#include <QMessageBox>
#include <QPushButton>

namespace views {

void Ask(QWidget& window, QObject& context, const Question& question) {
  auto* const box = new QMessageBox(QMessageBox::Question, QStringLiteral("Orvo Intercom Control"),
                                    question.text, QMessageBox::Cancel, &window);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setObjectName(question.name);
  box->setTextFormat(Qt::PlainText);
  for (const Answer& answer : question.answers) {
    QPushButton* const button = box->addButton(answer.caption, QMessageBox::ActionRole);
    button->setObjectName(answer.name);
    QObject::connect(button, &QPushButton::clicked, &context, answer.run, Qt::QueuedConnection);
  }
  box->setDefaultButton(QMessageBox::Cancel);
  box->setEscapeButton(QMessageBox::Cancel);
  box->open();
}

}  // namespace views
