// SPDX-License-Identifier: MIT

#ifndef APP_RUN_START_UP_H_
#define APP_RUN_START_UP_H_

#include <cstdint>
#include <string_view>

#include "config/ini_file.h"
#include "db/database_files.h"
#include "gateway/qt_sockets.h"
#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/link.h"

namespace app {

// The start-up loader: settings, panel gateway, database, model, serial port, in this order.
//
// A failure of the gateway, of the database or of its counts is reported with the one text for
// all of these, and the next step follows; a failure of the serial port ends the loader.
class StartUp {
 public:
  struct Services {
    model::SystemModel& model;
    db::DatabaseFiles& files;
    gateway::Listener& listener;
    switcher::Link& link;
    model::ErrorReporter& reporter;
  };

  // All must outlive the object.
  explicit StartUp(const Services& services) : services_(services) {}

  // Runs the loader.  `folder` is the program's folder, in UTF-8; `settings` its settings file.
  void Run(std::string_view folder, const config::IniFile& settings);

 private:
  void SetDefaults(std::string_view folder);
  void StartGateway();
  void OpenDatabase();
  void ReadCounts();
  void ReadCount(std::string_view field, int least, int greatest, std::int16_t* count);
  void OpenSerialPort();
  void ReportGatewayFailure();

  const Services services_;
};

}  // namespace app

#endif  // APP_RUN_START_UP_H_
