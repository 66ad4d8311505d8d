// SPDX-License-Identifier: MIT

#include "views/transfer/sending_window.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "views/widgets/held_enter.h"

namespace views {

SendingWindow::SendingWindow(const Services& services, const Names& names, QWidget* parent)
    : QDialog(parent),
      unsent_(services.unsent),
      tables_(services.tables),
      link_(new LinkLine(services.model, tr("Not connected: nothing would arrive."), this)),
      status_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      ok_(new QPushButton(tr("OK"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)),
      download_({.model = services.model, .tables = services.tables, .poll = services.poll},
                *this) {
  link_->setObjectName(QLatin1String(names.link));
  status_->setObjectName(QLatin1String(names.status));
  status_->setTextFormat(Qt::PlainText);
  status_->hide();
  bar_->setObjectName(QLatin1String(names.bar));
  bar_->hide();
  ok_->setObjectName(QLatin1String(names.ok));
  cancel_->setObjectName(QLatin1String(names.cancel));
  // The other one reprograms a live switcher: Enter is for it only where it has the focus.
  cancel_->setDefault(true);
  new HeldEnter(*this, *cancel_);
  MakeTimers(services.model.DownloadInterval);
  connect(cancel_, &QPushButton::clicked, this, [this] { reject(); });
}

void SendingWindow::LayOut(QLayout* question) {
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(question, 1);
  layout->addWidget(link_);
  layout->addWidget(status_);
  layout->addWidget(bar_);
  layout->addSpacing(layout->spacing());
  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel_, QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);
  // Only now: on the way into the box a button loses the focus.
  cancel_->setFocus();
}

void SendingWindow::MakeTimers(int spacingMilliseconds) {
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

void SendingWindow::ShowProgressBar(int maximum) {
  begun_ = true;
  Q_EMIT Begun();
  // The window stays as large as the question made it.
  setFixedSize(size());
  // They leave the status line and the bar their room.
  link_->End();
  ShowSending();
  ok_->hide();
  // A range of nothing would show a bar that runs to and fro.
  bar_->setRange(0, std::max(1, maximum));
  bar_->setValue(0);
  status_->show();
  bar_->show();
  // The status line is painted at once: where it will stand, so that nothing is painted twice.
  layout()->activate();
}

void SendingWindow::FreeSize() {
  setMinimumSize(0, 0);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  // As large as before, and larger where its texts need it.
  layout()->activate();
  resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
}

void SendingWindow::ShowCaption(std::string_view caption) {
  setWindowTitle(QString::fromUtf8(caption));
}

void SendingWindow::ShowStatus(std::string_view status) {
  status_->setText(QString::fromUtf8(status));
  status_->repaint();
}

// The bar repaints itself at once when its look changes.
void SendingWindow::ShowPosition(int position) { bar_->setValue(position); }

void SendingWindow::ShowCancelling() { cancel_->setEnabled(false); }

void SendingWindow::TableSent(const switcher::TablePart& part, int messages) {
  unsent_.NoteSent(part, messages, UnsentTables::Sender::Download);
}

void SendingWindow::TableFailed(const switcher::TablePart& part) { unsent_.NoteFailed(part); }

void SendingWindow::Close() {
  TellEnd();
  done(QDialog::Accepted);
}

void SendingWindow::TellEnd() {
  delayTimer_.stop();
  spacingTimer_.stop();
  turnTimer_.stop();
  if (std::exchange(begun_, false)) Q_EMIT Ended(download_.Result());
}

}  // namespace views
