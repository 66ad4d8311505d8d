// SPDX-License-Identifier: MIT

#include "views/transfer/retrieval_window.h"

#include <QDialogButtonBox>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "views/transfer/transfer_words.h"
#include "views/widgets/held_enter.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/widgets/title_width.h"
#include "views/window_place/on_screen.h"

namespace views {

namespace {

constexpr int kHistoryRows = 14;
constexpr int kSecond = 1000;
constexpr int kRetrievalTitleCharacters = 39;  // with seven digits

}  // namespace

RetrievalWindow::RetrievalWindow(const switcher::Retrieval::Services& services, QWidget* parent)
    : QDialog(parent),
      model_(services.model),
      text_(new QLabel(this)),
      warning_(new QWidget(this)),
      warningSign_(new QLabel(this)),
      warningText_(new QLabel(this)),
      link_(new LinkLine(model_, tr("Not connected: no switcher would answer."), this)),
      history_(new MessageList(this)),
      line_(new QLabel(this)),
      silence_(new QLabel(this)),
      sign_(new QLabel(this)),
      summary_(new QLabel(this)),
      ok_(new QPushButton(tr("OK"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)),
      retrieval_(services, *this) {
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
  warningSign_->setObjectName(QStringLiteral("aidUnsentWarningSign"));
  warningText_->setObjectName(QStringLiteral("aidUnsentWarning"));
  warningText_->setTextFormat(Qt::PlainText);
  warningText_->setWordWrap(true);
  auto* const warning = new QHBoxLayout(warning_);
  warning->setContentsMargins(0, 0, 0, 0);
  warning->addWidget(warningSign_);
  warning->addWidget(warningText_, 1);
  warning_->hide();
  link_->setObjectName(QStringLiteral("aidRetrievalLink"));
  history_->hide();
  line_->setObjectName(QStringLiteral("aidRetrievalLine"));
  silence_->setObjectName(QStringLiteral("aidSilence"));
  summary_->setObjectName(QStringLiteral("aidSummary"));
  for (QLabel* const label : {line_, silence_, summary_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  line_->hide();
  sign_->hide();
  summary_->hide();
  ok_->setObjectName(QStringLiteral("cmdOkSysInf"));
  cancel_->setObjectName(QStringLiteral("cmdCancelSysInf"));
  // The other one overwrites the computer's own tables: Enter is for it only where it has the
  // focus.
  cancel_->setDefault(true);
  new HeldEnter(*this, *cancel_);

  auto* const buttons = new QDialogButtonBox(this);
  buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
  buttons->addButton(cancel_, QDialogButtonBox::RejectRole);

  auto* const result = new QHBoxLayout;
  result->addWidget(sign_);
  result->addWidget(summary_, 1);

  auto* const layout = new QVBoxLayout(this);
  // As wide as the title at least, and never narrower than the lines of the question.
  layout->addStrut(TitleWidth(*this, kRetrievalTitleCharacters));
  layout->addWidget(text_);
  layout->addWidget(warning_);
  layout->addWidget(link_);
  layout->addWidget(history_, 1);
  layout->addWidget(line_);
  layout->addWidget(silence_);
  layout->addLayout(result);
  layout->addWidget(buttons);
  // Only now: on the way into the box a button loses the focus.
  cancel_->setFocus();
}

void RetrievalWindow::SetWarning(const QString& warning) {
  ShowSign(*warningSign_, QStringLiteral("msg-fail"));
  warningText_->setText(warning);
  warning_->setVisible(!warning.isEmpty());
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
  const int question =
      text_->height() + link_->height() + (warning_->isHidden() ? 0 : warning_->height());
  link_->End();
  text_->hide();
  warning_->hide();
  history_->show();
  const QRect room = screen()->availableGeometry();
  resize(SizeOnScreen(QSize(width(), height() - question + kHistoryRows * RowHeight(fontMetrics())),
                      room.size()));
  // It grows downwards, and its buttons stand at the bottom.
  move(CornerOnScreen(frameGeometry(), room));
}

void RetrievalWindow::SetWaiting(bool waiting) {
  ok_->setEnabled(!waiting);
  ok_->setText(waiting ? tr("OK") : tr("Retrieve Again"));
  cancel_->setText(waiting ? tr("Cancel") : tr("Close"));
  // Whoever presses Enter at the end wants to be done, not to begin another retrieval.
  cancel_->setFocus();
  line_->hide();
  silence_->setVisible(waiting);
  sign_->setVisible(!waiting);
  summary_->setVisible(!waiting);
  if (waiting) {
    link_->End();
    secondTimer_.start();
    Q_EMIT Begun();
    return;
  }
  secondTimer_.stop();
  link_->Follow();
  ShowResult(retrieval_.Result());
  Q_EMIT Ended(retrieval_.Result());
}

void RetrievalWindow::ShowResult(const switcher::RetrievalResult& result) {
  const QString summary = RetrievalSummary(result);
  summary_->setText(result.completed ? summary : tr("Cancelled. %1").arg(summary));
  ShowSign(*sign_, result.IsWhole() ? QStringLiteral("msg-ok") : QStringLiteral("msg-fail"));
  history_->ShowFirstRefused();
}

void RetrievalWindow::ShowSign(QLabel& label, const QString& name) {
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  label.setPixmap(Icon(name).pixmap(QSize(size, size), devicePixelRatioF()));
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

void RetrievalWindow::ShowLine(switcher::RetrievalLine line) {
  line_->setVisible(line != switcher::RetrievalLine::Open);
  line_->setText(line == switcher::RetrievalLine::Closed
                     ? tr("COM %1 is not open. It is tried again every second.").arg(model_.ComPort)
                     : tr("COM %1 was lost and is open again. Tables may be missing: cancel, and "
                          "retrieve again.")
                           .arg(model_.ComPort));
}

void RetrievalWindow::CancelNow() {
  reject();
  if (isVisible()) reject();
}

void RetrievalWindow::Close() { done(QDialog::Accepted); }

}  // namespace views
