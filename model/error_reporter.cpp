// SPDX-License-Identifier: MIT

#include "model/error_reporter.h"

namespace model {

namespace {

std::string NumberLine(const Status& status) {
  return "Error # " + std::to_string(status.Number()) + " - " + status.Description();
}

}  // namespace

std::string ErrorText(std::string_view line, const Status& status) {
  return std::string(line) + "\r\r" + NumberLine(status);
}

void ReportError(ErrorReporter& reporter, std::string_view context, const Status& status) {
  reporter.Show(ErrorReporter::Icon::Critical, "Error Processing",
                "Error in " + std::string(context) + "\r" + NumberLine(status));
}

}  // namespace model
