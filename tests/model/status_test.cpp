// SPDX-License-Identifier: MIT

#include "model/status.h"

#include <gtest/gtest.h>

#include "db/jet/status.h"
#include "model/error_reporter.h"
#include "tests/support/recording_reporter.h"

namespace model {
namespace {

TEST(Status, SuccessHasNoNumberAndNoText) {
  const Status status;
  EXPECT_TRUE(status.ok());
  EXPECT_EQ(status.Number(), 0);
  EXPECT_EQ(status.Description(), "");
}

TEST(Status, TakesOverTheEnginesStatusWithItsPage) {
  const Status status =
      jet::Status(jet::ErrorNumber::Damaged, "The leaf chain comes back to itself", 17);
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_EQ(status.Description(), "The leaf chain comes back to itself (page 17)");
}

TEST(Status, TakesOverTheEnginesSuccess) {
  const Status status = jet::Status();
  EXPECT_TRUE(status.ok());
}

TEST(ErrorText, IsTheLineTwoReturnsNumberAndDescription) {
  EXPECT_EQ(ErrorText("Error Sending Take Command", Status(8018, "The port is not open")),
            "Error Sending Take Command\r\rError # 8018 - The port is not open");
}

TEST(ReportError, IsTheContextOneReturnNumberAndDescription) {
  test::RecordingReporter reporter;
  ReportError(reporter, "Writing Configuration File", Status(75, "The disk is read-only"));
  EXPECT_EQ(reporter.reports,
            (std::vector<std::string>{"critical|Error Processing|Error in Writing Configuration "
                                      "File\rError # 75 - The disk is read-only"}));
}

}  // namespace
}  // namespace model
