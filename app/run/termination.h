// SPDX-License-Identifier: MIT

#ifndef APP_RUN_TERMINATION_H_
#define APP_RUN_TERMINATION_H_

#include <QObject>

namespace app {

// Turns the operating system's requests to end (SIGTERM, SIGINT, SIGHUP) into a signal on the
// event loop, so that they lead to the normal shut-down, which alone saves the run's changes.
// One object at a time.
class Termination : public QObject {
  Q_OBJECT

 public:
  explicit Termination(QObject* parent = nullptr);
  ~Termination() override;

 Q_SIGNALS:
  void Requested();

 private:
  void OnRequest();
};

}  // namespace app

#endif  // APP_RUN_TERMINATION_H_
