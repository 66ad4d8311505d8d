// SPDX-License-Identifier: MIT

#ifndef SWITCHER_COMPARISON_CARRIED_H_
#define SWITCHER_COMPARISON_CARRIED_H_

#include <string_view>

#include "db/jet/value.h"

namespace switcher {

// Whether a message says the same for both values of a field of a station: labels without the
// spaces behind them and what does not fit into eight characters, flags with "0" for those that are
// missing, the low eight bits of a number, null like 0 or an empty text.  Of a field that never
// travels, for any two values.
bool IsSameInMessage(std::string_view field, const jet::Value& one, const jet::Value& other);

}  // namespace switcher

#endif  // SWITCHER_COMPARISON_CARRIED_H_
