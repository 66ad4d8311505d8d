// SPDX-License-Identifier: MIT

#include "views/programming/station_event.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/views/view_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Cause = StationEvent::Cause;

class StationEventTest : public testing::Test {
 protected:
  static constexpr char kA[] =
      "critical|Control Error|a\r\rError # 3021 - There is no current record";
  static constexpr char kB[] =
      "critical|Control Error|b\r\rError # 3021 - There is no current record";

  static bool Fail(StationEvent& event, const char* line) {
    return event.Do(line, [](jet::RecordSet& stations) {
      EXPECT_TRUE(stations.MoveLast().ok());
      EXPECT_TRUE(stations.MoveNext().ok());
      jet::Value value;
      return model::Status(stations.Get("Label", &value));
    });
  }
  void Refresh(const char* line) {
    StationEvent event(shown_, Cause::Refresh);
    if (line != nullptr) Fail(event, line);
  }

  test::ViewConsole console_{64};
  ShownStation shown_{console_.Services()};
};

TEST_F(StationEventTest, TheFirstFailureIsReportedWhenItEnds) {
  {
    StationEvent event(shown_, Cause::Operator);
    EXPECT_FALSE(Fail(event, "a"));
    EXPECT_FALSE(Fail(event, "b"));
    EXPECT_EQ(event.Use("c", event.Station().label), "");
    EXPECT_THAT(console_.reporter.reports, IsEmpty());
  }
  EXPECT_THAT(console_.reporter.reports, ElementsAre(kA));
}

TEST_F(StationEventTest, WhatTheOperatorDoesIsReportedEachTime) {
  for (int i = 0; i < 2; ++i) {
    StationEvent event(shown_, Cause::Operator);
    Fail(event, "a");
  }
  EXPECT_THAT(console_.reporter.reports, ElementsAre(kA, kA));
}

TEST_F(StationEventTest, RefreshesSayTheSameOnceUntilOneSucceeds) {
  for (int i = 0; i < 5; ++i) Refresh("a");
  EXPECT_THAT(console_.reporter.reports, ElementsAre(kA));
  Refresh("b");
  EXPECT_THAT(console_.reporter.reports, ElementsAre(kA, kB));
  console_.reporter.reports.clear();
  Refresh("b");
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
  Refresh(nullptr);
  Refresh("b");
  EXPECT_THAT(console_.reporter.reports, ElementsAre(kB));
}

TEST_F(StationEventTest, OnlyWhatIsUsedIsReported) {
  console_.databaseIsOpen = false;
  {
    StationEvent event(shown_, Cause::Operator);
    EXPECT_FALSE(event.Station().label.status.ok());
  }
  EXPECT_THAT(console_.reporter.reports, IsEmpty());
}

TEST_F(StationEventTest, TheStationIsLookedAtOnceUntilSomethingIsDone) {
  StationEvent event(shown_, Cause::Operator);
  EXPECT_EQ(event.Station().label.value, "Sta. 001");
  console_.SetField(1, "Label", "new");
  EXPECT_EQ(event.Station().label.value, "Sta. 001");
  event.Do("a", [](jet::RecordSet& stations) { return model::Status(stations.Seek(2)); });
  EXPECT_EQ(event.Station().label.value, "Sta. 002");
  EXPECT_EQ(event.Station().number.value.Int(), 2);
}

}  // namespace
}  // namespace views
