// SPDX-License-Identifier: MIT

#include "views/programming/button_page.h"

#include <QEvent>
#include <QGridLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

#include "views/programming/focus_grid.h"
#include "views/programming/page_metrics.h"
#include "views/widgets/plain_caption.h"
#include "views/widgets/plain_tip.h"
#include "views/widgets/scaled_font.h"

namespace views {
namespace {

constexpr int kKeysMargin = 6;
constexpr int kBetweenColumns = 4;
constexpr int kBetweenRows = 14;
constexpr int kKeyWidth = 66;  // 70 pixels from key to key
constexpr int kKeyHeight = 34;
constexpr int kBesideKeyCaption = 8;
constexpr double kLeastCaption = 0.75;  // of the font, for wide captions
constexpr int kTypeHeight = 20;

QString ElementName(const char* array, int button) {
  return QString::fromLatin1(array) + u'_' + QString::number(button - 1);
}

}  // namespace

ButtonPage::ButtonPage(int first, int buttonCount, QWidget* parent)
    : QWidget(parent), first_(first) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(kKeysMargin, kKeysMargin, kKeysMargin, kKeysMargin);
  auto* const grid = new QGridLayout;
  grid->setHorizontalSpacing(kBetweenColumns);
  grid->setVerticalSpacing(2);
  auto* const focus = new FocusGrid(kPageColumns, *this);
  for (int i = 0; i < kButtons; ++i) {
    const Key key = MakeKey(first + i, first + i <= buttonCount);
    // Three rows to a key, and one of air under it.
    const int row = i / kPageColumns * 4;
    grid->addWidget(key.number, row, i % kPageColumns);
    grid->addWidget(key.button, row + 1, i % kPageColumns);
    grid->addWidget(key.type, row + 2, i % kPageColumns);
    grid->setRowMinimumHeight(row + 3, kBetweenRows);
    grid->setColumnStretch(i % kPageColumns, 1);
    focus->Add(*key.button);
    keys_.push_back(key);
  }
  column->addLayout(grid);
  AddNotes(buttonCount);
  column->addStretch();
}

ButtonPage::Key ButtonPage::MakeKey(int button, bool isThere) {
  auto* const number =
      new QLabel(QStringLiteral(" Btn - %1").arg(button, 2, 10, QLatin1Char('0')), this);
  number->setObjectName(ElementName("lblBnum", button));
  number->setEnabled(isThere);

  auto* const key = new QPushButton(this);
  key->setObjectName(ElementName("cmdButton", button));
  key->setMinimumHeight(kKeyHeight);
  // All keys are of one width, whatever their captions.
  key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  key->setAutoDefault(true);  // Enter presses it, too
  key->setEnabled(isThere);
  key->setAccessibleName(tr("Button %1").arg(button));
  key->installEventFilter(this);
  connect(key, &QPushButton::clicked, this, [this, button] { Q_EMIT Clicked(button); });

  auto* const type = new QLabel(this);
  type->setObjectName(ElementName("lblBtype", button));
  type->setAlignment(Qt::AlignCenter);
  type->setFixedHeight(kTypeHeight);
  type->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | QFrame::Plain);
  type->setEnabled(isThere);
  return {number, key, type};
}

void ButtonPage::AddNotes(int buttonCount) {
  auto* const column = static_cast<QVBoxLayout*>(layout());
  if (first_ <= buttonCount) {
    auto* const note = new QLabel(QStringLiteral("Click Any Button To Edit Programming"), this);
    note->setObjectName(QStringLiteral("lblEditNote_%1").arg((first_ - 1) / kButtons));
    column->addWidget(note);
  }
  if (first_ + kButtons - 1 > buttonCount) {
    auto* const note = new QLabel(tr("%1 buttons per station").arg(buttonCount), this);
    note->setObjectName(QStringLiteral("aidButtonCount_%1").arg((first_ - 1) / kButtons));
    column->addWidget(note);
  }
}

void ButtonPage::SetCaption(int button, const QString& caption) {
  if (ChangeCaption(button, caption)) FitFont();
}

void ButtonPage::SetCaptions(std::span<const std::string> captions) {
  bool isChanged = false;
  int button = first_;
  for (const std::string& caption : captions) {
    isChanged |= ChangeCaption(button++, QString::fromStdString(caption));
  }
  if (isChanged) FitFont();
}

bool ButtonPage::ChangeCaption(int button, const QString& caption) {
  Key& key = KeyOf(button);
  const QString text = PlainCaption(caption);
  if (key.button->text() == text) return false;
  key.button->setText(text);
  key.width = fontMetrics().horizontalAdvance(caption);
  Speak(button);
  return true;
}

void ButtonPage::FitFont() {
  const QString widest =
      SpokenCaption(std::ranges::max_element(keys_, {}, &Key::width)->button->text());
  const int besideKeys = 2 * kKeysMargin + (kPageColumns - 1) * kBetweenColumns;
  const int room = (width() - besideKeys) / kPageColumns - kBesideKeyCaption;
  // What is too wide even so makes the page wider: two captions that differ in their last letter
  // must not look alike.
  const QFontMetrics least(Scaled(font(), kLeastCaption));
  const int narrowest = least.horizontalAdvance(widest) + kBesideKeyCaption;
  setMinimumWidth(kPageColumns * std::max(kKeyWidth, narrowest) + besideKeys);
  const QFont fitting = Fitting(font(), widest, room, kLeastCaption);
  if (keys_.front().button->font() == fitting) return;
  for (const Key& key : keys_) key.button->setFont(fitting);
}

void ButtonPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitFont();
}

void ButtonPage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  for (Key& key : keys_) {
    key.width = fontMetrics().horizontalAdvance(SpokenCaption(key.button->text()));
  }
  FitFont();
}

int ButtonPage::FocusedButton() const {
  const auto focused =
      std::ranges::find_if(keys_, [](const Key& key) { return key.button->hasFocus(); });
  return focused == keys_.end() ? 0 : first_ + static_cast<int>(focused - keys_.begin());
}

// What is stored of the button is read when somebody wants to see it.
bool ButtonPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ToolTip || !tipOf_) return QWidget::eventFilter(watched, event);
  const auto key = std::ranges::find(keys_, watched, &Key::button);
  const int button = first_ + static_cast<int>(key - keys_.begin());
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), PlainTip(tipOf_(button)),
                     key->button);
  return true;
}

void ButtonPage::SetOperation(int button, const stations::Operation& operation) {
  QLabel& type = *KeyOf(button).type;
  const QString text = QString::fromLatin1(operation.label);
  if (type.text() == text) return;
  type.setText(text);
  // The ground is fixed, so the ink must be, too.
  QPalette colours = type.palette();
  colours.setColor(QPalette::Window, QColor::fromRgb(operation.colour));
  colours.setColor(QPalette::WindowText, Qt::black);
  type.setPalette(colours);
  type.setAutoFillBackground(true);
  Speak(button);
}

void ButtonPage::Speak(int button) {
  const Key& key = KeyOf(button);
  key.button->setAccessibleName(
      tr("Button %1: %2, %3")
          .arg(QString::number(button), SpokenCaption(key.button->text()), key.type->text()));
}

}  // namespace views
