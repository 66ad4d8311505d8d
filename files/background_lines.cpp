// SPDX-License-Identifier: MIT

#include "files/background_lines.h"

#include <utility>

namespace files {

BackgroundLines::BackgroundLines(Write write, Gap gap, Listener listener)
    : write_(std::move(write)),
      gap_(std::move(gap)),
      listener_(std::move(listener)),
      thread_([this] { Run(); }) {}

BackgroundLines::~BackgroundLines() {
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

bool BackgroundLines::Add(std::string line) {
  {
    const std::lock_guard lock(mutex_);
    if (waiting_.size() >= kWaiting) {
      ++lost_;
      return false;
    }
    waiting_.push_back({.text = std::move(line), .lost = std::exchange(lost_, 0)});
  }
  changed_.notify_one();
  return true;
}

Outcome BackgroundLines::WriteBehindGap(const Line& line) {
  missing_ += line.lost;
  if (missing_ > 0) {
    if (Outcome outcome = write_(gap_(missing_)); !outcome.ok()) {
      ++missing_;
      return outcome;
    }
    missing_ = 0;
  }
  Outcome outcome = write_(line.text);
  if (!outcome.ok()) ++missing_;
  return outcome;
}

void BackgroundLines::Run() {
  bool wasOk = true;
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    const Line line = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    const Outcome outcome = WriteBehindGap(line);
    if (outcome.ok() != wasOk) listener_(outcome);
    wasOk = outcome.ok();
    lock.lock();
  }
}

}  // namespace files
