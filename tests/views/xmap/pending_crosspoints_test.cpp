// SPDX-License-Identifier: MIT

#include "views/xmap/pending_crosspoints.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <string>

#include "model/system_model.h"

namespace views {
namespace {

using testing::Each;
using testing::ElementsAre;

class PendingCrosspointsTest : public testing::Test {
 protected:
  PendingCrosspointsTest() {
    QObject::connect(&pending_, &PendingCrosspoints::Changed,
                     [this](const Crosspoint& crosspoint, bool pending) {
                       seen_.push_back((pending ? "+" : "-") + std::to_string(crosspoint.output) +
                                       "," + std::to_string(crosspoint.input));
                     });
  }

  PendingCrosspoints pending_;
  std::vector<std::string> seen_;
};

TEST_F(PendingCrosspointsTest, ReportOfTheRowEndsIt) {
  pending_.Sent({2, 3});
  pending_.Sent({2, 4});
  pending_.Sent({5, 3});
  pending_.Reported(7);
  pending_.Reported(2);
  EXPECT_THAT(seen_, ElementsAre("+2,3", "+2,4", "+5,3", "-2,3", "-2,4"));
  pending_.Reported(2);
  pending_.Reported(model::kAll);
  EXPECT_EQ(seen_.back(), "-5,3");
  EXPECT_EQ(seen_.size(), 6U);
}

TEST_F(PendingCrosspointsTest, EachIsGivenUpAfterThreeSeconds) {
  pending_.Sent({1, 1});
  QTest::qWait(1000);
  pending_.Sent({2, 2});
  QTest::qWait(500);
  pending_.Sent({1, 1});  // again: three seconds from now
  QElapsedTimer sinceAgain;
  sinceAgain.start();
  ASSERT_TRUE(QTest::qWaitFor([this] { return seen_.size() == 5; }, 60000));
  EXPECT_THAT(seen_, ElementsAre("+1,1", "+2,2", "+1,1", "-2,2", "-1,1"));
  EXPECT_GE(sinceAgain.elapsed(), 2800);  // a coarse timer
}

TEST_F(PendingCrosspointsTest, OutputsThatWereNotReportedAreNamed) {
  std::vector<int> givenUp;
  QObject::connect(&pending_, &PendingCrosspoints::GivenUp,
                   [&](int output) { givenUp.push_back(output); });
  pending_.Sent({11, 1});
  pending_.Sent({11, 2});
  pending_.Sent({4, 2});
  pending_.Sent({7, 2});
  pending_.Reported(7);
  pending_.Reported(4);
  EXPECT_TRUE(givenUp.empty());
  ASSERT_TRUE(QTest::qWaitFor([&] { return seen_.size() == 8; }, 60000));
  EXPECT_THAT(givenUp, Each(11));
  EXPECT_GE(givenUp.size(), 1U);
}

}  // namespace
}  // namespace views
