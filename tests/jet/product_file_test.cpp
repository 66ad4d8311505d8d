// SPDX-License-Identifier: MIT
//
// The console's own tables, made here, against the file that an early version made and three other
// readers agreed on.

#include <gtest/gtest.h>

#include <memory>

#include "db/schema.h"
#include "tests/jet/jet_support.h"
#include "tests/jet/json_compare.h"

namespace {

using test::Differences;
using test::IsOk;
using test::WithoutPlaces;
using testing::IsEmpty;

class ProductFileTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_THAT(jet::Database::CreateInMemory(&database_), IsOk());
    const model::Status status = db::CreateTables(*database_);
    ASSERT_TRUE(status.ok()) << status.Description();
  }

  std::unique_ptr<jet::Database> database_;
};

TEST_F(ProductFileTest, HoldsTheSameAsTheReferenceFiles) {
  const QJsonObject dump = WithoutPlaces(test::Dump(*database_));
  EXPECT_THAT(Differences(dump, WithoutPlaces(test::GoldenDump("tesk_jet4"))), IsEmpty());
}

TEST_F(ProductFileTest, IsSound) { EXPECT_EQ(test::Problems(*database_), ""); }

// 109 fields are more than one page of definition holds.
TEST_F(ProductFileTest, HasItsLongDefinitionOnTwoPages) {
  const QJsonObject tables = test::Dump(*database_)[QLatin1String("tables")].toObject();
  EXPECT_TRUE(tables.contains(QLatin1String("DbInfo")));
  int definitions = 0;
  int continued = 0;
  const std::uint32_t count = test::PageCount(*database_);
  for (std::uint32_t page = 6; page < count; ++page) {
    const auto bytes = test::Page(*database_, page);
    if (bytes[0] != 2) continue;
    ++definitions;
    const std::uint32_t next = bytes[4] + 256U * bytes[5];
    if (next == 0) continue;
    ++continued;
    EXPECT_EQ(test::Page(*database_, next)[0], 2) << "page " << next;
  }
  EXPECT_EQ(definitions, 3);
  EXPECT_EQ(continued, 1);
}

TEST_F(ProductFileTest, ACopyInMemoryHoldsTheSameAndGoesItsOwnWay) {
  std::unique_ptr<jet::Database> copy;
  ASSERT_THAT(jet::Database::CopyInMemory(*database_, &copy), IsOk());
  const QJsonObject before = test::Dump(*database_);
  EXPECT_THAT(Differences(test::Dump(*copy), before), IsEmpty());

  const auto stations = test::OpenTable(*copy, "Stations");
  ASSERT_THAT(stations->Edit(), IsOk());
  ASSERT_THAT(stations->Set("Label", "CAM 1"), IsOk());
  ASSERT_THAT(stations->Update(), IsOk());
  EXPECT_THAT(Differences(test::Dump(*database_), before), IsEmpty());
  EXPECT_EQ(test::Problems(*copy), "");
  EXPECT_EQ(test::Problems(*database_), "");
}

TEST_F(ProductFileTest, EditsLeaveItSound) {
  const auto stations = test::OpenTable(*database_, "Stations");
  ASSERT_THAT(stations->SetIndex("StationNum"), IsOk());
  for (int number = 1; number <= 128; ++number) {
    ASSERT_THAT(stations->Seek(number), IsOk());
    ASSERT_FALSE(stations->NoMatch()) << number;
    ASSERT_THAT(stations->Edit(), IsOk());
    ASSERT_THAT(stations->Set("Label", "Label " + std::to_string(number % 50)), IsOk());
    ASSERT_THAT(stations->Set("Inhibits", std::string(static_cast<std::size_t>(number), '1')),
                IsOk());
    ASSERT_THAT(stations->Update(), IsOk());
  }
  EXPECT_EQ(test::Problems(*database_), "");
  ASSERT_THAT(stations->Seek(77), IsOk());
  EXPECT_EQ(test::Text(*stations, "Label"), "Label 27");
  EXPECT_EQ(test::Text(*stations, "Inhibits"), std::string(77, '1'));
  EXPECT_EQ(stations->RecordCount(), 128);
}

}  // namespace
