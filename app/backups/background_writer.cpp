// SPDX-License-Identifier: MIT

#include "app/backups/background_writer.h"

#include <QMetaObject>
#include <utility>

namespace app {

void BackgroundWriter::Begin(Write write, Done done) {
  pool_.start([this, write = std::move(write), done = std::move(done)] {
    QMetaObject::invokeMethod(
        this, [done, status = write()] { done(status); }, Qt::QueuedConnection);
  });
}

}  // namespace app
