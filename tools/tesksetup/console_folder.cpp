// SPDX-License-Identifier: MIT

#include "tools/tesksetup/console_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

#include "app/run/instance_lock.h"
#include "config/configuration.h"
#include "config/ini_file.h"
#include "config/serial_devices.h"
#include "config/window_settings.h"
#include "db/database_files.h"
#include "model/system_model.h"

namespace tesksetup {

namespace {

constexpr char kConfiguration[] = "CONFIGURATION";
constexpr char kSerialDevices[] = "SERIAL DEVICES";

std::filesystem::path Path(const QString& name) { return name.toStdU16String(); }

std::filesystem::path SettingsIn(const QString& folder) {
  return Path(QDir(folder).filePath(QLatin1String(config::kConfigurationFile)));
}

model::Status Failure(const char* what, const QString& path, const QString& why) {
  return {EIO, std::string("Cannot ") + what + " " + path.toStdString() + ": " + why.toStdString()};
}

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool IsSameProgram(const QString& one, const QString& other) {
  const QFileInfo present(other);
  return present.isExecutable() && present.size() == QFileInfo(one).size() &&
         Contents(one) == Contents(other);
}

std::string ComKey(int comPort) { return "COM" + std::to_string(comPort); }

// The settings as the console reads them: with its defaults for what is missing or out of range.
model::SystemModel Read(const config::IniFile& settings) {
  model::SystemModel model;
  config::ReadConfiguration(settings, model);
  return model;
}

model::Status WriteSettings(const ConsolePlan& plan, Places places) {
  config::IniFile settings;
  const std::filesystem::path path = SettingsIn(plan.folder);
  if (model::Status status = config::IniFile::Load(path, &settings); !status.ok()) return status;
  const int comPort = Read(settings).ComPort;
  settings.SetValue(kConfiguration, "COM Port", std::to_string(comPort));
  settings.SetValue(kConfiguration, "IP Port", std::to_string(plan.ipPort));
  settings.SetValue(kConfiguration, "Softpanel Support", plan.servesPanels ? "Yes" : "No");
  const std::string device = plan.device.toStdString();
  if (device != settings.Value(kSerialDevices, ComKey(comPort))) {
    settings.SetValue(kSerialDevices, ComKey(comPort), device);
  }
  if (places == Places::Own && config::PlacesSection(settings).isEmpty()) {
    config::SetPlacesSection(QStringLiteral("Console ") + plan.name, settings);
  }
  return settings.Save(path);
}

}  // namespace

QString ProgramIn(const QString& folder) {
  return QDir(folder).filePath(QStringLiteral("teskctl"));
}

bool HoldsConsole(const QString& folder) {
  const QDir inside(folder);
  return inside.exists(QLatin1String(db::kMainFile)) ||
         inside.exists(QLatin1String(config::kConfigurationFile));
}

model::Status ReadSettings(const QString& folder, ConsolePlan* plan) {
  config::IniFile settings;
  model::Status status = config::IniFile::Load(SettingsIn(folder), &settings);
  const model::SystemModel model = Read(settings);
  plan->device = QString::fromStdString(settings.Value(kSerialDevices, ComKey(model.ComPort)));
  plan->servesPanels = model.SoftpanelSupport;
  plan->ipPort = model.IpPort;
  return status;
}

QString OwnDevice(const QString& folder) {
  config::IniFile settings;
  // No port: the settings cannot be read, or there is no folder.
  if (QDir::isAbsolutePath(folder)) (void)config::IniFile::Load(SettingsIn(folder), &settings);
  return QString::fromStdString(config::SerialDevice({}, Read(settings).ComPort));
}

model::Status MakeConsoleFolder(const ConsolePlan& plan, const QString& installedProgram,
                                Places places) {
  if (!QDir().mkpath(plan.folder)) {
    return {EACCES, "Cannot make the folder " + plan.folder.toStdString()};
  }
  app::InstanceLock lock;
  if (lock.Take(plan.folder) == app::InstanceLock::Result::HeldByAnother) {
    return {EBUSY, "The console of this folder is running"};
  }
  if (model::Status status = UpdateProgram(installedProgram, plan.folder); !status.ok()) {
    return status;
  }
  return WriteSettings(plan, places);
}

model::Status UpdateProgram(const QString& installedProgram, const QString& folder) {
  const QString program = ProgramIn(folder);
  if (IsSameProgram(installedProgram, program)) return {};
  const QString beside = program + QStringLiteral(".new");
  QFile::remove(beside);
  QFile installed(installedProgram);
  if (!installed.copy(beside)) return Failure("copy", installedProgram, installed.errorString());
  std::error_code error;
  std::filesystem::rename(Path(beside), Path(program), error);
  if (!error) return {};
  QFile::remove(beside);
  return Failure("replace", program, QString::fromStdString(error.message()));
}

}  // namespace tesksetup
