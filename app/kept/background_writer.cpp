// SPDX-License-Identifier: MIT

#include "app/kept/background_writer.h"

#include <QMetaObject>
#include <QMutex>
#include <QMutexLocker>
#include <QWaitCondition>
#include <utility>

namespace app {

// What the object and its thread share.  The thread keeps it when it is given up.
struct BackgroundWriter::Work {
  QMutex mutex;  // of all that follows
  QWaitCondition ended;
  std::deque<Write> waiting;
  std::deque<model::Status> written;  // in the order of their beginning
  bool isRunning = false;
  BackgroundWriter* owner = nullptr;  // null when nobody is to be told
};

BackgroundWriter::BackgroundWriter() : work_(std::make_shared<Work>()) { work_->owner = this; }

BackgroundWriter::~BackgroundWriter() {
  {
    const QMutexLocker lock(&work_->mutex);
    work_->owner = nullptr;
  }
  if (thread_.joinable()) thread_.join();
}

void BackgroundWriter::Begin(Write write, Done done) {
  done_.push_back(std::move(done));
  const QMutexLocker lock(&work_->mutex);
  work_->waiting.push_back(std::move(write));
  if (std::exchange(work_->isRunning, true)) return;
  if (thread_.joinable()) thread_.join();  // it had nothing more to write
  thread_ = std::thread(&BackgroundWriter::Run, work_);
}

void BackgroundWriter::Run(const std::shared_ptr<Work>& work) {
  QMutexLocker lock(&work->mutex);
  while (!work->waiting.empty()) {
    Write write = std::move(work->waiting.front());
    work->waiting.pop_front();
    lock.unlock();
    const model::Status status = write();
    write = nullptr;  // with the bytes that it holds
    lock.relock();
    work->written.push_back(status);
    if (work->owner != nullptr) {
      QMetaObject::invokeMethod(
          work->owner, [owner = work->owner] { owner->TellDone(); }, Qt::QueuedConnection);
    }
  }
  work->isRunning = false;
  work->ended.wakeAll();
}

void BackgroundWriter::Finish(QDeadlineTimer patience) {
  bool isWritten = false;
  {
    const QMutexLocker lock(&work_->mutex);
    while (work_->isRunning && work_->ended.wait(&work_->mutex, patience)) {
    }
    isWritten = !work_->isRunning;
    if (!isWritten) work_->owner = nullptr;
  }
  TellDone();
  if (isWritten) return;
  thread_.detach();
  work_ = std::make_shared<Work>();
  work_->owner = this;
  for (const Done& done : std::exchange(done_, {})) done(DiskDoesNotAnswer());
}

void BackgroundWriter::TellDone() {
  std::deque<model::Status> written;
  {
    const QMutexLocker lock(&work_->mutex);
    written.swap(work_->written);
  }
  for (const model::Status& status : written) {
    const Done done = std::move(done_.front());
    done_.pop_front();
    done(status);
  }
}

}  // namespace app
