// SPDX-License-Identifier: MIT

#include "tools/teskpanel/show_task.h"

#include <algorithm>
#include <string>
#include <utility>

namespace teskpanel {

void ShowTask::OnServed(Session& session, bool linkUp) {
  if (!linkUp) {
    Fail(ExitCode::LinkDown, kNoLink);
    return;
  }
  session.Request(missing_);
  // The console ignores a request while it has no switcher.  If it has just lost it, the answer to
  // this poll says so.
  session.PollLink();
}

void ShowTask::OnLinkAnswer(Session&, bool linkUp) {
  if (!linkUp) Fail(ExitCode::LinkDown, kNoLink);
}

void ShowTask::OnMap(Session&, const CrosspointMap& map) {
  if ((missing_ & kAskMap) == 0 || !IsWholeMap(map)) return;
  if (!HasAllNumbers(static_cast<int>(map.rows.size()), "output")) return;
  std::size_t made = 0;
  for (const MapRow& row : map.rows) {
    made += row.inputs.size();
    // An output that was asked for by its number is shown whatever it hears.
    if (Wants(row.output) && (!numbers_.empty() || printer_.Shows(row))) printer_.Row(row);
  }
  if (numbers_.empty()) {
    printer_.Summary(std::to_string(map.rows.size()) + " outputs, " + std::to_string(made) +
                     " crosspoints");
  }
  HasCome(kAskMap);
}

void ShowTask::OnLabels(Session&, const LabelTable& table) {
  const int bit = table.kind == LabelKind::Station ? kAskStationLabels : kAskInputLabels;
  if ((missing_ & bit) == 0) return;
  for (const Label& label : table.labels) printer_.LabelText(table.kind, label);
  HasCome(bit);
}

void ShowTask::OnProgramming(Session&, const std::vector<StationButtons>& stations) {
  if ((missing_ & kAskProgramming) == 0) return;
  if (!HasAllNumbers(static_cast<int>(stations.size()), "station")) return;
  int active = 0;
  for (const StationButtons& station : stations) {
    int number = 0;
    for (const Button& button : station.buttons) {
      ++number;
      if (button.type != kInactiveButton) ++active;
      if (Wants(station.station) && printer_.Shows(button)) {
        printer_.ButtonProgram(station.station, number, button);
      }
    }
  }
  if (numbers_.empty()) {
    printer_.Summary(std::to_string(stations.size()) + " stations, " + std::to_string(active) +
                     " active buttons");
  }
  HasCome(kAskProgramming);
}

bool ShowTask::Wants(int number) const {
  return numbers_.empty() || std::find(numbers_.begin(), numbers_.end(), number) != numbers_.end();
}

bool ShowTask::HasAllNumbers(int count, const char* what) {
  for (const int number : numbers_) {
    if (number <= count) continue;
    Fail(ExitCode::Usage, NoSuchNumber(what, number, count));
    return false;
  }
  return true;
}

void ShowTask::Fail(ExitCode code, std::string problem) {
  missing_ = 0;
  End(code, std::move(problem));
}

void ShowTask::HasCome(int bit) {
  missing_ &= ~bit;
  if (missing_ == 0) End(ExitCode::Done);
}

}  // namespace teskpanel
