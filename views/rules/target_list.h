// SPDX-License-Identifier: MIT
//
// The targets of a button in one cell of a spreadsheet: "STUDIO A, MIC ANCH".

#ifndef VIEWS_RULES_TARGET_LIST_H_
#define VIEWS_RULES_TARGET_LIST_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace rules {

// The targets that are set in a plain text of flags, by their labels (element k is that of target
// k + 1), separated by ", "; from ten targets on, "(10) " stands before them.  A label that does
// not tell its target without doubt, because another target has it or because of its characters,
// is written as its number: "#12".
std::string WriteTargetList(const std::string& flags, std::span<const std::string> labels);

// What is wrong with a list.
enum class TargetListProblem : std::uint8_t {
  None,
  Unknown,    // no target has that label or number
  Ambiguous,  // several have it
};

struct TargetListFault {
  TargetListProblem problem = TargetListProblem::None;
  std::string target;  // as it stands there
};

// Reads such a list, in which a target may stand by its label, "#" and its number, or its number
// alone where that is nobody's label.  *flags gets an element for each label.
TargetListFault ReadTargetList(std::string_view text, std::span<const std::string> labels,
                               std::string* flags);

}  // namespace rules

#endif  // VIEWS_RULES_TARGET_LIST_H_
