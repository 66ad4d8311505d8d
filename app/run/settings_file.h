// SPDX-License-Identifier: MIT

#ifndef APP_RUN_SETTINGS_FILE_H_
#define APP_RUN_SETTINGS_FILE_H_

#include <QString>
#include <map>

#include "app/run/app_folder.h"
#include "config/ini_file.h"
#include "model/status.h"
#include "model/system_model.h"

namespace app {

// The settings file in the console's folder.
class SettingsFile {
 public:
  explicit SettingsFile(const AppFolder& folder);

  // Reads the file.  One that cannot be read names nothing, so that all has its defaults.
  model::Status Read(config::IniFile* settings) const;
  config::IniFile Read() const;

  // The device of a serial port, as the file names it now or as the platform does.
  QString SerialDevice(int number) const;

  // Writes the settings of the model, the number of the port that is in use, and the devices of
  // ports that get another one.  A file that cannot be read is not written either: what it holds
  // would be lost.  Nor is one made in the place of the house's that could not be copied.
  model::Status Write(const model::SystemModel& model, int portNumber,
                      const std::map<int, QString>& devices = {}) const;

 private:
  const std::filesystem::path path_;
  const bool mayBeMade_;
};

}  // namespace app

#endif  // APP_RUN_SETTINGS_FILE_H_
