// SPDX-License-Identifier: MIT

#include "stations/open_stations.h"

#include <gtest/gtest.h>

#include <memory>

#include "stations/record.h"
#include "tests/support/small_database.h"

namespace stations {
namespace {

class OpenStationsTest : public testing::Test {
 protected:
  OpenStationsTest() {
    for (const int station : {3, 1, 2}) database_.AddStation(station, {{"OptoType", station}});
  }

  jet::Database& Database() { return *database_.Files().Database(); }

  test::SmallDatabase database_;
  std::unique_ptr<jet::RecordSet> opened_;
};

TEST_F(OpenStationsTest, TheyAreInTheOrderOfTheirNumbers) {
  ASSERT_TRUE(OpenStations(Database(), &opened_).ok());
  for (const int station : {1, 2, 3}) {
    EXPECT_EQ(Record(*opened_).Number("StationNum"), station);
    ASSERT_TRUE(opened_->MoveNext().ok());
  }
  EXPECT_TRUE(opened_->Eof());
}

TEST_F(OpenStationsTest, TheSharedSetStaysWhereItIs) {
  jet::RecordSet& shared = *database_.Files().Stations();
  ASSERT_TRUE(shared.MoveLast().ok());
  const int before = Record(shared).Number("StationNum");
  ASSERT_TRUE(OpenStations(Database(), &opened_).ok());
  EXPECT_EQ(Record(shared).Number("StationNum"), before);
}

TEST_F(OpenStationsTest, OneStation) {
  ASSERT_TRUE(OpenStation(Database(), 2, &opened_).ok());
  ASSERT_NE(opened_, nullptr);
  EXPECT_EQ(Record(*opened_).Number("OptoType"), 2);
}

TEST_F(OpenStationsTest, AStationThatIsNotThereIsNoFailure) {
  ASSERT_TRUE(OpenStation(Database(), 9, &opened_).ok());
  EXPECT_EQ(opened_, nullptr);
}

}  // namespace
}  // namespace stations
