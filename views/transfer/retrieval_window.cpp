// SPDX-License-Identifier: MIT

#include "views/transfer/retrieval_window.h"

#include <QDialogButtonBox>
#include <QScreen>
#include <QVBoxLayout>

#include "views/icon.h"
#include "views/on_screen.h"
#include "views/transfer/held_enter.h"

namespace views {

namespace {

constexpr int kHistoryRows = 14;
constexpr int kSecond = 1000;

}  // namespace

RetrievalWindow::RetrievalWindow(const RetrievalServices& services, QWidget* parent)
    : QDialog(parent),
      closeViews_(services.closeViews),
      text_(new QLabel(this)),
      history_(new MessageList(this)),
      silence_(new QLabel(this)),
      ok_(new QPushButton(tr("OK"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)),
      retrieval_(services.model, services.decoder, services.port, services.poll, services.reporter,
                 *this) {
  setObjectName(QStringLiteral("frmSysInfo"));
  setWindowTitle(QString::fromUtf8(switcher::Retrieval::kCaption));
  setWindowIcon(Icon(QStringLiteral("retrieve-data")));
  text_->setText(QString::fromUtf8(switcher::Retrieval::kConfirmation));
  LayOut();
  MakeTimers();
  connect(ok_, &QPushButton::clicked, this, [this] { retrieval_.Go(); });
  connect(cancel_, &QPushButton::clicked, this, [this] { retrieval_.Cancel(); });
}

void RetrievalWindow::LayOut() {
  text_->setObjectName(QStringLiteral("lblSysInfText"));
  text_->setTextFormat(Qt::PlainText);
  history_->hide();
  silence_->setObjectName(QStringLiteral("aidSilence"));
  silence_->setTextFormat(Qt::PlainText);
  ok_->setObjectName(QStringLiteral("cmdOkSysInf"));
  cancel_->setObjectName(QStringLiteral("cmdCancelSysInf"));
  // The other one overwrites the computer's own tables: Enter is for it only where it has the
  // focus.
  cancel_->setDefault(true);
  new HeldEnter(*this, *cancel_);

  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel_, QDialogButtonBox::RejectRole);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(text_);
  layout->addWidget(history_, 1);
  layout->addWidget(silence_);
  layout->addWidget(buttons);
  // Only now: on the way into the box a button loses the focus.
  cancel_->setFocus();
}

void RetrievalWindow::MakeTimers() {
  delayTimer_.setObjectName(QStringLiteral("tmrDelayStart"));
  delayTimer_.setInterval(switcher::Retrieval::kDelayMilliseconds);
  delayTimer_.setSingleShot(true);
  secondTimer_.setObjectName(QStringLiteral("aidSecondTimer"));
  secondTimer_.setInterval(kSecond);
  for (QTimer* const timer : {&delayTimer_, &secondTimer_}) timer->setParent(this);
  connect(&delayTimer_, &QTimer::timeout, this, [this] { retrieval_.DelayTick(); });
  connect(&secondTimer_, &QTimer::timeout, this, [this] { retrieval_.SecondTick(); });
}

void RetrievalWindow::ShowHistory() {
  history_->clear();
  if (!history_->isHidden()) return;
  text_->hide();
  history_->show();
  const int rowHeight = fontMetrics().height() + 4;
  const QRect room = screen()->availableGeometry();
  resize(SizeOnScreen(QSize(width(), height() - text_->height() + kHistoryRows * rowHeight),
                      room.size()));
  // It grows downwards, and its buttons stand at the bottom.
  move(CornerOnScreen(frameGeometry(), room));
}

void RetrievalWindow::SetWaiting(bool waiting) {
  ok_->setEnabled(!waiting);
  if (waiting) {
    secondTimer_.start();
    Q_EMIT Begun();
    return;
  }
  secondTimer_.stop();
  if (!retrieval_.IsCompleted()) {
    Q_EMIT Cancelled();
    return;
  }
  if (!retrieval_.HasRefusals()) Q_EMIT Retrieved();
  Q_EMIT Finished(retrieval_.HasRefusals());
}

void RetrievalWindow::AddMessage(std::string_view description, int byteCount,
                                 switcher::DecodeStatus status) {
  history_->AddMessage(QString::fromUtf8(description), byteCount, status);
}

void RetrievalWindow::ShowCaption(std::string_view caption) {
  setWindowTitle(QString::fromUtf8(caption));
}

void RetrievalWindow::ShowSilence(int seconds) {
  silence_->setText(seconds == 0 ? QString() : tr("No data for %1 s").arg(seconds));
}

void RetrievalWindow::CancelNow() {
  reject();
  if (isVisible()) reject();
}

void RetrievalWindow::Close() { done(QDialog::Accepted); }

}  // namespace views
