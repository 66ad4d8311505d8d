// SPDX-License-Identifier: MIT

#include "tools/command_line/option.h"

#include <algorithm>

namespace command_line {

std::string ParseOptions(std::span<const char* const> arguments, std::span<const Option> known,
                         std::vector<std::string>* words) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    if (!argument.starts_with("--")) {
      if (words == nullptr) return "what is \"" + std::string(argument) + "\"?";
      words->emplace_back(argument);
      continue;
    }
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(2, equals == argument.npos ? equals : equals - 2);
    const std::string shown = "--" + std::string(name);
    const auto option = std::find_if(known.begin(), known.end(),
                                     [name](const Option& o) { return o.name == name; });
    if (option == known.end()) return "unknown option " + shown;

    std::string_view value;
    if (equals != argument.npos) {
      if (option->argument.empty()) return shown + " takes no value";
      value = argument.substr(equals + 1);
    } else if (!option->argument.empty()) {
      if (i + 1 == arguments.size()) return shown + " needs a value";
      value = arguments[++i];
    }
    if (!option->set(value)) return shown + " must be " + option->expected;
  }
  return {};
}

std::string HelpLine(const Option& option) {
  constexpr std::size_t kColumn = 24;
  std::string line = "  --" + option.name;
  if (!option.argument.empty()) line += " " + option.argument;
  line.resize(std::max(line.size() + 2, kColumn), ' ');
  return line + option.help + "\n";
}

}  // namespace command_line
