// SPDX-License-Identifier: MIT

#include "views/presets/recall_window.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "views/presets/preset_words.h"

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
      differences_(switcher::Differences(preset, services_.recall.model, services_.recall.locks,
                                         services_.facts)),
      hasMisfits_(preset.channels != services_.recall.model.CrosspointMap.Size() ||
                  std::ranges::any_of(differences_, &PresetDifference::IsMisfit)),
      recall_(services_.recall, *this),
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
  connect(ok_, &QPushButton::clicked, this, [this] {
    isAsked_ = true;
    UpdateQuestion();
    Q_EMIT RecallRequested();
  });
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
  resize(kRecallWidth * fontMetrics().averageCharWidth(),
         sizeHint().height() + kRecallShown * fontMetrics().height() / 2);
  list_->setFocus();
}

void RecallWindow::FillList() {
  std::vector<Difference> rows;
  for (const PresetDifference& difference : differences_) {
    const QString obstacle = ObstacleWords(difference);
    rows.emplace_back(ChangeRow{.station = difference.output,
                                .fields = {},
                                .where = OutputWords(difference.output, services_.facts),
                                .what = ObstacleLabel(difference.obstacle),
                                .before = SourceWords(difference.now, services_.facts),
                                .after = SourceWords(difference.wanted, services_.facts)},
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
  const auto obstacle = switcher::WhyNoRecall(services_.recall.model, services_.recall.locks);
  note_->setText(obstacle ? RecallObstacleWords(*obstacle) : QString());
  const bool isToldTo = !hasMisfits_ || rest_->isChecked();
  ok_->setEnabled(!isAsked_ && !obstacle && isToldTo && list_->TickedCount() > 0);
}

void RecallWindow::Go() {
  if (recall_.IsRunning() || isOver_) return;
  isAsked_ = false;
  if (switcher::WhyNoRecall(services_.recall.model, services_.recall.locks)) {
    UpdateQuestion();
    return;
  }
  std::vector<RecallRow> rows;
  for (const ChangeRow& ticked : list_->Ticked()) {
    const auto difference =
        std::ranges::find(differences_, ticked.station, &PresetDifference::output);
    rows.push_back(
        {.output = ticked.station, .listed = difference->now, .wanted = difference->wanted});
  }
  lookTimer_.stop();
  list_->setEnabled(false);
  rest_->setEnabled(false);
  ok_->setEnabled(false);
  bar_->setMaximum(static_cast<int>(rows.size()));
  bar_->show();
  cancel_->setFocus();
  recall_.Go(std::move(rows));
}

void RecallWindow::AskAgain() {
  isAsked_ = false;
  UpdateQuestion();
}

void RecallWindow::ShowRow(std::size_t row) {
  bar_->setValue(static_cast<int>(row));
  note_->setText(OutputWords(recall_.Rows()[row].output, services_.facts));
}

QString RecallWindow::RowWords(const RecallRow& row) const {
  return QStringLiteral("%1: %2").arg(OutputWords(row.output, services_.facts),
                                      OutcomeWords(row.outcome));
}

void RecallWindow::Ended() {
  isOver_ = true;
  bar_->hide();
  std::vector<Difference> left;
  QStringList lines;
  for (const RecallRow& row : recall_.Rows()) {
    if (row.outcome == RecallOutcome::Done) continue;
    lines.append(RowWords(row));
    left.emplace_back(
        ChangeRow{.station = row.output,
                  .fields = {},
                  .where = OutputWords(row.output, services_.facts),
                  .what = OutcomeLabel(row.outcome),
                  .before = SourceWords(switcher::SourcesOf(services_.recall.model, row.output),
                                        services_.facts),
                  .after = SourceWords(row.wanted, services_.facts)},
        OutcomeWords(row.outcome));
  }
  const QString summary = RecallSummary(recall_.Rows(), recall_.IsCancelled());
  Q_EMIT RecallEnded(summary, lines);
  if (lines.isEmpty()) {
    accept();
    return;
  }
  text_->setText(tr("%1. These are not as they are in the preset:").arg(summary));
  note_->clear();
  list_->setEnabled(true);
  list_->SetRows(std::move(left));
  rest_->hide();
  ok_->hide();
  cancel_->setText(tr("Close"));
  cancel_->setEnabled(true);
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
  recall_.CancelNow();
  QDialog::reject();
}

}  // namespace views
