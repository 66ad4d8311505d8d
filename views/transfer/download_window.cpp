// SPDX-License-Identifier: MIT

#include "views/transfer/download_window.h"

#include <QVBoxLayout>

#include "views/widgets/icon.h"

namespace views {

DownloadWindow::DownloadWindow(const Services& services, QWidget* parent)
    : SendingWindow(services,
                    {.link = "aidDownloadLink",
                     .status = "lblDownloadStatus",
                     .bar = "pbDownloadProg",
                     .ok = "cmdDownGo",
                     .cancel = "cmdDownCancel"},
                    parent),
      text_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmDownProg"));
  setWindowTitle(tr("System Download"));
  setWindowIcon(Icon(QStringLiteral("send-data")));
  text_->setText(QString::fromUtf8(Sending().Confirmation()));
  text_->setObjectName(QStringLiteral("lblDownloadText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setMinimumWidth(kTextCharacters * fontMetrics().averageCharWidth());
  Bar().setAccessibleName(tr("Download progress"));
  auto* const question = new QVBoxLayout;
  question->addWidget(text_);
  LayOut(question);
  connect(&Ok(), &QPushButton::clicked, this, [this] { Sending().Go(); });
}

}  // namespace views
