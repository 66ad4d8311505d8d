// SPDX-License-Identifier: MIT

#include "app/shell/hint_strip.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QStyle>
#include <QToolButton>

#include "views/widgets/elided_label.h"

namespace app {
namespace {

constexpr int kSideMargin = 8;
constexpr int kVerticalMargin = 2;

}  // namespace

HintStrip::HintStrip(QWidget* parent)
    : QFrame(parent),
      text_(new views::ElidedLabel(this)),
      row_(new QHBoxLayout(this)),
      close_(new QToolButton(this)) {
  setObjectName(QStringLiteral("aidHintStrip"));
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  setFrameShape(QFrame::StyledPanel);
  text_->setObjectName(QStringLiteral("aidHintText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setForegroundRole(QPalette::ToolTipText);
  close_->setObjectName(QStringLiteral("aidHintClose"));
  close_->setAutoRaise(true);
  close_->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  // Tab stays within a child window and does not come here.
  const QKeySequence keys(Qt::SHIFT | Qt::Key_Escape);
  close_->setShortcut(keys);
  close_->setToolTip(tr("Close this hint") +
                     QStringLiteral(" (%1)").arg(keys.toString(QKeySequence::NativeText)));
  close_->setAccessibleName(tr("Close this hint"));

  row_->setContentsMargins(kSideMargin, kVerticalMargin, kVerticalMargin, kVerticalMargin);
  row_->addWidget(text_, 1);
  row_->addWidget(close_);
  connect(close_, &QToolButton::clicked, this, &HintStrip::CloseCurrent);
  hide();
}

void HintStrip::Give(Hint hint, const QString& text, const QList<QAction*>& commands) {
  if (closed_.contains(hint)) return;
  hints_[hint] = {.text = text, .commands = commands};
  ShowCurrent();
}

void HintStrip::Withdraw(Hint hint) {
  closed_.erase(hint);
  if (hints_.erase(hint) != 0) ShowCurrent();
}

void HintStrip::TakeFocus() {
  if (!buttons_.isEmpty() && buttons_.front()->isVisible()) {
    buttons_.front()->setFocus(Qt::ShortcutFocusReason);
  }
}

void HintStrip::CloseCurrent() {
  if (hints_.empty()) return;
  closed_.insert(hints_.begin()->first);
  hints_.erase(hints_.begin());
  ShowCurrent();
}

void HintStrip::ShowCurrent() {
  if (!hints_.empty()) {
    const auto& [text, commands] = hints_.begin()->second;
    text_->setText(text);
    text_->setToolTip(text);
    setAccessibleName(text);
    ShowCommands(commands);
  }
  setVisible(!hints_.empty());
}

void HintStrip::ShowCommands(const QList<QAction*>& commands) {
  while (buttons_.size() < commands.size()) {
    buttons_.append(new QToolButton(this));
    row_->insertWidget(static_cast<int>(buttons_.size()), buttons_.back());
  }
  for (qsizetype i = 0; i < buttons_.size(); ++i) {
    QToolButton* const button = buttons_[i];
    QAction* const command = commands.value(i);
    for (QAction* const shown : button->actions()) button->removeAction(shown);
    button->setVisible(command != nullptr);
    // The name is that of the command: without one, nothing must be found by it.
    button->setObjectName(command == nullptr ? QString() : command->objectName());
    if (command != nullptr) button->setDefaultAction(command);
  }
}

}  // namespace app
