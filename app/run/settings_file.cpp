// SPDX-License-Identifier: MIT

#include "app/run/settings_file.h"

#include <system_error>

#include "config/configuration.h"
#include "config/serial_devices.h"

namespace app {

SettingsFile::SettingsFile(const AppFolder& folder)
    : path_(folder.File(config::kConfigurationFile)), mayBeMade_(folder.lacks.ok()) {}

model::Status SettingsFile::Read(config::IniFile* settings) const {
  return config::IniFile::Load(path_, settings);
}

config::IniFile SettingsFile::Read() const {
  config::IniFile settings;
  (void)Read(&settings);
  return settings;
}

QString SettingsFile::SerialDevice(int number) const {
  return QString::fromStdString(config::SerialDevice(Read(), number));
}

model::Status SettingsFile::Write(const model::SystemModel& model, int portNumber,
                                  const std::map<int, QString>& devices) const {
  std::error_code unseen;
  if (!mayBeMade_ && !std::filesystem::exists(path_, unseen)) return {};
  config::IniFile settings;
  if (model::Status status = Read(&settings); !status.ok()) return status;
  config::WriteConfiguration(model, portNumber, settings);
  for (const auto& [number, device] : devices) {
    config::SetSerialDevice(number, device.toStdString(), settings);
  }
  return settings.Save(path_);
}

}  // namespace app
