// SPDX-License-Identifier: MIT

#include "views/transfer/link_line.h"

namespace views {
namespace {

constexpr int kLookMilliseconds = 500;

}  // namespace

LinkLine::LinkLine(const model::SystemModel& model, const QString& text, QWidget* parent)
    : LinkWarning(parent), model_(model) {
  setText(text);
  setWordWrap(true);
  KeepRoom(true);
  timer_.setInterval(kLookMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &LinkLine::Look);
  timer_.start();
  Look();
}

void LinkLine::End() {
  timer_.stop();
  KeepRoom(false);
  hide();
}

void LinkLine::Follow() {
  KeepRoom(false);
  timer_.start();
  Look();
}

void LinkLine::Look() {
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
