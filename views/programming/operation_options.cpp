// SPDX-License-Identifier: MIT

#include "views/programming/operation_options.h"

#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionGroupBox>

#include <algorithm>
#include <utility>

#include "stations/operations.h"
#include "views/programming/page_metrics.h"

namespace views {
namespace {

constexpr int kBesideCaption = 8;

}  // namespace

OperationOptions::OperationOptions(const QString& name, const QString& optionName, QWidget* parent)
    : QGroupBox(QStringLiteral("Operation"), parent), group_(new QButtonGroup(this)) {
  setObjectName(name);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(kPageMargin, kFrameMargin, kPageMargin, kFrameMargin);
  for (const stations::Operation& operation : stations::AllOperations()) {
    auto* const option = new QRadioButton(QString::fromLatin1(operation.option), this);
    option->setObjectName(optionName + u'_' + QString::number(operation.code));
    option->setMinimumHeight(kSmallestTarget);
    option->installEventFilter(this);
    group_->addButton(option, operation.code);
    row->addWidget(option);
    Connect(*option, operation.code);
  }
  row->addStretch();
}

void OperationOptions::AddNote(QWidget& note) {
  note.setParent(this);
  note_ = &note;
  PlaceNote();
}

void OperationOptions::PlaceNote() {
  if (note_ == nullptr) return;
  QStyleOptionGroupBox option;
  initStyleOption(&option);
  const QRect caption =
      style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, this);
  QRect place(QPoint(), note_->sizeHint());
  place.moveCenter(caption.center());
  place.moveTop(std::max(place.top(), 0));
  place.moveLeft(caption.right() + kBesideCaption);
  note_->setGeometry(place);
}

void OperationOptions::Connect(QRadioButton& option, int code) {
  // A click on an option that is not selected ticks it first; a screen reader only ticks it.
  connect(&option, &QRadioButton::toggled, this, [this, code](bool checked) {
    if (signalsBlocked() || !checked) return;
    Q_EMIT Chosen(code);
    announced_ = code;
  });
  connect(&option, &QRadioButton::clicked, this, [this, code] {
    if (std::exchange(announced_, std::nullopt) != code) Q_EMIT Chosen(code);
  });
}

void OperationOptions::Select(int code) {
  const QSignalBlocker quietly(this);
  announced_.reset();
  if (QAbstractButton* const option = group_->button(code)) {
    option->setChecked(true);
  } else if (QAbstractButton* const selected = group_->checkedButton()) {
    // The last one of a group that is exclusive cannot be cleared.
    group_->setExclusive(false);
    selected->setChecked(false);
    group_->setExclusive(true);
  }
  KeepReachable();
}

int OperationOptions::Selected() const {
  static_assert(stations::kNoType == -1);  // as the group has it when none is selected
  return group_->checkedId();
}

// Tab reaches the selected option; without one, all of them.  By itself the group learns of a
// selection only where the operator makes it.
void OperationOptions::KeepReachable() {
  const QAbstractButton* const selected = group_->checkedButton();
  for (QAbstractButton* const option : group_->buttons()) {
    const bool isReached = selected == nullptr || option == selected;
    option->setFocusPolicy(isReached ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

bool OperationOptions::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) KeepReachable();
  return QGroupBox::eventFilter(watched, event);
}

void OperationOptions::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  PlaceNote();
}

void OperationOptions::changeEvent(QEvent* event) {
  QGroupBox::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) PlaceNote();
}

}  // namespace views
