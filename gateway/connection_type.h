// SPDX-License-Identifier: MIT
//
// What a panel says it is when it is asked.

#ifndef GATEWAY_CONNECTION_TYPE_H_
#define GATEWAY_CONNECTION_TYPE_H_

#include <string_view>

namespace gateway {

// The name of a connection type; "Unknown Connection Request" for a code that has none.
std::string_view ConnectionTypeName(int code);

// Whether a panel of this type is served.  This is a rule of its own, not a question of the
// name: 50 and 60 have no name and are served.
bool IsAcceptedType(int code);

}  // namespace gateway

#endif  // GATEWAY_CONNECTION_TYPE_H_
