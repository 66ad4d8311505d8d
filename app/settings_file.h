// SPDX-License-Identifier: MIT

#ifndef APP_SETTINGS_FILE_H_
#define APP_SETTINGS_FILE_H_

#include <QString>

#include "app/app_folder.h"
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

  // Writes the settings of the model and the number of the port that is in use.  A file that cannot
  // be read is not written either: what it holds would be lost.  Nor is one made in the place of
  // the house's that could not be copied.
  model::Status Write(const model::SystemModel& model, int portNumber) const;

 private:
  const std::filesystem::path path_;
  const bool mayBeMade_;
};

}  // namespace app

#endif  // APP_SETTINGS_FILE_H_
