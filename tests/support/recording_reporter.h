// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_REPORTER_H_
#define TESTS_SUPPORT_RECORDING_REPORTER_H_

#include <string>
#include <vector>

#include "model/error_reporter.h"

namespace test {

// Keeps every report, in order, as "critical|title|text" or "exclamation|title|text".
class RecordingReporter : public model::ErrorReporter {
 public:
  void Show(Icon icon, std::string_view title, std::string_view text) override;

  std::vector<std::string> reports;
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_REPORTER_H_
