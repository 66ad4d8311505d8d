// SPDX-License-Identifier: MIT

#include "views/programming/focus_grid.h"

#include <QKeyEvent>
#include <QWidget>

#include <algorithm>

namespace views {

FocusGrid::FocusGrid(int columns, QWidget& block)
    : QObject(&block), columns_(columns), block_(block) {}

void FocusGrid::Add(QWidget& member) {
  member.setFocusPolicy(Qt::ClickFocus);
  member.installEventFilter(this);
  members_.push_back(&member);
  if (tabStop_ < 0) MakeTabStop(0);
}

int FocusGrid::IndexOf(const QObject* member) const {
  const auto found = std::ranges::find(members_, member);
  return found == members_.end() ? -1 : static_cast<int>(found - members_.begin());
}

void FocusGrid::MakeTabStop(int index) {
  if (tabStop_ >= 0) members_[static_cast<std::size_t>(tabStop_)]->setFocusPolicy(Qt::ClickFocus);
  tabStop_ = index;
  QWidget* const member = members_[static_cast<std::size_t>(index)];
  member->setFocusPolicy(Qt::StrongFocus);
  block_.setFocusProxy(member);
}

int FocusGrid::Target(int index, int key) const {
  const int rowStart = index - index % columns_;
  const int rowEnd = std::min(rowStart + columns_, Count()) - 1;
  switch (key) {
    case Qt::Key_Left:
      return std::max(index - 1, rowStart);
    case Qt::Key_Right:
      return std::min(index + 1, rowEnd);
    case Qt::Key_Up:
      return index >= columns_ ? index - columns_ : index;
    case Qt::Key_Down:
      return index + columns_ < Count() ? index + columns_ : index;
    case Qt::Key_Home:
      return rowStart;
    case Qt::Key_End:
      return rowEnd;
    default:
      return -1;
  }
}

bool FocusGrid::Carries(const QKeyEvent& keys) const {
  // The keys of a number pad bear a modifier of their own.
  const Qt::KeyboardModifiers modifiers = keys.modifiers() & ~Qt::KeypadModifier;
  return modifiers == Qt::ShiftModifier && carry_ != nullptr && keys.key() != Qt::Key_Home &&
         keys.key() != Qt::Key_End;
}

bool FocusGrid::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    MakeTabStop(IndexOf(watched));
  } else if (event->type() == QEvent::KeyPress) {
    const auto& keys = static_cast<const QKeyEvent&>(*event);
    const bool isPlain = (keys.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool carries = Carries(keys);
    const int from = IndexOf(watched);
    const int target = isPlain || carries ? Target(from, keys.key()) : -1;
    if (target >= 0) {
      members_[static_cast<std::size_t>(target)]->setFocus(Qt::TabFocusReason);
      if (carries) carry_(from, target);
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace views
