// SPDX-License-Identifier: MIT

#include "views/transfer/download_window.h"

#include <QVBoxLayout>

#include "views/widgets/icon.h"
#include "views/widgets/title_width.h"

namespace views {
namespace {

// Of the title while it sends, with seven digits.
constexpr int kTitleCharacters = 46;

}  // namespace

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
  // It keeps its width when its title counts the bytes.
  setMinimumWidth(TitleWidth(*this, kTitleCharacters));
  Bar().setAccessibleName(tr("Download progress"));
  auto* const question = new QVBoxLayout;
  question->addWidget(text_);
  LayOut(question);
  connect(&Ok(), &QPushButton::clicked, this, [this] { Sending().Go(); });
}

}  // namespace views
