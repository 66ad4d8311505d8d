// SPDX-License-Identifier: MIT

#ifndef MODEL_ERROR_REPORTER_H_
#define MODEL_ERROR_REPORTER_H_

#include <string>
#include <string_view>

#include "model/status.h"

namespace model {

// How the operator is told of a failure or a refusal: in the program a queue of modal message
// boxes, in a test a list.  All texts are UTF-8.
class ErrorReporter {
 public:
  enum class Icon {
    Critical,     // something failed
    Exclamation,  // the operator's action was refused
  };

  virtual ~ErrorReporter() = default;

  // Reports and returns at once; the box may appear later.  A carriage return or line feed in
  // `text` is a line break.
  virtual void Show(Icon icon, std::string_view title, std::string_view text) = 0;
};

// The text of a failure report: `line`, two carriage returns, "Error # ", the number, " - " and
// the description.  `number` is plain decimal.
std::string ErrorText(std::string_view line, const Status& status);

// Shows a failure that has no report of its own: critical icon, title "Error Processing", text
// "Error in " and `context`, one carriage return, "Error # ", the number, " - " and the
// description.
void ReportError(ErrorReporter& reporter, std::string_view context, const Status& status);

}  // namespace model

#endif  // MODEL_ERROR_REPORTER_H_
