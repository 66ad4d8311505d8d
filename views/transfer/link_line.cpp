// SPDX-License-Identifier: MIT

#include "views/transfer/link_line.h"

namespace views {

LinkLine::LinkLine(const model::SystemModel& model, const QString& text, QWidget* parent)
    : LinkWarning(parent), model_(model) {
  setText(text);
  setWordWrap(true);
  KeepRoom(true);
  LinkChanged();
}

void LinkLine::End() {
  isOver_ = true;
  KeepRoom(false);
  hide();
}

void LinkLine::Follow() {
  isOver_ = false;
  KeepRoom(false);
  LinkChanged();
}

void LinkLine::LinkChanged() {
  if (isOver_) return;
  const bool was = isConnected_;
  isConnected_ = model_.LinkStatus[0] == 1;
  setHidden(isConnected_);
  if (isConnected_ != was) Q_EMIT ConnectionChanged();
}

void LinkLine::KeepRoom(bool keep) {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(keep);
  setSizePolicy(policy);
}

}  // namespace views
