// SPDX-License-Identifier: MIT

#include "files/background_lines.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace files {

// What the object and its thread share.  The thread keeps it when it is given up.
struct BackgroundLines::Work {
  struct Line {
    std::string text;
    std::size_t lost;  // before it
  };

  Work(Write writeLine, Gap sayGap, Listener tell)
      : write(std::move(writeLine)), gap(std::move(sayGap)), listener(std::move(tell)) {}

  const Write write;
  const Gap gap;
  const Listener listener;
  std::size_t missing = 0;  // in the file; of the thread

  std::mutex mutex;  // of all that follows
  std::condition_variable changed;
  std::deque<Line> waiting;
  std::size_t lost = 0;  // since the last that waits
  bool isEnding = false;
  bool isGivenUp = false;
  bool hasEnded = false;

  Outcome WriteBehindGap(const Line& line);
};

Outcome BackgroundLines::Work::WriteBehindGap(const Line& line) {
  missing += line.lost;
  if (missing > 0) {
    if (Outcome outcome = write(gap(missing)); !outcome.ok()) {
      ++missing;
      return outcome;
    }
    missing = 0;
  }
  Outcome outcome = write(line.text);
  if (!outcome.ok()) ++missing;
  return outcome;
}

BackgroundLines::BackgroundLines(Write write, Gap gap, Listener listener,
                                 std::chrono::milliseconds patience)
    : patience_(patience),
      work_(std::make_shared<Work>(std::move(write), std::move(gap), std::move(listener))),
      thread_(&BackgroundLines::Run, work_) {}

BackgroundLines::~BackgroundLines() {
  std::unique_lock lock(work_->mutex);
  work_->isEnding = true;
  work_->changed.notify_all();
  work_->isGivenUp = !work_->changed.wait_for(lock, patience_, [this] { return work_->hasEnded; });
  lock.unlock();
  if (work_->isGivenUp) {
    thread_.detach();
  } else {
    thread_.join();
  }
}

bool BackgroundLines::Add(std::string line) {
  {
    const std::lock_guard lock(work_->mutex);
    if (work_->waiting.size() >= kWaiting) {
      ++work_->lost;
      return false;
    }
    work_->waiting.push_back({.text = std::move(line), .lost = std::exchange(work_->lost, 0)});
  }
  work_->changed.notify_all();
  return true;
}

void BackgroundLines::Run(const std::shared_ptr<Work>& work) {
  bool wasOk = true;
  std::unique_lock lock(work->mutex);
  while (!work->isGivenUp) {
    work->changed.wait(lock, [&work] { return work->isEnding || !work->waiting.empty(); });
    if (work->waiting.empty()) break;
    const Work::Line line = std::move(work->waiting.front());
    work->waiting.pop_front();
    lock.unlock();
    const Outcome outcome = work->WriteBehindGap(line);
    lock.lock();
    if (outcome.ok() != wasOk && !work->isGivenUp) work->listener(outcome);
    wasOk = outcome.ok();
  }
  work->hasEnded = true;
  work->changed.notify_all();
}

}  // namespace files
