// SPDX-License-Identifier: MIT

#ifndef TESTS_APP_SLOW_DISK_H_
#define TESTS_APP_SLOW_DISK_H_

#include <QSemaphore>
#include <memory>

#include "app/kept/background_writer.h"

namespace app {

// The disk of a writer: what is begun while the object lives is not written before it answers.
class SlowDisk {
 public:
  explicit SlowDisk(BackgroundWriter& writer) {
    writer.Begin(
        [answers = answers_] {
          answers->acquire();
          return model::Status();
        },
        [](const model::Status&) {});
  }
  ~SlowDisk() { Answer(); }
  SlowDisk(const SlowDisk&) = delete;
  SlowDisk& operator=(const SlowDisk&) = delete;

  void Answer() { answers_->release(); }

 private:
  const std::shared_ptr<QSemaphore> answers_ = std::make_shared<QSemaphore>();
};

}  // namespace app

#endif  // TESTS_APP_SLOW_DISK_H_
