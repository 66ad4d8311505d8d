// SPDX-License-Identifier: MIT

#include "stations/navigation.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "tests/support/small_database.h"

namespace stations {
namespace {

using enum Movement;

class Navigation : public testing::Test {
 protected:
  void AddStations(const std::vector<int>& numbers) {
    for (const int number : numbers) database_.AddStation(number, {});
  }
  void AddStations(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 1);
    AddStations(numbers);
  }
  jet::RecordSet& Stations() { return *database_.Files().Stations(); }

  // Where a command leads from a station.
  int After(int station, Movement movement, int stationCount) {
    database_.GoTo(station);
    const model::Status status = MoveStation(Stations(), movement, stationCount);
    EXPECT_TRUE(status.ok()) << status.Description();
    return database_.CurrentStation();
  }

  test::SmallDatabase database_;
};

TEST_F(Navigation, FirstAndLast) {
  AddStations(20);
  EXPECT_EQ(After(7, First, 16), 1);
  EXPECT_EQ(After(1, First, 16), 1);
  EXPECT_EQ(After(7, Last, 16), 16);
  EXPECT_EQ(After(16, Last, 16), 16);
  EXPECT_EQ(After(19, Last, 16), 16);
  EXPECT_EQ(After(7, Last, 0), 7) << "there is no station 0";
  EXPECT_EQ(After(7, Last, 64), 7) << "there is no station 64";
}

TEST_F(Navigation, BackwardsStopsAtTheFirst) {
  AddStations(20);
  EXPECT_EQ(After(7, Previous, 16), 6);
  EXPECT_EQ(After(2, Previous, 16), 1);
  EXPECT_EQ(After(1, Previous, 16), 1);
  EXPECT_EQ(After(15, Back10, 16), 5);
  EXPECT_EQ(After(11, Back10, 16), 1);
  EXPECT_EQ(After(10, Back10, 16), 1);
  EXPECT_EQ(After(1, Back10, 16), 1);
}

TEST_F(Navigation, ForwardsStopsAtTheStationCount) {
  AddStations(40);
  EXPECT_EQ(After(7, Next, 32), 8);
  EXPECT_EQ(After(31, Next, 32), 32);
  EXPECT_EQ(After(32, Next, 32), 32);
  EXPECT_EQ(After(35, Next, 32), 35) << "already beyond it";
  EXPECT_EQ(After(7, Forward10, 32), 17);
  EXPECT_EQ(After(29, Forward10, 32), 32);
  EXPECT_EQ(After(32, Forward10, 32), 32);
  EXPECT_EQ(After(1, Next, 0), 1);
  EXPECT_EQ(After(1, Forward10, 0), 1);
}

TEST_F(Navigation, ForwardsStopsAtTheLastRecordWhateverTheCount) {
  AddStations(12);
  EXPECT_EQ(After(11, Next, 64), 12);
  EXPECT_EQ(After(12, Next, 64), 12);
  EXPECT_EQ(After(5, Forward10, 64), 12);
  EXPECT_EQ(After(12, Forward10, 64), 12);
}

TEST_F(Navigation, GapsAreNoStationsAndLeadNotBeyondTheCount) {
  AddStations({1, 2, 5, 9, 30});
  EXPECT_EQ(After(2, Next, 16), 5);
  EXPECT_EQ(After(5, Previous, 16), 2);
  EXPECT_EQ(After(1, Forward10, 16), 9);
  EXPECT_EQ(After(9, Next, 16), 9);
  EXPECT_EQ(After(5, Next, 8), 5);
  EXPECT_EQ(After(1, Last, 8), 1);
}

TEST_F(Navigation, WithoutStationsNothingMoves) {
  for (const Movement movement : {First, Previous, Back10, Next, Forward10, Last}) {
    EXPECT_TRUE(MoveStation(Stations(), movement, 64).ok()) << static_cast<int>(movement);
    EXPECT_FALSE(Stations().HasRecord());
  }
}

TEST_F(Navigation, FromTheEndsItComesBackToTheStations) {
  AddStations(3);
  ASSERT_TRUE(Stations().MoveLast().ok());
  ASSERT_TRUE(Stations().MoveNext().ok());
  ASSERT_TRUE(Stations().Eof());
  EXPECT_TRUE(MoveStation(Stations(), Next, 3).ok());
  EXPECT_TRUE(Stations().Eof());
  EXPECT_TRUE(MoveStation(Stations(), Forward10, 3).ok());
  EXPECT_TRUE(Stations().Eof());
  EXPECT_TRUE(MoveStation(Stations(), Previous, 3).ok());
  EXPECT_EQ(database_.CurrentStation(), 3);

  ASSERT_TRUE(Stations().MoveFirst().ok());
  ASSERT_TRUE(Stations().MovePrevious().ok());
  ASSERT_TRUE(Stations().Bof());
  for (const Movement movement : {Previous, Back10}) {
    EXPECT_TRUE(MoveStation(Stations(), movement, 3).ok());
    EXPECT_TRUE(Stations().Bof());
  }
  EXPECT_TRUE(MoveStation(Stations(), First, 3).ok());
  EXPECT_EQ(database_.CurrentStation(), 1);
}

TEST_F(Navigation, ARecordThatIsGoneIsToldAndLeft) {
  AddStations(3);
  database_.GoTo(2);
  database_.Delete(2);
  ASSERT_FALSE(Stations().HasRecord());
  EXPECT_EQ(MoveStation(Stations(), Next, 3).Number(), 3021);
  EXPECT_TRUE(MoveStation(Stations(), First, 3).ok());
  EXPECT_EQ(database_.CurrentStation(), 1);
}

TEST_F(Navigation, FindsAStationInEveryOrder) {
  AddStations({3, 1, 2});
  for (const char* const index : {"StationNum", ""}) {
    ASSERT_TRUE(Stations().SetIndex(index).ok());
    ASSERT_TRUE(FindStation(Stations(), 2).ok());
    EXPECT_FALSE(Stations().NoMatch());
    EXPECT_EQ(database_.Field(2, "StationNum"), "2");
    ASSERT_TRUE(FindStation(Stations(), 4).ok());
    EXPECT_TRUE(Stations().NoMatch());
    EXPECT_FALSE(Stations().HasRecord());
  }
}

}  // namespace
}  // namespace stations
