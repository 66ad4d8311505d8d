// SPDX-License-Identifier: MIT

#include "tools/teskpanel/take_action.h"

#include "tools/command_line/number.h"
#include "tools/teskpanel/frame.h"

namespace teskpanel {

namespace {

struct NamedAction {
  std::string_view name;
  TakeAction action;
};

constexpr NamedAction kActions[] = {
    {"listen", {36, true}},         {"listen-off", {32, false}},
    {"priority", {37, true}},       {"priority-off", {33, false}},
    {"call", {165, true}},          {"call-off", {161, false}},
    {"call-priority", {293, true}}, {"call-priority-off", {289, false}},
};

}  // namespace

std::optional<TakeAction> ParseTakeAction(std::string_view word) {
  for (const NamedAction& known : kActions) {
    if (known.name == word) return known.action;
  }
  const auto code = command_line::ParseNumber(word, 0, kLargestPair);
  if (!code.has_value()) return std::nullopt;
  for (const NamedAction& known : kActions) {
    if (known.action.command == *code) return known.action;
  }
  return TakeAction{*code, false};
}

std::string TakeActionHelp() {
  std::string text;
  for (const NamedAction& known : kActions) {
    if (known.action.makes) text += (text.empty() ? "" : ", ") + std::string(known.name);
  }
  return text;
}

}  // namespace teskpanel
