// SPDX-License-Identifier: MIT
//
// Flag strings as the views edit them: the targets of a button or an opto, the relays of a
// station, the inhibits of an output.  A character counts as the database counts it.

#ifndef VIEWS_RULES_TARGET_FLAGS_H_
#define VIEWS_RULES_TARGET_FLAGS_H_

#include <string>
#include <string_view>

namespace rules {

// `text` with member `member` (from 1) set or cleared, to be stored: its first `count` members
// are "0" or "1" and are all there; what stands behind them is kept.
// REQUIRES: 1 <= member <= count
std::string WithMember(std::string_view text, int member, bool set, int count);

}  // namespace rules

#endif  // VIEWS_RULES_TARGET_FLAGS_H_
