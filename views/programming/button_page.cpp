// SPDX-License-Identifier: MIT

#include "views/programming/button_page.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

#include "views/plain_caption.h"
#include "views/programming/focus_grid.h"
#include "views/programming/page_metrics.h"

namespace views {
namespace {

constexpr int kKeysMargin = 6;
constexpr int kBetweenColumns = 6;
constexpr int kBetweenRows = 14;
constexpr int kKeyWidth = 64;  // 70 pixels from key to key
constexpr int kKeyHeight = 34;
constexpr int kBesideKeyCaption = 12;
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
  key->setMinimumSize(kKeyWidth, kKeyHeight);
  key->setAutoDefault(true);  // Enter presses it, too
  key->setEnabled(isThere);
  key->setAccessibleName(tr("Button %1").arg(button));
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
  QPushButton& key = *KeyOf(button).button;
  const QString text = PlainCaption(caption);
  if (key.text() == text) return;
  key.setText(text);
  // A wide label makes its column wider: two that differ in their last letter must not look alike.
  const int needed = key.fontMetrics().horizontalAdvance(caption) + kBesideKeyCaption;
  key.setMinimumWidth(std::max(kKeyWidth, needed));
  Speak(button);
}

void ButtonPage::SetOperation(int button, const rules::Operation& operation) {
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
