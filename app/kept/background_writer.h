// SPDX-License-Identifier: MIT

#ifndef APP_KEPT_BACKGROUND_WRITER_H_
#define APP_KEPT_BACKGROUND_WRITER_H_

#include <QDeadlineTimer>
#include <QObject>
#include <deque>
#include <functional>
#include <memory>
#include <thread>

#include "model/status.h"

namespace app {

// What has failed because nobody waits for its disk any longer (75).
inline model::Status DiskDoesNotAnswer() {
  return {model::kFileAccess, "The disk does not answer"};
}

// Writes whole files one after the other in a thread of its own: a disk that takes its time to have
// them for good holds up nobody.
class BackgroundWriter : public QObject {
 public:
  using Write = std::function<model::Status()>;
  using Done = std::function<void(const model::Status&)>;

  BackgroundWriter();

  // Writes first what is still to be written; nobody is told of it any more.
  ~BackgroundWriter() override;

  // Runs `write` in that thread, so it may refer to nothing that others change, and afterwards
  // `done` from the event loop or from Finish(), unless the object is gone by then.
  void Begin(Write write, Done done);

  // Waits until everything is written, at most that long, and runs what is to be done after it.
  // What is not written by then is given up and has failed (75), though its disk may have it later:
  // nobody waits for it any more.
  void Finish(QDeadlineTimer patience = QDeadlineTimer::Forever);

 private:
  struct Work;

  static void Run(const std::shared_ptr<Work>& work);
  void TellDone();

  std::deque<Done> done_;  // of what has begun, in its order
  std::shared_ptr<Work> work_;
  std::thread thread_;
};

}  // namespace app

#endif  // APP_KEPT_BACKGROUND_WRITER_H_
