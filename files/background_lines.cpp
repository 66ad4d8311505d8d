// SPDX-License-Identifier: MIT

#include "files/background_lines.h"

#include <utility>

namespace files {

BackgroundLines::BackgroundLines(Write write, Listener listener)
    : write_(std::move(write)), listener_(std::move(listener)), thread_([this] { Run(); }) {}

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
    if (waiting_.size() >= kWaiting) return false;
    waiting_.push_back(std::move(line));
  }
  changed_.notify_one();
  return true;
}

void BackgroundLines::Run() {
  bool wasOk = true;
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return isEnding_ || !waiting_.empty(); });
    if (waiting_.empty()) return;
    const std::string line = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    const Outcome outcome = write_(line);
    if (outcome.ok() != wasOk) listener_(outcome);
    wasOk = outcome.ok();
    lock.lock();
  }
}

}  // namespace files
