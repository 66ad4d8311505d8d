// SPDX-License-Identifier: MIT

#include "views/tally/tally_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/widgets/icon.h"
#include "views/widgets/last_report.h"
#include "views/widgets/plain_tip.h"

namespace views {
namespace {

constexpr int kFrames = 4;
constexpr int kPerFrame = model::kLevelCount / kFrames;
constexpr int kPerRow = 8;
constexpr int kColumnSpace = 8;
constexpr int kRowSpace = 10;

}  // namespace

TallyDialog::TallyDialog(const model::SystemModel& model, const QDateTime& lastReport,
                         QWidget* parent)
    : QDialog(parent), model_(model), reported_(new QLabel(this)) {
  setObjectName(QStringLiteral("frmQdvTally"));
  setWindowTitle(QStringLiteral("QDV Status"));
  setWindowIcon(Icon(QStringLiteral("qdv-status")));
  LayOut();
  UpdateTally(lastReport);
}

QWidget* TallyDialog::MakeFrame(int number) {
  auto* const frame = new QGroupBox(QStringLiteral("Frame %1").arg(number), this);
  frame->setObjectName(QStringLiteral("frFrame%1").arg(number));
  auto* const grid = new QGridLayout(frame);
  grid->setHorizontalSpacing(kColumnSpace);
  grid->setVerticalSpacing(kRowSpace);
  for (int k = 0; k < kPerFrame; ++k) {
    const int point = (number - 1) * kPerFrame + k + 1;
    auto* const lamp = new Lamp(frame);
    lamp->setObjectName(QStringLiteral("shpQdvResponding_%1").arg(point));
    lamps_[static_cast<std::size_t>(point - 1)] = lamp;
    auto* const label = new QLabel(QString::number(point), frame);
    label->setObjectName(QStringLiteral("lblQdvResponding_%1").arg(point));
    label->setAlignment(Qt::AlignHCenter);
    auto* const cell = new QVBoxLayout;
    cell->setSpacing(1);
    cell->addWidget(lamp, 0, Qt::AlignHCenter);
    cell->addWidget(label);
    grid->addLayout(cell, k / kPerRow, k % kPerRow);
  }
  return frame;
}

void TallyDialog::LayOut() {
  auto* const frames = new QGridLayout;
  for (int number = 1; number <= kFrames; ++number) {
    frames->addWidget(MakeFrame(number), (number - 1) / 2, (number - 1) % 2);
  }

  reported_->setObjectName(QStringLiteral("aidLastReport"));
  reported_->setTextFormat(Qt::PlainText);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));

  auto* const bottom = new QHBoxLayout;
  bottom->addWidget(reported_, 1);
  for (const bool on : {true, false}) {
    auto* const lamp = new Lamp(this);
    lamp->setObjectName(on ? QStringLiteral("aidLampOn") : QStringLiteral("aidLampOff"));
    lamp->SetOn(on);
    bottom->addWidget(lamp);
    bottom->addWidget(new QLabel(on ? tr("Responding") : tr("Not responding"), this));
    bottom->addSpacing(kColumnSpace);
  }
  bottom->addWidget(buttons);

  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(frames);
  layout->addLayout(bottom);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void TallyDialog::UpdateTally(const QDateTime& reportedAt) {
  for (int index = 0; index < model::kLevelCount; ++index) ShowLamp(index);
  reported_->setText(LastReportText(reportedAt));
}

void TallyDialog::ShowLamp(int index) {
  const auto at = static_cast<std::size_t>(index);
  const bool on = model_.QdvTally[at] != 0;
  Lamp& lamp = *lamps_[at];
  if (on == lamp.IsOn() && !lamp.accessibleName().isEmpty()) return;
  lamp.SetOn(on);
  const QString state =
      on ? tr("QDV %1 responding").arg(index + 1) : tr("QDV %1 not responding").arg(index + 1);
  lamp.setAccessibleName(state);
  ShowTip(index);
}

void TallyDialog::ShowStations(const QStringList& labels) {
  stations_ = labels;
  for (int index = 0; index < model::kLevelCount; ++index) ShowTip(index);
}

void TallyDialog::ShowTip(int index) {
  Lamp& lamp = *lamps_[static_cast<std::size_t>(index)];
  const QString station = stations_.value(index).trimmed();
  lamp.setAccessibleDescription(station);
  lamp.setToolTip(station.isEmpty()
                      ? lamp.accessibleName()
                      : PlainTip(lamp.accessibleName() + QStringLiteral("  ") + station));
}

}  // namespace views
