// SPDX-License-Identifier: MIT

#include <QPushButton>

#include "model/system_model.h"
#include "switcher/serial_port.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "views/settings/settings_dialog.h"

namespace gallery {

void DrawSettings() {
  model::SystemModel model;
  model.ComPort = 1;
  model.IpPort = 1250;
  model.DownloadInterval = 50;
  model.AppPath = "/srv/intercom/studio-a\\";
  views::SettingsDialog dialog(
      {.model = model,
       .device =
           [](int port) {
             return port < 3 ? QStringLiteral("/dev/ttyUSB%1").arg(port - 1)
                             : QStringLiteral("/dev/ttyS%1").arg(port - 1);
           },
       .isInUse = [](const QString& device) { return device == QLatin1String("/dev/ttyUSB0"); },
       .tryDevice =
           [](const QString& device) {
             return device.startsWith(QLatin1String("/dev/ttyUSB"))
                        ? model::Status()
                        : model::Status(switcher::kPortUnavailable,
                                        "Permission error while locking the device");
           }});
  dialog.show();
  Save(dialog, QStringLiteral("settings"));
  dialog.findChild<QPushButton*>(QStringLiteral("aidTryDevices"))->click();
  Save(dialog, QStringLiteral("settings-tried"));
  dialog.findChild<QPushButton*>(QStringLiteral("aidChangeDevices"))->click();
  Save(dialog, QStringLiteral("settings-devices"));
}

}  // namespace gallery
