// SPDX-License-Identifier: MIT
//
// What a take may do, and the command code that says so.

#ifndef TESKPANEL_TAKE_ACTION_H_
#define TESKPANEL_TAKE_ACTION_H_

#include <optional>
#include <string>
#include <string_view>

namespace teskpanel {

struct TakeAction {
  int command = 36;
  bool makes = true;  // else it breaks the crosspoint

  bool operator==(const TakeAction&) const = default;
};

// The action of a name ("listen", "call-off") or of a command code, 0..16383, in decimal.
// Codes that the console does not know break the crosspoint.
std::optional<TakeAction> ParseTakeAction(std::string_view word);

// The names of the actions that make a crosspoint: "listen, priority, ...".
std::string TakeActionHelp();

}  // namespace teskpanel

#endif  // TESKPANEL_TAKE_ACTION_H_
