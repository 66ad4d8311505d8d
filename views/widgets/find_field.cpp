// SPDX-License-Identifier: MIT

#include "views/widgets/find_field.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

namespace views {
namespace {

// What the field needs beside its text: its frame and the button that clears it.
constexpr int kFieldMargin = 36;

}  // namespace

FindField::FindField(const QString& widestCount, QWidget* parent)
    : QFrame(parent), field_(new QLineEdit(this)), count_(new QLabel(this)) {
  setObjectName(QStringLiteral("aidFind"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  field_->setObjectName(QStringLiteral("aidFindText"));
  field_->setClearButtonEnabled(true);
  field_->installEventFilter(this);
  count_->setObjectName(QStringLiteral("aidFindCount"));
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 4, 6, 4);
  layout->setSpacing(6);
  layout->addWidget(field_);
  layout->addWidget(count_);
  count_->setMinimumWidth(fontMetrics().horizontalAdvance(widestCount));
  connect(field_, &QLineEdit::textChanged, this, [this] { Search(); });
  hide();
}

void FindField::Open(const QString& text, const QString& prompt) {
  field_->setPlaceholderText(prompt);
  field_->setMinimumWidth(fontMetrics().horizontalAdvance(prompt) + kFieldMargin);
  field_->setAccessibleName(prompt);
  setAccessibleName(prompt);
  if (field_->text() == text) {
    Search();
  } else {
    field_->setText(text);  // searches
  }
  adjustSize();
  show();
  raise();
  // With this reason the field does not select its text: more letters may follow.
  field_->setFocus(Qt::OtherFocusReason);
}

void FindField::Close() {
  if (isHidden()) return;
  hide();
  matchCount_ = 0;
  ClearHighlights();
  Q_EMIT Closed();
}

void FindField::Refresh() {
  if (isHidden()) return;
  matchCount_ = Highlight();
  at_ = -1;
  ShowCount();
}

QString FindField::Text() const { return field_->text(); }

void FindField::Search() {
  matchCount_ = Highlight();
  at_ = -1;
  ShowCount();
  if (matchCount_ > 0) ShowFirst();
}

QString FindField::CountText() const {
  if (Text().isEmpty()) return {};
  if (matchCount_ == 0) return tr("No match");
  if (at_ < 0) return tr("%1 found").arg(matchCount_);
  return tr("%1 of %2").arg(at_ + 1).arg(matchCount_);
}

void FindField::ShowCount() { count_->setText(CountText()); }

void FindField::Step(int by) {
  if (matchCount_ == 0) return;
  at_ = at_ < 0 ? (by > 0 ? 0 : matchCount_ - 1) : (at_ + by + matchCount_) % matchCount_;
  ShowCount();
  GoToMatch(at_);
}

bool FindField::eventFilter(QObject* watched, QEvent* event) {
  if (watched != field_ || event->type() != QEvent::KeyPress) {
    return QFrame::eventFilter(watched, event);
  }
  const auto* const key = static_cast<QKeyEvent*>(event);
  switch (key->key()) {
    case Qt::Key_Escape:
      Close();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
      Enter((key->modifiers() & Qt::ShiftModifier) != 0);
      return true;
    case Qt::Key_Down:
      Step(1);
      return true;
    case Qt::Key_Up:
      Step(-1);
      return true;
    default:
      return QFrame::eventFilter(watched, event);
  }
}

}  // namespace views
