// SPDX-License-Identifier: MIT

#include "tests/crash/crash_phase.h"

namespace crash {

namespace {

Phase PhaseOfCall(std::string_view call, bool ending) {
  const std::string_view file = call.substr(call.find(' ') + 1);
  if (file.starts_with("Tesk.mdb")) return ending ? Phase::Saving : Phase::Creating;
  // The settings are written to a file that has no name until it is whole.
  if (file.starts_with("Orvotesk.ini") || file.starts_with('#')) return Phase::Settings;
  if (file != "WorkingDb.md$") return Phase::Starting;
  if (call.starts_with("write ")) return Phase::Editing;
  return ending ? Phase::Tidying : Phase::Copying;
}

}  // namespace

const char* NameOf(Phase phase) {
  switch (phase) {
    case Phase::Starting:
      return "starting";
    case Phase::Creating:
      return "creating the database";
    case Phase::Copying:
      return "making the working copy";
    case Phase::Editing:
      return "editing";
    case Phase::Saving:
      return "copying back";
    case Phase::Tidying:
      return "removing the copy";
    case Phase::Settings:
      return "writing settings";
    case Phase::Ended:
      break;
  }
  return "(ended before)";
}

Phase PhaseOf(const std::vector<std::string>& calls, bool ending) {
  // Its start is through, and it has not begun to save.
  if (calls.empty()) return Phase::Editing;
  return PhaseOfCall(calls.back(), ending);
}

std::vector<int> CallsOf(Phase phase, const std::vector<std::string>& calls, bool ending) {
  std::vector<int> numbers;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (PhaseOfCall(calls[i], ending) == phase) numbers.push_back(static_cast<int>(i) + 1);
  }
  return numbers;
}

}  // namespace crash
