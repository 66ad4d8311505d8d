// SPDX-License-Identifier: MIT
//
// The options of a program: "--name", "--name VALUE" or "--name=VALUE".

#ifndef TOOLS_COMMAND_LINE_OPTION_H_
#define TOOLS_COMMAND_LINE_OPTION_H_

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace command_line {

// One option that a program knows.
struct Option {
  std::string name;      // without its dashes
  std::string argument;  // as the help shows it; empty: takes no value
  std::string help;
  std::string expected;  // what the value must be, for the message when it is not

  // Takes the value ("" for an option without one); false when it is not as expected.
  std::function<bool(std::string_view value)> set;
};

// Reads the arguments, without the program's name, and sets the options among them in their order.
// Other words go to *words in their order; without `words` they are refused.  Returns what is
// wrong, as a sentence for the user; empty when nothing is.
std::string ParseOptions(std::span<const char* const> arguments, std::span<const Option> known,
                         std::vector<std::string>* words = nullptr);

// The option's line in a help text: "  --name ARGUMENT     help", aligned, with its line end.
std::string HelpLine(const Option& option);

}  // namespace command_line

#endif  // TOOLS_COMMAND_LINE_OPTION_H_
