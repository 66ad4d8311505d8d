// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_XMAP_CONSOLE_H_
#define TESTS_VIEWS_XMAP_CONSOLE_H_

#include <QAction>
#include <QColor>
#include <QList>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <memory>
#include <string>
#include <vector>

#include "config/window_settings.h"
#include "db/jet/database.h"
#include "model/system_model.h"
#include "switcher/live_commands.h"
#include "switcher/poll_switch.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "views/inhibit_sender.h"
#include "views/xmap_view.h"

namespace test {

// Settings, database, line and main window around one crosspoint map, without hardware.
class XmapConsole : private views::InhibitSender, private switcher::PollSwitch {
 public:
  // A database with records for `channels` channels (at least 128 of them), the default labels
  // and no inhibits; settings of its own, which are empty.
  explicit XmapConsole(int channels);
  ~XmapConsole() override;

  // Sets a field of a station's record; jet::Value() for null.
  void SetField(int stationNum, std::string_view field, const jet::Value& value);
  std::string Text(int stationNum, std::string_view field);

  // Opens the map in a sub-window of the main window.
  views::XmapView& Open();
  // Closes the map as the operator does.
  void Close();

  // Clicks the tool with this identifier.
  void ClickTool(const char* id);
  // Presses keys in the grid, or clicks a cell of it, named as the grid names cells.
  void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void ClickCell(int row, int column, Qt::MouseButton button = Qt::LeftButton);

  // What the grid's own accessors say, called by name.
  int Mark(int row, int column);
  QString CellText(int row, int column);
  QColor Colour(int row, int column);
  void SelectCell(int row, int column);
  QPoint SelectedCell();
  // The marks of a grid row, one character a cell: "." for none, then "1" to "4".
  std::string Row(int row);

  QWidget& Grid();
  // The middle of a cell in the coordinates of the grid's viewport.
  QPoint CellCentre(int row, int column);

  model::SystemModel model;
  FakeSerialPort port;
  RecordingReporter reporter;
  switcher::LiveCommands commands{model, port, reporter};
  // What happened around a transmission, in order: "poll off", "inhibits 9999", "poll on".
  std::vector<std::string> traffic;
  std::unique_ptr<config::WindowSettings> settings;
  std::unique_ptr<jet::Database> database;
  std::unique_ptr<jet::RecordSet> stations;
  std::unique_ptr<QMainWindow> window;
  QMdiArea* area = nullptr;
  QPointer<QMdiSubWindow> subWindow;
  QPointer<views::XmapView> view;
  bool databaseIsOpen = true;
  bool inhibitsGoOut = true;  // else sending them fails

 private:
  bool SendInhibits(int output) override;
  void SetPolling(bool on) override;
  void CreateStations(int channels);
};

// What stands on the tool band, separators included.
QList<QAction*> BandActions(const views::XmapView& view);

// The colour of a widget at a logical point.
QColor PixelOf(QWidget& widget, const QPoint& point);

// The body of the grid, without its headers.
QWidget& Viewport(XmapConsole& console);

}  // namespace test

#endif  // TESTS_VIEWS_XMAP_CONSOLE_H_
