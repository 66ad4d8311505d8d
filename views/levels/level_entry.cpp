// SPDX-License-Identifier: MIT

#include "views/levels/level_entry.h"

#include <QKeyEvent>
#include <algorithm>

#include "views/rules/levels.h"

namespace views {
namespace {

constexpr int kMostCharacters = 6;
const int kLowest = rules::DecibelsOf(rules::kLargestSliderValue);
const int kHighest = rules::DecibelsOf(0);

}  // namespace

LevelEntry::LevelEntry(QWidget* parent) : QLineEdit(parent) {
  setObjectName(QStringLiteral("aidLevelEntry"));
  setAccessibleName(tr("Level in dB"));
  setToolTip(tr("−100 to +27 dB; Enter sends it, Esc drops it"));
  setAlignment(Qt::AlignCenter);
  setMaxLength(kMostCharacters);
  hide();
}

void LevelEntry::OpenOver(const QWidget& level, int decibels, const QString& text) {
  const int wanted = fontMetrics().horizontalAdvance(QStringLiteral("−100")) +
                     4 * fontMetrics().averageCharWidth();
  const QSize size(std::max(level.width(), wanted), sizeHint().height());
  const QPoint middle = level.mapTo(parentWidget(), level.rect().center());
  QRect place(middle - QPoint(size.width() / 2, size.height() / 2), size);
  // At the edge it stays whole.
  place.moveLeft(std::clamp(place.left(), 0, std::max(0, parentWidget()->width() - size.width())));
  setGeometry(place);
  setText(text.isEmpty() ? QString::number(decibels) : text);
  if (text.isEmpty()) selectAll();
  show();
  raise();
  setFocus(Qt::OtherFocusReason);
}

void LevelEntry::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    hide();
    Q_EMIT Closed();
  } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    // The dialog would take the key for its button.
    event->accept();
    // No validator, which would drop a digit and leave another level.
    bool isNumber = false;
    const int decibels = text().toInt(&isNumber);
    if (!isNumber || decibels < kLowest || decibels > kHighest) {
      selectAll();
      return;
    }
    hide();
    Q_EMIT Chosen(decibels);
    Q_EMIT Closed();
  } else {
    QLineEdit::keyPressEvent(event);
  }
}

void LevelEntry::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::ActiveWindowFocusReason) hide();
}

}  // namespace views
