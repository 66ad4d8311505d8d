// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_VIEW_CONSOLE_H_
#define TESTS_VIEWS_VIEW_CONSOLE_H_

#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <memory>
#include <string>
#include <string_view>

#include "config/window_settings.h"
#include "db/jet/database.h"
#include "model/system_model.h"
#include "stations/change.h"
#include "switcher/live_commands.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/recording_tables.h"
#include "views/main_view.h"
#include "views/services.h"

namespace test {

// Settings, database, line and main window around a view, without hardware.  The model is as
// after a start-up on a new database, but for the count of channels.
class ViewConsole {
 public:
  // A database with records for `channels` channels (at least 128 of them), the default labels
  // and no inhibits; settings of its own, which are empty.
  explicit ViewConsole(int channels);
  virtual ~ViewConsole();

  // Sets a field of a station's record; jet::Value() for null.
  void SetField(int stationNum, std::string_view field, const jet::Value& value);
  std::string Text(int stationNum, std::string_view field);
  int Number(int stationNum, std::string_view field);

  // The station that the shared record set stands on, and making it stand on another.
  int CurrentStation();
  void GoToStation(int stationNum);

  views::Services Services();

  // Shows `view` in a sub-window of the main window; it has the focus then.
  void Show(views::MainView* view);
  // Closes that sub-window as the operator does.
  void Close();

  // Clicks the tool with this identifier on the view's band.
  void ClickTool(const char* id);

  model::SystemModel model;
  FakeSerialPort port;
  RecordingReporter reporter;
  switcher::LiveCommands commands{{.model = model, .port = port, .reporter = reporter}};
  RecordingTables tables;
  views::UnsentTables unsent;
  std::unique_ptr<config::WindowSettings> settings;
  std::unique_ptr<jet::Database> database;
  std::unique_ptr<jet::RecordSet> stations;
  stations::Changes changes;
  std::unique_ptr<QMainWindow> window;
  QMdiArea* area = nullptr;
  QPointer<QMdiSubWindow> subWindow;
  bool databaseIsOpen = true;

 private:
  void CreateStations(int channels);
};

}  // namespace test

#endif  // TESTS_VIEWS_VIEW_CONSOLE_H_
