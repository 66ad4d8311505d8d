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
      command_(new QToolButton(this)),
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

  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(kSideMargin, kVerticalMargin, kVerticalMargin, kVerticalMargin);
  layout->addWidget(text_, 1);
  layout->addWidget(command_);
  layout->addWidget(close_);
  connect(close_, &QToolButton::clicked, this, &HintStrip::CloseCurrent);
  command_->hide();
  hide();
}

void HintStrip::Give(Hint hint, const QString& text, QAction* command) {
  if (closed_.contains(hint)) return;
  hints_[hint] = {.text = text, .command = command};
  ShowCurrent();
}

void HintStrip::Withdraw(Hint hint) {
  closed_.erase(hint);
  if (hints_.erase(hint) != 0) ShowCurrent();
}

void HintStrip::CloseCurrent() {
  if (hints_.empty()) return;
  closed_.insert(hints_.begin()->first);
  hints_.erase(hints_.begin());
  ShowCurrent();
}

void HintStrip::ShowCurrent() {
  if (!hints_.empty()) {
    const auto& [text, command] = hints_.begin()->second;
    text_->setText(text);
    text_->setToolTip(text);
    setAccessibleName(text);
    ShowCommand(command);
  }
  setVisible(!hints_.empty());
}

void HintStrip::ShowCommand(QAction* command) {
  for (QAction* const shown : command_->actions()) command_->removeAction(shown);
  command_->setVisible(command != nullptr);
  // The name is that of the command: without one, nothing must be found by it.
  command_->setObjectName(command == nullptr ? QString() : command->objectName());
  if (command != nullptr) command_->setDefaultAction(command);
}

}  // namespace app
