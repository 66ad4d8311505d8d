// SPDX-License-Identifier: MIT

#include "views/levels/level_strip.h"

#include <QEvent>
#include <QVBoxLayout>

#include "model/padded.h"
#include "views/rules/levels.h"

namespace views {
namespace {

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
  layout->setContentsMargins(0, 0, 0, kStripSpace);
  layout->setSpacing(0);
  layout->addWidget(number);
  layout->addWidget(slider_, 1);
  layout->addWidget(level_);
  layout->addWidget(label_);
}

void LevelStrip::Fit(const StripText& text) {
  setFixedWidth(text.width);
  level_->setFont(text.font);
  // Of one size, whatever it says: a step of the slider would lay out all strips anew.
  level_->setFixedSize(text.width, level_->sizeHint().height());
  label_->setFont(text.font);
  // Cut in its middle: labels that differ in their last letter must not look alike.
  const QString shown =
      QFontMetrics(text.font).elidedText(fullLabel_, Qt::ElideMiddle, text.width - kStripSpace / 2);
  label_->setText(shown);
  label_->setToolTip(shown == fullLabel_ ? QString() : fullLabel_);
}

void LevelStrip::ShowLevel() {
  const int value = slider_->value();
  slider_->setToolTip(QString::fromStdString(rules::LevelTip(value)));
  level_->setText(QString::fromStdString(rules::LevelText(value)));
}

bool LevelStrip::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick && slider_->isEnabled()) {
    Q_EMIT EntryRequested();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace views
