// SPDX-License-Identifier: MIT

#include "tests/crash/crash_phase.h"

namespace crash {

namespace {

// `opened`: how often the working copy was opened by then: once to be made, again to be edited.
Phase PhaseOfCall(std::string_view call, int opened, bool ending) {
  const std::string_view file = call.substr(call.find(' ') + 1);
  if (file.starts_with("Tesk.mdb")) return ending ? Phase::Saving : Phase::Creating;
  if (file.starts_with("Orvotesk.ini")) return Phase::Settings;
  if (file == "Tesk.journal.new") return Phase::Shrinking;
  if (file == "Tesk.journal" && call.starts_with("rename ")) return Phase::Shrinking;
  if (file == "Tesk.journal") return ending ? Phase::Tidying : Phase::Editing;
  if (file != "WorkingDb.md$") return Phase::Starting;
  if (call.starts_with("write ") && opened != 1) return Phase::Editing;
  return ending ? Phase::Tidying : Phase::Copying;
}

// The phase of each call.
std::vector<Phase> PhasesOf(const std::vector<std::string>& calls, bool ending) {
  std::vector<Phase> phases;
  int opened = 0;
  for (const std::string& call : calls) {
    if (call == "open WorkingDb.md$") ++opened;
    phases.push_back(PhaseOfCall(call, opened, ending));
  }
  return phases;
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
    case Phase::Shrinking:
      return "shrinking the journal";
    case Phase::Restoring:
      return "restoring";
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
  return PhasesOf(calls, ending).back();
}

std::vector<int> CallsOf(Phase phase, const std::vector<std::string>& calls, bool ending) {
  std::vector<int> numbers;
  const std::vector<Phase> phases = PhasesOf(calls, ending);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (phases[i] == phase) numbers.push_back(static_cast<int>(i) + 1);
  }
  return numbers;
}

}  // namespace crash
