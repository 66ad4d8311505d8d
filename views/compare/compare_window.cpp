// SPDX-License-Identifier: MIT

#include "views/compare/compare_window.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "model/locks.h"
#include "stations/carry_out.h"
#include "views/compare/compare_rows.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/window_place/on_screen.h"
#include "views/words.h"

namespace views {

namespace {

constexpr int kCompareCharacters = 100;
constexpr int kComparedRows = 14;
constexpr int kCompareSecond = 1000;

bool Has(const std::vector<ChangeRow>& rows, const ChangeRow& wanted) {
  return std::ranges::any_of(rows, [&](const ChangeRow& row) {
    return row.station == wanted.station && row.fields == wanted.fields;
  });
}

// Whether all that the row is sent in is among the parts.
bool IsAmong(const ChangeRow& row, const std::vector<switcher::TablePart>& parts) {
  stations::Change change{
      .origin = stations::Origin::Comparison, .station = row.station, .fields = {}};
  for (const std::string& field : row.fields) {
    change.fields.push_back({.field = field, .before = {}, .after = {}});
  }
  return std::ranges::all_of(PartsOf({&change, 1}), [&](const switcher::TablePart& part) {
    return std::ranges::find(parts, part) != parts.end();
  });
}

}  // namespace

CompareWindow::CompareWindow(const Services& services, QWidget* parent)
    : QDialog(parent),
      services_(services),
      sign_(new QLabel(this)),
      summary_(new QLabel(this)),
      link_(new LinkLine(services.comparison.model, tr("Not connected: no switcher would answer."),
                         this)),
      line_(new QLabel(this)),
      silence_(new QLabel(this)),
      list_(new DifferenceList({.filter = QStringLiteral("txtFilterCmp"),
                                .list = QStringLiteral("lstDifferences"),
                                .before = tr("Here"),
                                .after = tr("Switcher")},
                               this)),
      choice_(new QLabel(this)),
      again_(new QPushButton(tr("&Compare Again"), this)),
      store_(new QPushButton(tr("&Store Here"), this)),
      send_(new QPushButton(tr("Send &To Switcher"), this)),
      close_(new QPushButton(tr("Close"), this)),
      comparison_(services.comparison, *this) {
  setObjectName(QStringLiteral("frmCompare"));
  setWindowTitle(tr("Compare With Switcher"));
  setWindowIcon(Icon(QStringLiteral("compare")));
  LayOut();
  MakeTimers();
  connect(again_, &QPushButton::clicked, this, [this] { comparison_.Go(); });
  connect(store_, &QPushButton::clicked, this, &CompareWindow::Store);
  connect(send_, &QPushButton::clicked, this, &CompareWindow::Send);
  connect(close_, &QPushButton::clicked, this, &CompareWindow::reject);
  connect(list_, &DifferenceList::TicksChanged, this, &CompareWindow::ShowChoice);
}

void CompareWindow::LayOut() {
  sign_->setObjectName(QStringLiteral("aidCompareSign"));
  summary_->setObjectName(QStringLiteral("aidCompareSummary"));
  link_->setObjectName(QStringLiteral("aidCompareLink"));
  link_->Follow();
  line_->setObjectName(QStringLiteral("aidCompareLine"));
  silence_->setObjectName(QStringLiteral("aidCompareSilence"));
  choice_->setObjectName(QStringLiteral("aidCompareChoice"));
  for (QLabel* const label : {summary_, line_, silence_, choice_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  again_->setObjectName(QStringLiteral("aidCompareAgain"));
  store_->setObjectName(QStringLiteral("cmdStoreCmp"));
  store_->setToolTip(tr("Store what the switcher holds of the ticked rows here"));
  send_->setObjectName(QStringLiteral("cmdSendCmp"));
  send_->setToolTip(tr("Send the tables of the ticked rows to the switcher as they are here"));
  close_->setObjectName(QStringLiteral("cmdCloseCmp"));
  // Enter in the filter presses none of them.
  for (QPushButton* const button : {again_, store_, send_, close_}) button->setAutoDefault(false);

  auto* const result = new QHBoxLayout;
  result->addWidget(sign_);
  result->addWidget(summary_, 1);
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(again_);
  buttons->addStretch(1);
  for (QPushButton* const button : {store_, send_, close_}) buttons->addWidget(button);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(result);
  layout->addWidget(link_);
  layout->addWidget(line_);
  layout->addWidget(silence_);
  layout->addWidget(list_, 1);
  layout->addWidget(choice_);
  layout->addLayout(buttons);
  const QSize size(kCompareCharacters * fontMetrics().averageCharWidth(),
                   sizeHint().height() + kComparedRows * RowHeight(fontMetrics()) / 2);
  resize(SizeOnScreen(size, screen()->availableSize()));
}

void CompareWindow::MakeTimers() {
  delayTimer_.setParent(this);
  delayTimer_.setObjectName(QStringLiteral("aidCompareDelayTimer"));
  delayTimer_.setInterval(switcher::Retrieval::kDelayMilliseconds);
  delayTimer_.setSingleShot(true);
  secondTimer_.setParent(this);
  secondTimer_.setObjectName(QStringLiteral("aidCompareSecondTimer"));
  secondTimer_.setInterval(kCompareSecond);
  connect(&delayTimer_, &QTimer::timeout, this, [this] { comparison_.DelayTick(); });
  connect(&secondTimer_, &QTimer::timeout, this, [this] {
    comparison_.SecondTick();
    if (!comparison_.IsListening()) secondTimer_.stop();
  });
}

void CompareWindow::Begin() {
  const bool wasShown = isVisible();
  show();
  raise();
  activateWindow();
  if (!wasShown) comparison_.Go();
}

void CompareWindow::reject() {
  if (comparison_.IsWaiting()) {
    comparison_.Cancel();
  } else {
    hide();
  }
}

void CompareWindow::CancelNow() {
  comparison_.Cancel();
  hide();
}

void CompareWindow::SetWaiting(bool waiting) {
  again_->setEnabled(!waiting);
  close_->setText(waiting ? tr("Cancel") : tr("Close"));
  list_->setEnabled(!waiting);
  line_->hide();
  silence_->setVisible(waiting);
  sign_->setVisible(!waiting);
  ShowChoice();
}

void CompareWindow::ShowHeldUp() {
  summary_->setText(
      tr("The switcher is still sending what it was asked for before. It is asked "
         "again when it has ended."));
  SetWaiting(true);
}

void CompareWindow::ShowWaiting() {
  differences_.clear();
  rows_.clear();
  list_->SetRows({});
  ShowProgress(0, 0);
  ShowSilence(0);
  secondTimer_.start();
  SetWaiting(true);
  isBegun_ = true;
  Q_EMIT Begun();
}

void CompareWindow::ShowProgress(int messages, int bytes) {
  summary_->setText(tr("Comparing: %1 tables, %2 bytes").arg(messages).arg(bytes));
}

void CompareWindow::ShowSilence(int seconds) {
  silence_->setText(seconds == 0 ? QString() : tr("No data for %1 s").arg(seconds));
}

void CompareWindow::ShowLine(switcher::RetrievalLine line) {
  const int port = services_.comparison.model.ComPort;
  line_->setVisible(line != switcher::RetrievalLine::Open);
  line_->setText(line == switcher::RetrievalLine::Closed
                     ? tr("COM %1 is not open. It is tried again every second.").arg(port)
                     : tr("COM %1 was lost and is open again. Tables may be missing: cancel, and "
                          "compare again.")
                           .arg(port));
}

void CompareWindow::ShowResult(const switcher::ComparisonResult& result) {
  differences_ = result.differences;
  rows_ = CompareRows(result, comparison_.ReportedDatabase());
  list_->SetRows(rows_);
  summary_->setText(CompareSummary(result));
  // A difference is neither good nor bad; what is not known wants another comparison.
  ShowSign(!result.IsWhole() ? QStringLiteral("msg-fail")
           : rows_.empty()   ? QStringLiteral("msg-ok")
                             : QStringLiteral("compare"));
  SetWaiting(false);
  FocusList();
  if (std::exchange(isBegun_, false)) Q_EMIT Ended(result);
}

// The next key is about the rows.
void CompareWindow::FocusList() {
  if (rows_.empty()) {
    close_->setFocus();
  } else {
    list_->setFocus();
  }
}

void CompareWindow::ShowSign(const QString& name) {
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  sign_->setPixmap(Icon(name).pixmap(QSize(size, size), devicePixelRatioF()));
}

// What is sent are whole tables, so that more may go than what is ticked.
void CompareWindow::ShowChoice() {
  const bool canChoose = !comparison_.IsWaiting() && list_->TickedCount() > 0;
  store_->setEnabled(canChoose);
  send_->setEnabled(canChoose);
  choice_->setText(canChoose ? tr("Whole tables are sent: %1")
                                   .arg(PartWords(PartsOf(Chosen(differences_, list_->Ticked()))))
                             : QString());
}

// A row of which anything was edited since is left out whole: half a button is none.
void CompareWindow::Store() {
  if (!services_.changes.MayStore(stations::Origin::Comparison)) {
    model::ShowConsoleLocked(services_.comparison.reporter);
    return;
  }
  if (!services_.storeEdits()) return;
  jet::Database* const database = services_.comparison.database();
  if (database == nullptr) return;
  std::vector<ChangeRow> rows = list_->Ticked();
  std::vector<stations::Conflict> conflicts;
  model::Status status = stations::FindConflicts(*database, Chosen(differences_, rows),
                                                 stations::Direction::Again, &conflicts);
  constexpr std::string_view kStoring = "Storing What The Switcher Holds";
  if (!status.ok()) return model::ReportError(services_.comparison.reporter, kStoring, status);
  const std::vector<ChangeRow> skipped = TakeOut(conflicts, &rows);
  std::vector<stations::Change> wanted = Chosen(differences_, rows);
  for (stations::Change& change : wanted) change.origin = stations::Origin::Comparison;
  status = stations::CarryOut(*database, wanted, stations::Direction::Again,
                              {services_.changes, stations::Origin::Comparison});
  if (!status.ok()) return model::ReportError(services_.comparison.reporter, kStoring, status);
  ShowStored(rows, skipped);
  if (!wanted.empty()) Q_EMIT Stored(wanted);
}

void CompareWindow::ShowStored(const std::vector<ChangeRow>& stored,
                               const std::vector<ChangeRow>& skipped) {
  std::erase_if(rows_, [&](const Difference& each) { return Has(stored, each.row); });
  for (Difference& each : rows_) {
    if (Has(skipped, each.row)) each.obstacle = tr("Edited here since. Compare again.");
  }
  list_->SetRows(rows_);
  QString summary =
      stored.size() == 1 ? tr("1 row stored") : tr("%1 rows stored").arg(stored.size());
  if (!skipped.empty()) {
    summary =
        tr("%1. Left out, because they were edited here since: %2").arg(summary, RowNames(skipped));
  }
  summary_->setText(summary);
  ShowSign(skipped.empty() ? QStringLiteral("msg-ok") : QStringLiteral("msg-fail"));
}

void CompareWindow::NoteSent(const std::vector<switcher::TablePart>& parts) {
  for (Difference& each : rows_) {
    if (each.obstacle.isEmpty() && IsAmong(each.row, parts)) {
      each.obstacle = tr("Sent since. Compare again.");
    }
  }
  list_->SetRows(rows_);
}

void CompareWindow::Send() { Q_EMIT SendRequested(PartsOf(Chosen(differences_, list_->Ticked()))); }

}  // namespace views
