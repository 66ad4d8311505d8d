// SPDX-License-Identifier: MIT

#include "views/transfer/send_changes_window.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include <algorithm>

#include "switcher/download_plan.h"
#include "switcher/line_pace.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/words.h"

namespace views {
namespace {

enum UnsentColumn { kMessage, kSince, kBytes, kSeconds, kUnsentColumns };

constexpr int kListedRows = 12;

// "4 ms", "0.16 s", "12.3 s".
QString TimeWords(int milliseconds) {
  if (milliseconds < 10) return QStringLiteral("%1 ms").arg(milliseconds);
  const double seconds = milliseconds / 1000.0;
  return QStringLiteral("%1 s").arg(seconds, 0, 'f', seconds < 1 ? 2 : 1);
}

bool Has(const UnsentTables::Parts& parts, const switcher::TablePart& part) {
  return std::ranges::find(parts, part) != parts.end();
}

// "Inhibits of output 3"
QString RowWords(const switcher::TablePart& part) {
  QString words = PartWords({&part, 1});
  words[0] = words[0].toUpper();
  return words;
}

}  // namespace

SendChangesWindow::SendChangesWindow(const Services& services, const UnsentTables::Parts& parts,
                                     QWidget* parent)
    : SendingWindow(services,
                    {.link = "aidSendChgLink",
                     .status = "lblSendChg",
                     .bar = "pbSendChg",
                     .ok = "cmdOkSendChg",
                     .cancel = "cmdCancelSendChg"},
                    parent),
      model_(services.model),
      text_(new QLabel(this)),
      list_(new QTreeWidget(this)),
      sum_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmSendChanges"));
  setWindowTitle(tr("Send Changes"));
  setWindowIcon(Icon(QStringLiteral("send-changes")));
  text_->setObjectName(QStringLiteral("aidSendChgText"));
  sum_->setObjectName(QStringLiteral("aidSendChgSum"));
  for (QLabel* const label : {text_, sum_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  text_->setMinimumWidth(kTextCharacters * fontMetrics().averageCharWidth());
  Bar().setAccessibleName(tr("Progress of sending"));
  FillList(parts);
  auto* const question = new QVBoxLayout;
  for (QWidget* const widget : std::initializer_list<QWidget*>{text_, list_, sum_}) {
    question->addWidget(widget, widget == list_ ? 1 : 0);
  }
  LayOut(question);
  if (parts_.empty()) {
    Link().End();
    Ok().hide();
    Cancel().setText(tr("Close"));
  } else {
    list_->setFocus();
  }
  connect(&Link(), &LinkLine::ConnectionChanged, this, &SendChangesWindow::UpdateQuestion);
  connect(list_, &QTreeWidget::itemChanged, this, &SendChangesWindow::UpdateQuestion);
  connect(&Unsent(), &UnsentTables::Changed, this, &SendChangesWindow::LookForAnswer);
  connect(&Unsent(), &UnsentTables::NotConfirmed, this, &SendChangesWindow::NoteUnconfirmed);
  connect(&Ok(), &QPushButton::clicked, this, [this] {
    sent_ = Ticked();
    Sending().GoFor(sent_, SizeOf(sent_));
  });
  UpdateQuestion();
}

void SendChangesWindow::FillList(const UnsentTables::Parts& parts) {
  parts_ = parts;
  list_->setObjectName(QStringLiteral("lstUnsent"));
  list_->setAccessibleName(tr("What is sent"));
  list_->setColumnCount(kUnsentColumns);
  list_->setHeaderLabels({tr("Message"), tr("Since"), tr("Bytes"), tr("Time")});
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setTabKeyNavigation(false);
  list_->header()->setSectionsMovable(false);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(kMessage, QHeaderView::Stretch);
  for (const int column : {kBytes, kSeconds}) {
    list_->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
  }
  for (const switcher::TablePart& part : parts) {
    const int bytes = Unsent().SizeOf(part).bytes;
    const std::optional<switcher::Day> since = Unsent().Since(part);
    auto* const row = new QTreeWidgetItem({RowWords(part), since ? DayWords(*since) : QString(),
                                           QString::number(bytes), TimeWords(TimeOf({part}))});
    row->setCheckState(kMessage, Qt::Checked);
    // Of the column whose width is not that of its contents.
    row->setSizeHint(kMessage, QSize(0, RowHeight(fontMetrics())));
    for (const int column : {kBytes, kSeconds}) {
      row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    list_->addTopLevelItem(row);
  }
  if (!parts.empty()) list_->setCurrentItem(list_->topLevelItem(0));
  list_->setMinimumHeight(kListedRows * RowHeight(fontMetrics()));
  list_->setVisible(!parts.empty());
  sum_->setVisible(!parts.empty());
  if (!parts.empty()) {
    text_->setText(
        tr("The switcher does not hold these messages as they are here. Those that "
           "are ticked are sent, and nothing else."));
  } else if (const QString neverSeen = Unsent().NeverSeenWords(); !neverSeen.isEmpty()) {
    text_->setText(neverSeen);
  } else {
    text_->setText(tr("Nothing is unsent: what is edited here is in the switcher."));
  }
}

switcher::MessageSize SendChangesWindow::SizeOf(const UnsentTables::Parts& parts) const {
  switcher::MessageSize size;
  for (const switcher::TablePart& part : parts) size += Unsent().SizeOf(part);
  return size;
}

// In milliseconds, with the pauses that the switcher is given to store.
int SendChangesWindow::TimeOf(const UnsentTables::Parts& parts) const {
  constexpr double kMilliseconds = 1000.0 / switcher::LinePace::kBytesPerSecond;
  const auto pauses = std::ranges::count(switcher::PlanSending(parts, Tables()), true,
                                         &switcher::DownloadStage::pauses);
  return qRound(SizeOf(parts).bytes * kMilliseconds) +
         static_cast<int>(pauses) * std::max<int>(model_.DownloadInterval, 0);
}

UnsentTables::Parts SendChangesWindow::Ticked() const {
  UnsentTables::Parts ticked;
  for (int row = 0; row < list_->topLevelItemCount(); ++row) {
    if (list_->topLevelItem(row)->checkState(kMessage) == Qt::Checked) {
      ticked.push_back(parts_[static_cast<std::size_t>(row)]);
    }
  }
  return ticked;
}

QString SendChangesWindow::SumWords(const UnsentTables::Parts& ticked) const {
  if (ticked.empty()) return tr("Nothing is ticked");
  const int bytes = SizeOf(ticked).bytes;
  const QString time = TimeWords(TimeOf(ticked));
  return ticked.size() == 1
             ? tr("1 message, %1 bytes, %2").arg(bytes).arg(time)
             : tr("%1 messages, %2 bytes, %3").arg(ticked.size()).arg(bytes).arg(time);
}

void SendChangesWindow::UpdateQuestion() {
  if (state_ != State::Asking) return;
  const UnsentTables::Parts ticked = Ticked();
  sum_->setText(SumWords(ticked));
  Ok().setEnabled(Link().IsConnected() && !ticked.empty());
}

void SendChangesWindow::ShowSending() {
  state_ = State::Sending;
  list_->setEnabled(false);
  // They leave the status line and the bar their room; what that takes more is the list's.
  for (QLabel* const label : {text_, sum_}) label->hide();
  list_->setMinimumHeight(0);
}

void SendChangesWindow::Close() {
  if (state_ == State::Sending && !closing_) {
    Wait();
  } else {
    SendingWindow::Close();
  }
}

void SendChangesWindow::CancelNow() {
  closing_ = true;
  SendingWindow::CancelNow();
  if (isVisible()) SendingWindow::Close();
}

void SendChangesWindow::reject() {
  if (state_ == State::Waiting || state_ == State::Over) {
    done(QDialog::Rejected);
  } else {
    SendingWindow::reject();
  }
}

// Everything is handed to the line; the poll is on again.
void SendChangesWindow::Wait() {
  state_ = State::Waiting;
  Bar().setValue(Bar().maximum());
  Status().setText(tr("Waiting for the switcher's answer"));
  Cancel().setText(tr("Close"));
  Cancel().setEnabled(true);
  Cancel().setFocus();
  TellEnd();
  LookForAnswer();
}

void SendChangesWindow::LookForAnswer() {
  if (state_ == State::Waiting && !Unsent().IsWaiting()) ShowEnd();
}

void SendChangesWindow::NoteUnconfirmed(const UnsentTables::Parts& parts) {
  std::ranges::copy_if(parts, std::back_inserter(unconfirmed_),
                       [this](const auto& part) { return Has(sent_, part); });
  LookForAnswer();
}

void SendChangesWindow::ShowEnd() {
  state_ = State::Over;
  const switcher::DownloadResult& result = Sending().Result();
  // What went out and is in the list of what is unsent as before was not confirmed.
  UnsentTables::Parts unconfirmed;
  const UnsentTables::Parts unsent = Unsent().All();
  std::ranges::copy_if(sent_, std::back_inserter(unconfirmed), [&](const auto& part) {
    return !Has(result.leftOut, part) && !Has(result.failed, part) &&
           (Has(unsent, part) || Has(unconfirmed_, part));
  });
  QStringList words;
  const auto add = [&words](const QString& text, const UnsentTables::Parts& parts) {
    if (!parts.empty()) words += text.arg(PartWords(parts));
  };
  add(tr("Cancelled, and not sent: %1"), result.leftOut);
  add(tr("Could not be sent: %1"), result.failed);
  add(tr("Not confirmed by the switcher, and unsent as before: %1"), unconfirmed);
  if (words.empty()) {
    Q_EMIT Confirmed(result.sent, sent_);
    done(QDialog::Accepted);
    return;
  }
  Bar().hide();
  Status().setWordWrap(true);
  Status().setText(words.join(u'\n'));
  FreeSize();
}

}  // namespace views
