// SPDX-License-Identifier: MIT

#ifndef VIEWS_ONE_REPORT_H_
#define VIEWS_ONE_REPORT_H_

#include <string>
#include <string_view>

#include "model/error_reporter.h"

namespace views {

// Makes one report of all that come from one cause: an operation of a view consists of many
// refreshes, and what makes one of them fail makes the others fail as well.
class OneReport : public model::ErrorReporter {
 public:
  // What the operator started is reported whenever it fails.  Of refreshes that come by
  // themselves, one after the other, the same report is made once until one of them succeeds.
  enum class Cause { Operator, Refresh };

  // An operation.  Of the reports within the outermost scope the first is passed on.
  class Scope {
   public:
    explicit Scope(OneReport& report, Cause cause = Cause::Refresh);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    OneReport& report_;
  };

  // `to` must outlive the object.
  explicit OneReport(model::ErrorReporter& to) : to_(to) {}

  void Show(Icon icon, std::string_view title, std::string_view text) override;

 private:
  model::ErrorReporter& to_;
  int depth_ = 0;
  Cause cause_ = Cause::Refresh;
  bool hasFailed_ = false;
  std::string lastText_;
};

}  // namespace views

#endif  // VIEWS_ONE_REPORT_H_
