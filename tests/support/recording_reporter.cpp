// SPDX-License-Identifier: MIT

#include "tests/support/recording_reporter.h"

namespace test {

void RecordingReporter::Show(Icon icon, std::string_view title, std::string_view text) {
  std::string report = icon == Icon::Critical ? "critical|" : "exclamation|";
  report += title;
  report += '|';
  report += text;
  reports.push_back(report);
}

}  // namespace test
