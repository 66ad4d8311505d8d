// SPDX-License-Identifier: MIT

#include "views/presets/recall_window.h"

#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "views/presets/preset_words.h"
#include "views/widgets/icon.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

using switcher::PresetDifference;
using switcher::RecallOutcome;
using switcher::RecallRow;

constexpr int kRecallWidth = 100;  // characters
constexpr int kRecallShown = 14;
constexpr int kLookMilliseconds = 1000;

}  // namespace

RecallWindow::RecallWindow(Services services, const QString& name, const switcher::Preset& preset,
                           QWidget* parent)
    : QDialog(parent),
      services_(std::move(services)),
      differences_(
          switcher::Differences(preset, services_.model, services_.locks, services_.facts)),
      hasMisfits_(preset.channels != services_.model.CrosspointMap.Size() ||
                  std::ranges::any_of(differences_, &PresetDifference::IsMisfit)),
      recall_(services_, *this),
      text_(new QLabel(this)),
      list_(new DifferenceList({.filter = QStringLiteral("aidFilterRecall"),
                                .list = QStringLiteral("lstRecall"),
                                .before = tr("Hears now"),
                                .after = tr("In the preset")},
                               this)),
      rest_(new QCheckBox(tr("Recall the &rest, which fits"), this)),
      note_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      ok_(new QPushButton(tr("&Recall"), this)),
      cancel_(new QPushButton(tr("Cancel"), this)) {
  setObjectName(QStringLiteral("frmRecall"));
  setWindowTitle(tr("Recall: %1").arg(name));
  setWindowIcon(Icon(QStringLiteral("presets")));
  LayOut();
  FillList();
  text_->setText(Question());
  turnTimer_.setSingleShot(true);
  turnTimer_.setInterval(0);
  connect(&turnTimer_, &QTimer::timeout, this, [this] { recall_.Next(); });
  answerTimer_.setSingleShot(true);
  answerTimer_.setInterval(switcher::Recall::kAnswerMilliseconds);
  connect(&answerTimer_, &QTimer::timeout, this, [this] { recall_.AnswerOverdue(); });
  lookTimer_.setInterval(kLookMilliseconds);
  connect(&lookTimer_, &QTimer::timeout, this, &RecallWindow::UpdateQuestion);
  lookTimer_.start();
  connect(list_, &DifferenceList::TicksChanged, this, &RecallWindow::UpdateQuestion);
  connect(rest_, &QCheckBox::toggled, this, &RecallWindow::UpdateQuestion);
  keepTimer_.setSingleShot(true);
  keepTimer_.setInterval(kKeepMilliseconds);
  connect(&keepTimer_, &QTimer::timeout, this, [this] {
    late_ = tr("Nothing was sent: what the map is now could not be kept in time.");
    AskAgain();
  });
  connect(ok_, &QPushButton::clicked, this, &RecallWindow::Ask);
  connect(cancel_, &QPushButton::clicked, this, &RecallWindow::reject);
  UpdateQuestion();
}

void RecallWindow::LayOut() {
  for (QLabel* const label : {text_, note_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  text_->setObjectName(QStringLiteral("aidRecallText"));
  note_->setObjectName(QStringLiteral("aidRecallNote"));
  note_->setMinimumHeight(fontMetrics().lineSpacing());
  rest_->setObjectName(QStringLiteral("aidRecallRest"));
  rest_->setVisible(hasMisfits_ && !differences_.empty());
  bar_->setObjectName(QStringLiteral("aidRecallBar"));
  bar_->hide();
  ok_->setObjectName(QStringLiteral("cmdOkRecall"));
  cancel_->setObjectName(QStringLiteral("cmdCancelRecall"));
  // Enter in the list or in the filter sends nothing.
  ok_->setAutoDefault(false);
  cancel_->setAutoDefault(false);
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(text_);
  layout->addWidget(list_, 1);
  layout->addWidget(rest_);
  layout->addWidget(note_);
  layout->addWidget(bar_);
  layout->addLayout(buttons);
  const QSize wanted(kRecallWidth * fontMetrics().averageCharWidth(),
                     sizeHint().height() + kRecallShown * fontMetrics().height() / 2);
  resize(SizeOnScreen(wanted, screen()->availableSize()));
  list_->setFocus();
}

void RecallWindow::FillList() {
  std::vector<Difference> rows;
  for (const PresetDifference& difference : differences_) {
    const QString obstacle = ObstacleWords(difference);
    rows.emplace_back(ChangeRow{.station = difference.Output(),
                                .fields = {},
                                .where = OutputWords(difference.stored.output),
                                .what = ObstacleLabel(difference.obstacle),
                                .before = SourceWords(difference.now, services_.facts),
                                .after = SourceWords(difference.stored.hears)},
                      obstacle);
  }
  list_->SetRows(std::move(rows), true);
}

QString RecallWindow::Question() const {
  if (differences_.empty())
    return tr("The map is as it is in the preset. There is nothing to send.");
  const QString what =
      tr("What is ticked becomes as it is in the preset, one output after the other. What the map "
         "is now is kept as a preset first.");
  if (!hasMisfits_) return what;
  return tr("This preset was stored of another map: what does not fit cannot be ticked.") + u'\n' +
         what;
}

void RecallWindow::UpdateQuestion() {
  if (recall_.IsRunning() || isOver_) return;
  const auto obstacle = switcher::Recall::WhyNot(services_);
  note_->setText(isAsked_   ? tr("Keeping what the map is now…")
                 : obstacle ? RecallObstacleWords(*obstacle)
                            : late_);
  const bool isToldTo = !hasMisfits_ || rest_->isChecked();
  ok_->setEnabled(!isAsked_ && !obstacle && isToldTo && list_->TickedCount() > 0);
}

// What was asked for stays as it was asked for until it is begun.
void RecallWindow::Ask() {
  isAsked_ = true;
  SetChoosable(false);
  UpdateQuestion();
  cancel_->setFocus();
  keepTimer_.start();
  Q_EMIT RecallRequested();
}

void RecallWindow::SetChoosable(bool choosable) {
  list_->setEnabled(choosable);
  rest_->setEnabled(choosable);
}

const PresetDifference& RecallWindow::DifferenceOf(int output) const {
  return *std::ranges::find(differences_, output, &PresetDifference::Output);
}

void RecallWindow::Go() {
  if (recall_.IsRunning() || isOver_) return;
  if (switcher::Recall::WhyNot(services_)) {
    AskAgain();
    return;
  }
  isAsked_ = false;
  keepTimer_.stop();
  std::vector<RecallRow> rows;
  for (const ChangeRow& ticked : list_->Ticked()) {
    const PresetDifference& difference = DifferenceOf(ticked.station);
    rows.push_back(
        {.output = ticked.station, .listed = difference.now, .wanted = difference.wanted});
  }
  lookTimer_.stop();
  SetChoosable(false);
  ok_->setEnabled(false);
  bar_->setMaximum(static_cast<int>(rows.size()));
  bar_->show();
  cancel_->setFocus();
  Q_EMIT RecallBegun(static_cast<int>(rows.size()));
  recall_.Go(std::move(rows));
}

void RecallWindow::AskAgain() {
  isAsked_ = false;
  keepTimer_.stop();
  SetChoosable(true);
  UpdateQuestion();
}

void RecallWindow::ShowRow(std::size_t row) {
  bar_->setValue(static_cast<int>(row));
  note_->setText(OutputWords(DifferenceOf(recall_.Rows()[row].output).stored.output));
}

void RecallWindow::SayWhatCameOfIt() {
  QStringList left;
  for (const RecallRow& row : recall_.Rows()) {
    if (row.outcome == RecallOutcome::Done) continue;
    left.append(QStringLiteral("%1: %2").arg(OutputWords(DifferenceOf(row.output).stored.output),
                                             OutcomeWords(row, recall_.Obstacle())));
  }
  Q_EMIT RecallEnded(RecallSummary(recall_.Rows(), recall_.IsCancelled()), left);
}

void RecallWindow::Ended() {
  isOver_ = true;
  bar_->hide();
  std::vector<Difference> left;
  for (const RecallRow& row : recall_.Rows()) {
    if (row.outcome == RecallOutcome::Done) continue;
    const switcher::PresetRow& stored = DifferenceOf(row.output).stored;
    left.emplace_back(
        ChangeRow{.station = row.output,
                  .fields = {},
                  .where = OutputWords(stored.output),
                  .what = OutcomeLabel(row.outcome),
                  .before = SourceWords(switcher::SourcesOf(services_.model, row.output),
                                        services_.facts),
                  .after = SourceWords(stored.hears)},
        OutcomeWords(row, recall_.Obstacle()));
  }
  SayWhatCameOfIt();
  if (left.empty()) {
    accept();
    return;
  }
  text_->setText(tr("%1. These are not as they are in the preset:")
                     .arg(RecallSummary(recall_.Rows(), recall_.IsCancelled())));
  note_->clear();
  list_->setEnabled(true);
  list_->SetRows(std::move(left));
  rest_->hide();
  ok_->hide();
  cancel_->setText(tr("Close"));
  cancel_->setEnabled(true);
  cancel_->setFocus();
}

void RecallWindow::reject() {
  if (!recall_.IsRunning()) {
    QDialog::reject();
    return;
  }
  recall_.Cancel();
  cancel_->setEnabled(false);
  note_->setText(tr("Cancelling: this output is finished first"));
}

void RecallWindow::CancelNow() {
  const bool wasRunning = recall_.IsRunning();
  recall_.CancelNow();
  if (wasRunning) SayWhatCameOfIt();
  QDialog::reject();
}

}  // namespace views
