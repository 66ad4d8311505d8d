// SPDX-License-Identifier: MIT

#include "app/shell/port_access.h"

#include <QCoreApplication>

namespace app {

QString DeniedPortText(const QString& device, const QString& group) {
  if (group.isEmpty()) {
    return QCoreApplication::translate("PortAccess", "You may not open %1: its rights forbid it.")
        .arg(device);
  }
  return QCoreApplication::translate("PortAccess",
                                     "You may not open %1. Have your user added to the group “%2”, "
                                     "log out and log in again.")
      .arg(device, group);
}

std::optional<QString> PortAccessHint(const QFileInfo& device) {
  if (!device.exists() || (device.isReadable() && device.isWritable())) return std::nullopt;
  return DeniedPortText(device.filePath(), device.group());
}

}  // namespace app
