// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_PORT_ACCESS_H_
#define APP_SHELL_PORT_ACCESS_H_

#include <QFileInfo>
#include <QString>
#include <optional>

namespace app {

// What to do about `device`, which exists and which this user may not open; `group` is the group
// whose members may, empty when it has no name.
QString DeniedPortText(const QString& device, const QString& group);

// What to do about a serial device that is there and that this user may not open; nothing when
// the device is missing or may be opened.
std::optional<QString> PortAccessHint(const QFileInfo& device);

}  // namespace app

#endif  // APP_SHELL_PORT_ACCESS_H_
