// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_PANEL_H_
#define TESKPANEL_PANEL_H_

#include <QObject>
#include <QTcpSocket>
#include <QTimer>
#include <memory>
#include <string>

#include "tools/teskpanel/options.h"
#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/session.h"
#include "tools/teskpanel/task.h"

namespace teskpanel {

// The running program: carries bytes between the socket and the session, and lines to the
// standard output; keeps the time limits, and connects again for a task that stays.
class Panel : public QObject {
  Q_OBJECT

 public:
  // `printer` is the one that the task prints to.  All must outlive the object.
  Panel(const Options& options, Task& task, Printer& printer);

  // Makes the first connection.  The program's event loop ends with an ExitCode.
  void Start();

 private:
  void Connect();
  void CarryIn();
  void CarryOut();
  void CheckProgress();
  void TimeIsOver();
  void PollLink();

  // The connection cannot be used any more: ends the program, or tries again later.
  void Lose(ExitCode code, const std::string& problem);
  void End(ExitCode code, const std::string& problem);
  bool PrintOut();

  const Options& options_;
  Task& task_;
  Printer& printer_;
  QTcpSocket socket_;
  std::unique_ptr<Session> session_;  // null while there is no connection and none is being made
  QTimer deadline_;                   // runs while something is waited for
  QTimer poll_;                       // runs while a task that stays is served
  QTimer retry_;
  bool wasServed_ = false;  // in this connection
  int failures_ = 0;        // tries in a row in which the panel was not served
  bool ended_ = false;
};

}  // namespace teskpanel

#endif  // TESKPANEL_PANEL_H_
