// SPDX-License-Identifier: MIT

#include "views/levels/input_level_dialog.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <string>
#include <vector>

#include "stations/operations.h"
#include "stations/target_labels.h"
#include "views/levels/level_scale.h"
#include "views/rules/levels.h"
#include "views/widgets/icon.h"
#include "views/widgets/last_report.h"
#include "views/window_place/twips.h"

namespace views {
namespace {

constexpr int kPerBand = 16;
constexpr int kBands = model::kLevelCount / kPerBand;
constexpr int kLeastBands = 2;  // that show

constexpr int kBandHeight = ToPixels(2640);
constexpr int kPanelOffset = ToPixels(40);

}  // namespace

InputLevelDialog::InputLevelDialog(const Services& services, const QDateTime& lastReport,
                                   QWidget* parent)
    : QDialog(parent), services_(services) {
  setObjectName(QStringLiteral("frmInptLevel"));
  setWindowTitle(QString::fromLatin1(rules::kLevelsCaption));
  setWindowIcon(Icon(QStringLiteral("input-levels")));
  LayOut(MakeSliders());
  Update_GainMap();
  ShowReported(lastReport);
  UpdateLabels();
}

// Hidden while it is whole: a slider that loses the focus then calls back into the dialog.
InputLevelDialog::~InputLevelDialog() { hide(); }

QWidget* InputLevelDialog::MakeSliders() {
  sliders_ = new QWidget(this);
  sliders_->setMinimumHeight(kLeastBands * kBandHeight);
  panel_ = new QWidget(sliders_);
  panel_->setObjectName(QStringLiteral("pctSliders"));
  auto* const bands = new QVBoxLayout(panel_);
  bands->setContentsMargins(0, kPanelOffset, 0, 0);
  bands->setSpacing(0);
  for (int first = 0; first < model::kLevelCount; first += kPerBand) {
    auto* const band = new QWidget(panel_);
    band->setFixedHeight(kBandHeight);
    auto* const row = new QHBoxLayout(band);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int index = first; index < first + kPerBand; ++index) {
      auto* const strip = new LevelStrip(index, band);
      strips_[static_cast<std::size_t>(index)] = strip;
      if (index == first) {
        scale_ = new LevelScale(strip->Slider(), band);
        row->addWidget(scale_);
      }
      row->addWidget(strip);
      connect(&strip->Slider(), &QSlider::valueChanged, this, [this, index] { Moved(index); });
      connect(&strip->Slider(), &LevelSlider::Released, this, [this, index] { LetGo(index); });
      connect(&strip->Slider(), &LevelSlider::Entered, this, [this, index] { ScrollTo(index); });
      connect(&strip->Slider(), &LevelSlider::LevelTyped, this,
              [this, index](const QString& text) { OpenEntry(index, text); });
      connect(strip, &LevelStrip::EntryRequested, this, [this, index] { OpenEntry(index, {}); });
    }
    bands->addWidget(band);
  }
  panel_->move(0, -kPanelOffset);
  entry_ = new LevelEntry(panel_);
  connect(entry_, &LevelEntry::Chosen, this, &InputLevelDialog::Enter);
  connect(entry_, &LevelEntry::Closed, this,
          [this] { Strip(entered_).Slider().setFocus(Qt::OtherFocusReason); });
  return sliders_;
}

void InputLevelDialog::FitInto(int width) {
  largestWidth_ = width;
  FitSliders();
}

void InputLevelDialog::FitSliders() {
  const QMargins margins = layout()->contentsMargins();
  const int beside = scale_->sizeHint().width() + layout()->spacing() +
                     scroll_->sizeHint().width() + margins.left() + margins.right();
  QStringList labels;
  for (const LevelStrip* const strip : strips_) labels.append(strip->FullLabel());
  const StripText text = FitStrips(font(), labels, (largestWidth_ - beside) / kPerBand);
  for (LevelStrip* const strip : strips_) strip->Fit(text);
  // From the inside out, because the panel stands in no layout that would do it.
  for (int first = 0; first < model::kLevelCount; first += kPerBand) {
    Strip(first).parentWidget()->layout()->activate();
  }
  panel_->layout()->activate();
  panel_->resize(panel_->layout()->sizeHint());
  sliders_->setFixedWidth(panel_->width());
  layout()->activate();
  // The width is that of the sliders; the height may grow until all bands show.
  const QSize least = layout()->totalMinimumSize();
  setMinimumSize(least);
  setMaximumSize(least.width(), least.height() + (kBands - kLeastBands) * kBandHeight);
  resize(least.width(), height());
}

int InputLevelDialog::VisibleBands() const {
  return std::clamp(sliders_->height() / kBandHeight, kLeastBands, kBands);
}

void InputLevelDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  layout()->activate();
  scroll_->setRange(0, kBands - VisibleBands());
  scroll_->setPageStep(VisibleBands());
}

void InputLevelDialog::LayOut(QWidget* sliders) {
  scroll_ = new NotchScrollBar(this);
  scroll_->setObjectName(QStringLiteral("VScroll1"));
  scroll_->setAccessibleName(tr("Bands of sliders"));
  scroll_->setRange(0, kBands - kLeastBands);
  scroll_->setPageStep(kLeastBands);
  connect(scroll_, &QScrollBar::valueChanged, this,
          [this](int value) { panel_->move(0, -(value * kBandHeight + kPanelOffset)); });

  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  QPushButton* const close = buttons->button(QDialogButtonBox::Close);
  close->setObjectName(QStringLiteral("cmdClose"));
  // A key pressed before the operator has looked must not change a gain.
  close->setFocus();
  close->installEventFilter(this);

  auto* const row = new QHBoxLayout;
  row->addWidget(sliders);
  row->addWidget(scroll_);
  reported_ = new QLabel(this);
  reported_->setObjectName(QStringLiteral("aidLastReport"));
  reported_->setTextFormat(Qt::PlainText);
  auto* const bottom = new QHBoxLayout;
  bottom->addWidget(reported_, 1);
  if (services_.locks.IsConsoleLocked()) {
    auto* const locked = new QLabel(tr("Console locked"), this);
    locked->setObjectName(QStringLiteral("aidLevelsLocked"));
    bottom->addWidget(locked);
    for (LevelStrip* const strip : strips_) strip->Slider().setEnabled(false);
  }
  bottom->addWidget(buttons);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(row, 1);
  layout->addLayout(bottom);
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  FitSliders();
}

void InputLevelDialog::Update_GainMap() {
  for (int index = 0; index < model::kLevelCount; ++index) {
    // A report may be older than the last move: the slider would jump back from under the hand,
    // and the next move would start from there.
    if (!Strip(index).Slider().IsHeld()) ShowGain(index);
  }
}

void InputLevelDialog::ShowGain(int index) {
  const QSignalBlocker sendsNothing(Strip(index).Slider());
  const int gain = services_.model.InputGains[static_cast<std::size_t>(index)];
  Strip(index).Slider().setValue(rules::SliderValue(gain));
  Strip(index).ShowLevel();
}

void InputLevelDialog::ShowReported(const QDateTime& at) {
  reported_->setText(LastReportText(at));
  for (LevelStrip* const strip : strips_) strip->Slider().SetReported(at.isValid());
}

void InputLevelDialog::UpdateLabels() {
  std::vector<std::string> labels;
  const int count = std::clamp<int>(services_.model.ChannelCount, 0, model::kLevelCount);
  if (count > 0) {
    const model::Status status = WithStations(services_, [&](jet::RecordSet& stations) {
      auto read = stations::TargetLabels(&stations).Captions(stations::kListen, count);
      labels = std::move(read.value);
      return read.status;
    });
    if (!status.ok()) ShowFailure(services_, "Error Reading Input Labels", status);
  }
  labels.resize(model::kLevelCount);
  for (int index = 0; index < model::kLevelCount; ++index) {
    Strip(index).SetLabel(QString::fromStdString(labels[static_cast<std::size_t>(index)]));
  }
  FitSliders();
}

void InputLevelDialog::Moved(int index) {
  LevelStrip& strip = Strip(index);
  const int value = strip.Slider().value();
  const int gain = rules::GainOf(value);
  services_.model.InputGains[static_cast<std::size_t>(index)] = static_cast<std::int16_t>(gain);
  strip.ShowLevel();
  setWindowTitle(QString::fromStdString(rules::MovingCaption(index, value)));
  ScrollTo(index);
  // A failure has been reported, and the model keeps what the operator wants.
  (void)services_.commands.SendGain(index, gain);
  Q_EMIT GainSet();
}

void InputLevelDialog::LetGo(int index) {
  setWindowTitle(QString::fromLatin1(rules::kLevelsCaption));
  if (!Strip(index).Slider().IsHeld()) ShowGain(index);
}

void InputLevelDialog::ScrollTo(int index) {
  const int band = index / kPerBand;
  scroll_->setValue(std::clamp(scroll_->value(), band - (VisibleBands() - 1), band));
}

void InputLevelDialog::OpenEntry(int index, const QString& text) {
  ScrollTo(index);
  entered_ = index;
  entry_->OpenOver(Strip(index).Level(), rules::DecibelsOf(Strip(index).Slider().value()), text);
}

// One command, as of a slider that was moved there in one step and let go.
void InputLevelDialog::Enter(int decibels) {
  Strip(entered_).Slider().setValue(rules::SliderValueOfLevel(decibels));
  LetGo(entered_);
}

void InputLevelDialog::GoToNeighbour(int distance) {
  for (int index = 0; index < model::kLevelCount; ++index) {
    if (!Strip(index).Slider().hasFocus()) continue;
    const int other = index + distance;
    if (other >= 0 && other < model::kLevelCount) {
      Strip(other).Slider().setFocus(Qt::OtherFocusReason);
    }
    return;
  }
}

void InputLevelDialog::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitSliders();
}

// By default an arrow key on a button moves the focus to the next widget: here a slider, which the
// next arrow key would move.
bool InputLevelDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() >= Qt::Key_Left && key->key() <= Qt::Key_Down) {
      keyPressEvent(key);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

// A slider that has the focus keeps the arrows and page keys without Ctrl to itself.
void InputLevelDialog::keyPressEvent(QKeyEvent* event) {
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  switch (event->key()) {
    case Qt::Key_Left:
      if (control) GoToNeighbour(-1);
      break;
    case Qt::Key_Right:
      if (control) GoToNeighbour(1);
      break;
    case Qt::Key_Up:
    case Qt::Key_PageUp:
      if (control) {
        GoToNeighbour(-kPerBand);
      } else {
        scroll_->triggerAction(QAbstractSlider::SliderSingleStepSub);
      }
      break;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
      if (control) {
        GoToNeighbour(kPerBand);
      } else {
        scroll_->triggerAction(QAbstractSlider::SliderSingleStepAdd);
      }
      break;
    default:
      QDialog::keyPressEvent(event);
      break;
  }
}

void InputLevelDialog::wheelEvent(QWheelEvent* event) {
  scroll_->Turn(event->angleDelta().y());
  event->accept();
}

}  // namespace views
