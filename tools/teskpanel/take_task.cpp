// SPDX-License-Identifier: MIT

#include "tools/teskpanel/take_task.h"

#include <algorithm>

namespace teskpanel {

void TakeTask::OnServed(Session& session, bool linkUp) {
  if (!linkUp) {
    End(ExitCode::LinkDown, kNoLink);
    return;
  }
  session.Request(kAskMap);
}

void TakeTask::OnMap(Session& session, const CrosspointMap& map) {
  if (!sent_) {
    if (!IsWholeMap(map) || !HasChannels(map)) return;
    stoodBefore_ = StandsAsAsked(map.rows[static_cast<std::size_t>(output_ - 1)]);
    session.Take(action_.command, output_, input_);
    session.PollLink();
    sent_ = true;
    return;
  }
  for (const MapRow& row : map.rows) {
    if (row.output == output_ && StandsAsAsked(row)) EndConfirmed();
  }
}

void TakeTask::OnLinkAnswer(Session&, bool linkUp) {
  if (!linkUp) {
    End(ExitCode::LinkDown, kNoLink);
  } else if (sent_ && stoodBefore_) {
    EndConfirmed();
  }
}

Outcome TakeTask::TimeIsOver() const {
  if (!sent_) return Task::TimeIsOver();
  return {ExitCode::NotConfirmed, "the switcher does not report the crosspoint as asked"};
}

bool TakeTask::HasChannels(const CrosspointMap& map) {
  const int count = static_cast<int>(map.rows.size());
  if (output_ <= count && input_ <= count) return true;
  End(ExitCode::Usage, output_ > count ? NoSuchNumber("output", output_, count)
                                       : NoSuchNumber("input", input_, count));
  return false;
}

bool TakeTask::StandsAsAsked(const MapRow& row) const {
  const bool made = std::find(row.inputs.begin(), row.inputs.end(), input_) != row.inputs.end();
  return made == action_.makes;
}

void TakeTask::EndConfirmed() {
  if (Result().has_value()) return;
  printer_.Take(output_, input_, action_.makes);
  End(ExitCode::Done);
}

}  // namespace teskpanel
