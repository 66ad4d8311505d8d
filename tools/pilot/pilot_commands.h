// SPDX-License-Identifier: MIT

#ifndef TOOLS_PILOT_PILOT_COMMANDS_H_
#define TOOLS_PILOT_PILOT_COMMANDS_H_

#include <QJsonObject>

namespace pilot {

// The answer to a request that succeeded and has no result.
QJsonObject Done();

// Carries out one request in this process, on the user-interface thread, and gives the answer.
QJsonObject Execute(const QJsonObject& request);

}  // namespace pilot

#endif  // TOOLS_PILOT_PILOT_COMMANDS_H_
