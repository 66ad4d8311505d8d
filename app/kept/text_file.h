// SPDX-License-Identifier: MIT

#ifndef APP_KEPT_TEXT_FILE_H_
#define APP_KEPT_TEXT_FILE_H_

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "app/kept/background_writer.h"
#include "model/status.h"

namespace app {

// A file that keeps from run to run what changes now and then.  It is replaced as a whole, at most
// once a second, by another thread: bringing it to the disk may take its time.
class TextFile : public QObject {
  Q_OBJECT

 public:
  // `text` makes what the file is to hold now.
  TextFile(std::filesystem::path path, std::function<std::string()> text);

  // What the file holds; empty when it is not there.  One of more than `most` bytes is a failure,
  // like one that cannot be read; nothing is known of its text then.
  model::Status Read(std::uint64_t most, std::string* text);

  // What the file holds cannot be used, and is kept under a name of its own, *kept:
  // "Locks-damaged-2026-04-17.json" for Locks.json and `what` being "damaged".  When that fails,
  // nothing is written before it has succeeded; it is tried again when something is to be written.
  model::Status PutAside(std::string what, std::filesystem::path* kept);

  // What the file is to hold has changed: it is to be there within a second.
  void Update();

  // Returns when it is there, or cannot be in that time.
  void Finish(QDeadlineTimer patience = QDeadlineTimer::Forever);

 Q_SIGNALS:
  // The file could not be written, or what is there not be kept, and why.  It is tried again a
  // second after the next change, and by itself, ever more rarely but at least once a minute; of
  // its failures nobody is told again.
  void Failed(const QString& why);
  // It was written, or holds again what it is to hold.
  void Written();

 private:
  void Begin();
  void TryAgain();
  model::Status MoveAside(std::filesystem::path* kept);
  void Write();
  void Done(const std::string& text, const model::Status& status);
  void Fail(const model::Status& status);
  void IsThere();

  const std::filesystem::path path_;
  const std::function<std::string()> text_;
  std::string written_;  // what it holds
  // The word in the name under which the present file is kept before it is replaced; empty where it
  // is not kept.
  std::string aside_;
  int writing_ = 0;                  // how many writings have begun and not ended
  bool hasFailed_ = false;           // the last time
  std::chrono::milliseconds pause_;  // before it is tried again
  QTimer timer_;
  BackgroundWriter writer_;
};

}  // namespace app

#endif  // APP_KEPT_TEXT_FILE_H_
