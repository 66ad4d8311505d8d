// SPDX-License-Identifier: MIT

#ifndef APP_RUN_SHUT_DOWN_H_
#define APP_RUN_SHUT_DOWN_H_

#include <QObject>
#include <filesystem>
#include <functional>

#include "app/run/settings_file.h"
#include "app/shell/main_window.h"
#include "app/shell/main_window_place.h"
#include "app/shell/message_boxes.h"
#include "app/shell/open_views.h"
#include "app/transfer/transfers.h"
#include "db/database_files.h"
#include "gateway/panel_gateway.h"
#include "gateway/qt_sockets.h"
#include "switcher/serial_port.h"

namespace app {

// The shut-down: a running transfer ends (the table that is being sent is sent to its end), and a
// recall, what is typed is stored, then the window's place, the database, the serial port, the
// timers, the settings, the panels, the child windows, what is being written in the background, in
// this order. The program ends behind it.
//
// What is left to be decided is asked about before anything of that, and keeps the program running,
// unless the system wants it gone.  A database that cannot be saved keeps the program running, and
// closing tries again.
class ShutDown : public QObject {
  Q_OBJECT

 public:
  struct Services {
    const model::SystemModel& model;
    MessageBoxes& boxes;
    MainWindow& window;
    MainWindowPlace& place;
    Transfers& transfers;
    OpenViews& views;
    db::DatabaseFiles& files;
    std::filesystem::path workingCopy;  // of the database
    switcher::SerialPort& port;
    const SettingsFile& settings;
    gateway::Listener& listener;
    gateway::PanelGateway& panels;
    // Whether nothing is left to be decided first; false when the operator was asked.
    std::function<bool()> mayClose;
  };

  // All must outlive the object.
  explicit ShutDown(const Services& services) : services_(services) {}

  // The window is to close: runs the shut-down.  False when something keeps it from its end, which
  // has been reported.
  bool Run();

  // The system wants the program to end: what cannot be stored does not hold it up.
  void Terminate();

  // The user logs out of the desktop, and wants what was edited kept.  False when the console must
  // stay for that.
  bool EndSession();

 Q_SIGNALS:
  // What runs on the line and what is asked is to end at once; the port is still open.
  void Ending();
  // The database is to be saved next.
  void SavingDatabase();
  // The database was saved, and had been changed.
  void DatabaseSaved();
  // All that was edited is in Tesk.mdb, and whether that was replaced for it.
  void AllSaved(bool replaced);
  // Nothing of the run is left but what is being written in the background: whoever writes there
  // waits for it now, as long as an operator may be kept waiting, and reports what fails.
  void AllClosed();

 private:
  void OfferToCloseWithoutSaving(const model::Status& status);
  void CloseWithoutSaving();
  void EndRun();
  void EndProgram();

  const Services services_;
  bool terminating_ = false;
  bool ended_ = false;
};

}  // namespace app

#endif  // APP_RUN_SHUT_DOWN_H_
