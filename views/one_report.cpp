// SPDX-License-Identifier: MIT

#include "views/one_report.h"

namespace views {

OneReport::Scope::Scope(OneReport& report, Cause cause) : report_(report) {
  if (report_.depth_++ > 0) return;
  report_.cause_ = cause;
  report_.hasFailed_ = false;
}

OneReport::Scope::~Scope() {
  if (--report_.depth_ == 0 && !report_.hasFailed_) report_.lastText_.clear();
}

void OneReport::Show(Icon icon, std::string_view title, std::string_view text) {
  if (depth_ > 0) {
    if (hasFailed_) return;
    hasFailed_ = true;
    if (cause_ == Cause::Refresh && text == lastText_) return;
    lastText_ = text;
  }
  to_.Show(icon, title, text);
}

}  // namespace views
