// SPDX-License-Identifier: MIT

#ifndef TOOLS_STAGE_STAGE_H_
#define TOOLS_STAGE_STAGE_H_

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
#include "views/main_view.h"

namespace stage {

// Settings, database and main window around a view, without hardware.  The model is as after a
// start-up on a new database, but for the count of channels.
class Stage {
 public:
  // A database with records for `channels` channels (at least 128 of them), the default labels
  // and no inhibits; settings of its own, which are empty.
  explicit Stage(int channels);
  virtual ~Stage();

  // Sets a field of a station's record; jet::Value() for null.
  void SetField(int stationNum, std::string_view field, const jet::Value& value);
  std::string Text(int stationNum, std::string_view field);
  int Number(int stationNum, std::string_view field);

  // The station that the shared record set stands on, and making it stand on another.
  int CurrentStation();
  void GoToStation(int stationNum);

  // The shared record set; null while `databaseIsOpen` is not set.
  jet::RecordSet* Stations() const { return databaseIsOpen ? stations.get() : nullptr; }

  // Shows `view` in a sub-window of the main window; it has the focus then.
  void Show(views::MainView* view);
  // Closes that sub-window as the operator does.
  void Close();

  model::SystemModel model;
  std::unique_ptr<config::WindowSettings> settings;
  std::unique_ptr<jet::Database> database;
  std::unique_ptr<jet::RecordSet> stations;
  std::unique_ptr<QMainWindow> window;
  QMdiArea* area = nullptr;
  QPointer<QMdiSubWindow> subWindow;
  bool databaseIsOpen = true;

 private:
  void CreateStations(int channels);
};

}  // namespace stage

#endif  // TOOLS_STAGE_STAGE_H_
