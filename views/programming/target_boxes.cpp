// SPDX-License-Identifier: MIT

#include "views/programming/target_boxes.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QStyleOption>

#include <algorithm>

#include "model/flag_string.h"
#include "views/programming/focus_grid.h"
#include "views/programming/page_metrics.h"
#include "views/widgets/console_style.h"
#include "views/widgets/fixed_font.h"
#include "views/widgets/plain_caption.h"
#include "views/widgets/scaled_font.h"

namespace views {
namespace {

constexpr int kCountMargin = 4;
// Eight captions fit into the first width of the view.
constexpr double kLeastScale = 0.68;  // of the frame's font
constexpr int kCaptionLetters = 8;    // of a label, and of "Relay 01"
constexpr int kBetweenBoxes = 4;

}  // namespace

TargetBoxes::TargetBoxes(const QString& name, const QString& boxName, int count, QWidget* parent)
    : QGroupBox(parent), count_(new QLabel(this)) {
  setObjectName(name);
  count_->setObjectName(QStringLiteral("aid") + name + QStringLiteral("Count"));
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(kPageMargin, kFrameMargin, kPageMargin, kFrameMargin);
  grid->setSpacing(0);
  auto* const keys = new FocusGrid(kPageColumns, *this);
  for (int index = 0; index < count; ++index) {
    auto* const box = new QCheckBox(this);
    ConsoleStyle::SetCaptionClose(*box);
    box->setObjectName(boxName + u'_' + QString::number(index));
    box->setMinimumHeight(kSmallestTarget);
    // All columns are of one width, whatever their captions.
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(box, &QCheckBox::toggled, this, [this, index](bool checked) {
      if (signalsBlocked()) return;
      ShowCount();
      Q_EMIT Toggled(index, checked);
    });
    grid->addWidget(box, index / kPageColumns, index % kPageColumns);
    keys->Add(*box);
    boxes_.push_back(box);
  }
  keys->SetCarry([this](int from, int to) {
    const bool isTicked = boxes_[static_cast<std::size_t>(from)]->isChecked();
    boxes_[static_cast<std::size_t>(to)]->setChecked(isTicked);
  });
  for (int column = 0; column < kPageColumns; ++column) grid->setColumnStretch(column, 1);
  FitFont();
  ShowCount();
}

// All letters of the font are equally wide, so that boxes look the same whatever their captions
// are.  Characters that the font lacks come from another one, and may be wider.
QString TargetBoxes::WidestCaption(const QFont& font) const {
  const QFontMetrics metrics(font);
  QString widest(kCaptionLetters, u'M');
  int most = metrics.horizontalAdvance(widest);
  for (const QCheckBox* const box : boxes_) {
    const QString caption = SpokenCaption(box->text());
    const int width = metrics.horizontalAdvance(caption);
    if (width <= most) continue;
    most = width;
    widest = caption;
  }
  return widest;
}

void TargetBoxes::FitFont() {
  if (boxes_.empty()) return;
  const QFont full = FixedFont(Scaled(font(), 1).pointSizeF());
  const QString letters(kCaptionLetters, u'M');
  const int besideCaption =
      style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, boxes_.front()) +
      style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, boxes_.front()) + 1;
  const int besideBoxes = width() - contentsRect().width() + 2 * kPageMargin;
  const int room = (width() - besideBoxes) / kPageColumns - besideCaption - kBetweenBoxes;
  const QFontMetrics least(Scaled(full, kLeastScale));
  setMinimumWidth(kPageColumns * (besideCaption + least.horizontalAdvance(letters)) + besideBoxes);
  const QFont fitting = Fitting(full, WidestCaption(full), room, kLeastScale);
  if (boxes_.front()->font() == fitting) return;
  for (QCheckBox* const box : boxes_) box->setFont(fitting);
}

void TargetBoxes::SetCaptions(const std::vector<std::string>& captions) {
  const std::size_t count = std::min(captions.size(), boxes_.size());
  bool isNew = false;
  for (std::size_t index = 0; index < count; ++index) {
    const QString caption = PlainCaption(QString::fromStdString(captions[index]));
    if (boxes_[index]->text() == caption) continue;
    boxes_[index]->setText(caption);
    SpeakOf(static_cast<int>(index));
    isNew = true;
  }
  if (isNew) FitFont();
}

void TargetBoxes::SetSpokenName(const QString& pattern) {
  if (spokenName_ == pattern) return;
  spokenName_ = pattern;
  for (int index = 0; index < Count(); ++index) SpeakOf(index);
}

void TargetBoxes::SpeakOf(int index) {
  if (spokenName_.isEmpty()) return;
  QCheckBox& box = *boxes_[static_cast<std::size_t>(index)];
  box.setAccessibleName(spokenName_.arg(index + 1) + QStringLiteral(": ") +
                        SpokenCaption(box.text()));
}

void TargetBoxes::SetFlags(std::string_view flags) {
  {
    const QSignalBlocker quietly(this);
    for (int index = 0; index < Count(); ++index) {
      boxes_[static_cast<std::size_t>(index)]->setChecked(model::FlagIsSet(flags, index + 1));
    }
  }
  ShowCount();
}

// The box that is reached with Tab has the focus in the frame's stead; the title has not.
void TargetBoxes::initStyleOption(QStyleOptionGroupBox* option) const {
  QGroupBox::initStyleOption(option);
  option->state &= ~QStyle::State_HasFocus;
}

void TargetBoxes::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  FitFont();
  PlaceCount();
}

void TargetBoxes::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FitFont();
    PlaceCount();
  }
}

void TargetBoxes::ShowCount() {
  const auto ticked = std::ranges::count_if(boxes_, &QCheckBox::isChecked);
  const QString text = tr("%1 of %2").arg(ticked).arg(Count());
  if (count_->text() == text) return;
  count_->setText(text);
  PlaceCount();
}

void TargetBoxes::PlaceCount() {
  count_->adjustSize();
  count_->move(width() - count_->width() - kCountMargin, 0);
}

}  // namespace views
