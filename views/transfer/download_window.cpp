// SPDX-License-Identifier: MIT

#include "views/transfer/download_window.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include <algorithm>

#include "views/widgets/held_enter.h"
#include "views/widgets/icon.h"

namespace views {

namespace {

constexpr int kTextCharacters = 60;

}  // namespace

DownloadWindow::DownloadWindow(const Services& services, QWidget* parent)
    : QDialog(parent),
      unsent_(services.unsent),
      text_(new QLabel(this)),
      status_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      ok_(new QPushButton(tr("OK"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)),
      download_({.model = services.model, .tables = services.tables, .poll = services.poll},
                *this) {
  setObjectName(QStringLiteral("frmDownProg"));
  setWindowTitle(tr("System Download"));
  setWindowIcon(Icon(QStringLiteral("send-data")));
  text_->setText(QString::fromUtf8(download_.Confirmation()));
  LayOut();
  MakeTimers(services.model.DownloadInterval);
  connect(ok_, &QPushButton::clicked, this, [this] { download_.Go(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { download_.Cancel(); });
}

void DownloadWindow::LayOut() {
  text_->setObjectName(QStringLiteral("lblDownloadText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  text_->setMinimumWidth(kTextCharacters * fontMetrics().averageCharWidth());
  status_->setObjectName(QStringLiteral("lblDownloadStatus"));
  status_->setTextFormat(Qt::PlainText);
  status_->hide();
  bar_->setObjectName(QStringLiteral("pbDownloadProg"));
  bar_->setAccessibleName(tr("Download progress"));
  bar_->hide();
  ok_->setObjectName(QStringLiteral("cmdDownGo"));
  cancel_->setObjectName(QStringLiteral("cmdDownCancel"));
  // The other one reprograms a live switcher: Enter is for it only where it has the focus.
  cancel_->setDefault(true);
  new HeldEnter(*this, *cancel_);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(text_);
  layout->addWidget(status_);
  layout->addWidget(bar_);
  layout->addSpacing(layout->spacing());
  layout->addStretch();
  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel_, QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);
  // Only now: on the way into the box a button loses the focus.
  cancel_->setFocus();
}

void DownloadWindow::MakeTimers(int spacingMilliseconds) {
  delayTimer_.setObjectName(QStringLiteral("tmrDelayStart"));
  delayTimer_.setInterval(switcher::Download::kDelayMilliseconds);
  spacingTimer_.setObjectName(QStringLiteral("tmrSpacing"));
  spacingTimer_.setInterval(std::max(0, spacingMilliseconds));
  spacingTimer_.setTimerType(Qt::PreciseTimer);
  turnTimer_.setObjectName(QStringLiteral("tmrNextMessage"));
  turnTimer_.setInterval(0);
  for (QTimer* const timer : {&delayTimer_, &spacingTimer_, &turnTimer_}) {
    timer->setParent(this);
    timer->setSingleShot(true);
  }
  connect(&delayTimer_, &QTimer::timeout, this, [this] { download_.DelayTick(); });
  connect(&spacingTimer_, &QTimer::timeout, this, [this] { download_.SpacingTick(); });
  connect(&turnTimer_, &QTimer::timeout, this, [this] { download_.SendNext(); });
}

void DownloadWindow::ShowProgressBar(int maximum) {
  begun_ = true;
  Q_EMIT Begun();
  // The window stays as large as the explanation made it.
  setFixedSize(size());
  text_->hide();
  ok_->hide();
  // A range of nothing would show a bar that runs to and fro.
  bar_->setRange(0, std::max(1, maximum));
  bar_->setValue(0);
  status_->show();
  bar_->show();
}

void DownloadWindow::ShowCaption(std::string_view caption) {
  setWindowTitle(QString::fromUtf8(caption));
}

void DownloadWindow::ShowStatus(std::string_view status) {
  status_->setText(QString::fromUtf8(status));
  status_->repaint();
}

// The bar repaints itself at once when its look changes.
void DownloadWindow::ShowPosition(int position) { bar_->setValue(position); }

void DownloadWindow::ShowCancelling() { cancel_->setEnabled(false); }

void DownloadWindow::TableSent(const switcher::TablePart& part, int messages) {
  unsent_.NoteSent(part, messages, UnsentTables::Sender::Download);
}

void DownloadWindow::TableFailed(const switcher::TablePart& part) { unsent_.NoteFailed(part); }

void DownloadWindow::Close() {
  delayTimer_.stop();
  spacingTimer_.stop();
  turnTimer_.stop();
  if (begun_) Q_EMIT Ended(download_.Result());
  done(QDialog::Accepted);
}

}  // namespace views
