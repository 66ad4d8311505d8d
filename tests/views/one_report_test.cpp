// SPDX-License-Identifier: MIT

#include "views/one_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/recording_reporter.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Icon = model::ErrorReporter::Icon;
using Cause = OneReport::Cause;

class OneReportTest : public testing::Test {
 protected:
  void Fail(const char* text) { report_.Show(Icon::Critical, "T", text); }

  test::RecordingReporter to_;
  OneReport report_{to_};
};

TEST_F(OneReportTest, OutsideOfOperationsEverythingIsPassedOn) {
  Fail("a");
  Fail("a");
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|a", "critical|T|a"));
}

TEST_F(OneReportTest, TheFirstReportOfAnOperationIsPassedOn) {
  {
    const OneReport::Scope outer(report_, Cause::Operator);
    {
      const OneReport::Scope inner(report_);
      Fail("a");
    }
    Fail("b");
    const OneReport::Scope next(report_);
    Fail("c");
  }
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|a"));
}

TEST_F(OneReportTest, WhatTheOperatorDoesIsReportedEachTime) {
  for (int i = 0; i < 2; ++i) {
    const OneReport::Scope scope(report_, Cause::Operator);
    Fail("a");
  }
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|a", "critical|T|a"));
}

TEST_F(OneReportTest, RefreshesSayTheSameOnceUntilOneSucceeds) {
  const auto refresh = [this](const char* text) {
    const OneReport::Scope scope(report_);
    if (text != nullptr) Fail(text);
  };
  for (int i = 0; i < 5; ++i) refresh("a");
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|a"));
  refresh("b");
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|a", "critical|T|b"));
  to_.reports.clear();
  refresh("b");
  EXPECT_THAT(to_.reports, IsEmpty());
  refresh(nullptr);
  refresh("b");
  EXPECT_THAT(to_.reports, ElementsAre("critical|T|b"));
}

}  // namespace
}  // namespace views
