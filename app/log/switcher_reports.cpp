// SPDX-License-Identifier: MIT

#include "app/log/switcher_reports.h"

namespace app {

void SwitcherReports::CrosspointRowChanged(int output, int mode) {
  services_.log.Add(EventLog::Kind::Map, crosspoints_.Report(rows_.Report(output, mode)));
}

void SwitcherReports::MessageRefused(std::string_view description, switcher::DecodeStatus status) {
  services_.log.AddRepeated(EventLog::Kind::Link, RefusalWords(description, status));
}

}  // namespace app
