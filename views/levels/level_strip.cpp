// SPDX-License-Identifier: MIT

#include "views/levels/level_strip.h"

#include <QEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "model/padded.h"
#include "views/rules/levels.h"
#include "views/widgets/scaled_font.h"

namespace views {
namespace {

constexpr double kLabelSize = 0.88;         // of the font
constexpr char kUsualLabel[] = "Inpt 000";  // no strip is made for less
constexpr int kCondensed = 70;              // per cent of the width of a label that has no room

constexpr int kSpace = 6;          // between two strips
constexpr int kLowestSlider = 60;  // what a large font leaves of it

QLabel* NewText(const QString& name, int index, LevelStrip* strip) {
  auto* const label = new QLabel(strip);
  label->setObjectName(name + QString::number(index));
  label->setTextFormat(Qt::PlainText);
  label->setAlignment(Qt::AlignCenter);
  // Long texts are cut, they do not make the strip wider.
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

}  // namespace

LevelStrip::LevelStrip(int index, QWidget* parent)
    : QWidget(parent),
      slider_(new LevelSlider(this)),
      level_(NewText(QStringLiteral("lblLevel_"), index, this)),
      label_(NewText(QStringLiteral("lblInptName_"), index, this)) {
  QLabel* const number = NewText(QStringLiteral("lblInptNumber_"), index, this);
  number->setText(QString::fromStdString(model::Padded(index + 1, 2)));
  level_->installEventFilter(this);
  slider_->setObjectName(QStringLiteral("Slider1_%1").arg(index));
  slider_->setAccessibleName(tr("Input %1 level").arg(index + 1));
  slider_->setMinimumHeight(kLowestSlider);
  slider_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, kSpace);
  layout->setSpacing(0);
  layout->addWidget(number);
  layout->addWidget(slider_, 1);
  layout->addWidget(level_);
  layout->addWidget(label_);
}

void LevelStrip::SetLabel(const QString& label) {
  fullLabel_ = label;
  ElideLabel();
}

void LevelStrip::ShowLevel() {
  const int value = slider_->value();
  slider_->setToolTip(QString::fromStdString(rules::LevelTip(value)));
  level_->setText(QString::fromStdString(rules::LevelText(value)));
}

int LevelStrip::NeededWidth() const {
  const QFontMetrics metrics(LabelFont());
  const QString lowest = QString::fromStdString(rules::LevelText(rules::kLargestSliderValue));
  return kSpace + std::max({metrics.horizontalAdvance(lowest),
                            metrics.horizontalAdvance(QLatin1String(kUsualLabel)),
                            metrics.horizontalAdvance(fullLabel_)});
}

bool LevelStrip::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick && slider_->isEnabled()) {
    Q_EMIT EntryRequested();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void LevelStrip::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) ElideLabel();
}

void LevelStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ElideLabel();
}

QFont LevelStrip::LabelFont() const { return Scaled(font(), kLabelSize); }

// A label is condensed before it is cut, and cut in its middle: labels that differ in their last
// letter must not look alike.
void LevelStrip::ElideLabel() {
  const int room = width() - kSpace / 2;
  QFont font = LabelFont();
  QFont levelFont = font;
  const QString lowest = QString::fromStdString(rules::LevelText(rules::kLargestSliderValue));
  if (QFontMetrics(font).horizontalAdvance(lowest) > room) levelFont.setStretch(kCondensed);
  level_->setFont(levelFont);
  if (QFontMetrics(font).horizontalAdvance(fullLabel_) > room) font.setStretch(kCondensed);
  label_->setFont(font);
  const QString shown = QFontMetrics(font).elidedText(fullLabel_, Qt::ElideMiddle, room);
  label_->setText(shown);
  label_->setToolTip(shown == fullLabel_ ? QString() : fullLabel_);
}

}  // namespace views
