// SPDX-License-Identifier: MIT

#ifndef APP_BACKUPS_BACKGROUND_WRITER_H_
#define APP_BACKUPS_BACKGROUND_WRITER_H_

#include <QObject>
#include <QThreadPool>
#include <functional>

#include "model/status.h"

namespace app {

// Writes whole files one after the other in a thread of its own: a disk that takes its time to have
// them for good holds up nobody.
class BackgroundWriter : public QObject {
 public:
  using Write = std::function<model::Status()>;
  using Done = std::function<void(const model::Status&)>;

  BackgroundWriter() { pool_.setMaxThreadCount(1); }

  // Writes first what is still to be written; nobody is told of it any more.
  ~BackgroundWriter() override { Finish(); }

  // Runs `write` in that thread, so it may refer to nothing that others change, and afterwards
  // `done` from the event loop, unless the object is gone by then.
  void Begin(Write write, Done done);

  // Waits until everything is written.
  void Finish() { pool_.waitForDone(); }

 private:
  QThreadPool pool_;
};

}  // namespace app

#endif  // APP_BACKUPS_BACKGROUND_WRITER_H_
