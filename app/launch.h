// SPDX-License-Identifier: MIT

#ifndef APP_LAUNCH_H_
#define APP_LAUNCH_H_

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <string>

#include "app/console.h"
#include "app/run/app_folder.h"
#include "app/run/instance_lock.h"
#include "app/shell/message_boxes.h"

namespace app {

// What comes before the console: a folder that can be written, which no other console works in.
class Launch : public QObject {
  Q_OBJECT

 public:
  Launch(QString programFolder, QString userFolder);

  // Starts the console, or says why not.  Another console in the folder, or a lock that cannot be
  // had, ends the program with exit code 1 when that was read.  A folder that cannot be used at
  // present is tried again every second, until it can or until the operator has closed the box.
  void Begin();

 private:
  void TryFolder();
  void SayFailure(const char* context, const model::Status& status);

  const QString programFolder_;
  const QString userFolder_;
  QTimer again_;
  std::string said_;  // what keeps the folder from being used, as it was said last
  std::unique_ptr<MessageBoxes> boxes_;
  InstanceLock lock_;
  std::unique_ptr<Console> console_;  // goes before the lock does
};

}  // namespace app

#endif  // APP_LAUNCH_H_
