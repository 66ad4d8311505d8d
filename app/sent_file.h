// SPDX-License-Identifier: MIT

#ifndef APP_SENT_FILE_H_
#define APP_SENT_FILE_H_

#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <filesystem>
#include <string>

#include "app/background_writer.h"
#include "model/status.h"
#include "switcher/unsent/held_messages.h"

namespace app {

inline constexpr char kSentFile[] = "Tesk.sent";

// Tesk.sent: what is known of the switcher's tables, kept from run to run.  The file is replaced as
// a whole, at most once a second, by another thread: bringing it to the disk may take its time.
class SentFile : public QObject {
  Q_OBJECT

 public:
  // `messages` is what the file is to hold; it must outlive the object.
  SentFile(std::filesystem::path path, const switcher::HeldMessages& messages);

  // What the file says; nothing when it is not there or cannot be read.
  switcher::HeldMessages Read();

  // The messages have changed: they are to be in the file within a second.
  void Update();

  // Returns when they are in the file, or cannot be in that time.
  void Finish(QDeadlineTimer patience = QDeadlineTimer::Forever);

 Q_SIGNALS:
  // The file could not be written, and why.  The next change tries again.
  void Failed(const QString& why);
  // It was written.
  void Written();

 private:
  void Begin();
  void Write();
  void Done(const std::string& text, const model::Status& status);

  const std::filesystem::path path_;
  const switcher::HeldMessages& messages_;
  std::string written_;  // what it holds
  int writing_ = 0;      // so often it is to be replaced
  QTimer timer_;
  BackgroundWriter writer_;
};

}  // namespace app

#endif  // APP_SENT_FILE_H_
