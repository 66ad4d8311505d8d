// SPDX-License-Identifier: MIT

#include "db/damage.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/schema.h"
#include "tests/jet/jet_support.h"

namespace db {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t kPage = 4096;
// As no station has them.
constexpr std::string_view kFlagsOfOne = "1100110011001100111100001111000011110000101010";

class DamageTest : public testing::Test {
 protected:
  void SetUp() override {
    const model::Status status = CreateDatabase(disk_.NewFile());
    ASSERT_TRUE(status.ok()) << status.Description();
    database_ = test::Open(disk_);
  }

  // What is found in the bytes as they are now.
  Damage Find() {
    database_ = test::Open(disk_, jet::Access::ReadOnly);
    Damage damage;
    const model::Status status = FindDamage(*database_, &damage);
    EXPECT_TRUE(status.ok()) << status.Description();
    return damage;
  }

  // The file's place of a text as it stands in a record, stored in one byte a character.
  std::size_t PlaceOf(const std::string& text) const {
    const auto at =
        std::search(disk_.content.begin(), disk_.content.end(), text.begin(), text.end());
    EXPECT_NE(at, disk_.content.end()) << text;
    return static_cast<std::size_t>(at - disk_.content.begin());
  }

  void ZeroPage(std::size_t page) {
    std::fill_n(disk_.content.begin() + static_cast<std::ptrdiff_t>(page * kPage), kPage, 0);
  }

  // The page that a station's value of a Memo field stands on.
  std::size_t PageOfValue(int station, const char* field) {
    const auto stations = test::OpenTable(*database_, kStationsTable);
    EXPECT_TRUE(stations->SetIndex(kStationNumIndex).ok());
    EXPECT_TRUE(stations->Seek(station).ok());
    EXPECT_TRUE(stations->Edit().ok());
    EXPECT_TRUE(stations->Set(field, std::string(kFlagsOfOne)).ok());
    EXPECT_TRUE(stations->Update().ok());
    std::string stored;  // two bytes a character
    for (const char flag : kFlagsOfOne) stored += std::string{flag, '\0'};
    return PlaceOf(stored) / kPage;
  }

  test::MemoryDisk disk_;
  std::unique_ptr<jet::Database> database_;
};

TEST_F(DamageTest, ANewDatabaseIsSound) {
  const Damage damage = Find();
  EXPECT_TRUE(damage.IsSound());
  EXPECT_THAT(damage.problems, IsEmpty());
  EXPECT_THAT(damage.missing, IsEmpty());
  EXPECT_THAT(damage.unreadable, IsEmpty());
  EXPECT_TRUE(damage.isDbInfoReadable);
  EXPECT_THAT(damage.Lacking(Table::Relays), IsEmpty());
}

TEST_F(DamageTest, ASoundFileWithFewerRecordsLacksNothing) {
  const auto stations = test::OpenTable(*database_, kStationsTable);
  ASSERT_THAT(stations->MoveLast(), test::IsOk());
  ASSERT_THAT(stations->Delete(), test::IsOk());
  const Damage damage = Find();
  EXPECT_TRUE(damage.IsSound());
  EXPECT_THAT(damage.missing, IsEmpty());
}

TEST_F(DamageTest, AZeroedPageOfRecordsIsMissingStationsInEveryTable) {
  const std::size_t page = PlaceOf("Notes for Station 007") / kPage;
  ZeroPage(page);
  const Damage damage = Find();
  EXPECT_THAT(
      damage.problems,
      Contains("table \"Stations\": A data page is expected but the page has type 0 (page " +
               std::to_string(page) + ")"));
  EXPECT_THAT(damage.missing, Contains(7));
  EXPECT_THAT(damage.missing, SizeIs(5));  // of 731 bytes each
  for (const TableKind& kind : kTables) {
    const Table table = kind.table;
    EXPECT_EQ(damage.Lacking(table), damage.missing);
  }
  EXPECT_TRUE(damage.isDbInfoReadable);
}

TEST_F(DamageTest, AZeroedPageOfLongValuesIsOneTableThatCannotBeMade) {
  ZeroPage(PageOfValue(77, "Relays"));
  const Damage damage = Find();
  EXPECT_FALSE(damage.IsSound());
  EXPECT_THAT(damage.missing, IsEmpty());
  ASSERT_THAT(damage.unreadable, Contains(Field(&UnreadableStation::station, 77)));
  for (const UnreadableStation& station : damage.unreadable) {
    EXPECT_THAT(station.fields, ElementsAre("Relays")) << station.station;
  }
  EXPECT_THAT(damage.Lacking(Table::Relays), Contains(77));
  EXPECT_THAT(damage.Lacking(Table::Relays), SizeIs(damage.unreadable.size()));
  EXPECT_THAT(damage.Lacking(Table::Inhibits), IsEmpty());
  EXPECT_THAT(damage.Lacking(Table::Buttons), IsEmpty());
  EXPECT_THAT(damage.Lacking(Table::OutputLabels), IsEmpty());
}

TEST_F(DamageTest, TwoRecordsOfOneNumberAreBothInDoubt) {
  // A record of 109 fields, the first of them its number.
  const std::vector<std::uint8_t> four = {109, 0, 4, 0};
  const auto at = std::search(disk_.content.begin(), disk_.content.end(), four.begin(), four.end());
  ASSERT_NE(at, disk_.content.end());
  at[2] = 5;
  const Damage damage = Find();
  EXPECT_FALSE(damage.IsSound());
  EXPECT_THAT(damage.missing, ElementsAre(4));
  ASSERT_THAT(damage.unreadable, SizeIs(1));
  EXPECT_EQ(damage.unreadable[0].station, 5);
  EXPECT_THAT(damage.unreadable[0].fields, SizeIs(109));
  EXPECT_THAT(damage.Lacking(Table::Optos), ElementsAre(4, 5));
}

TEST_F(DamageTest, WithoutItsDefinitionATableLacksEveryStation) {
  std::size_t definition = 0;  // the only one that goes on behind its page
  for (std::size_t page = 6; page < disk_.content.size() / kPage; ++page) {
    if (disk_.content[page * kPage] == 2 && disk_.content[page * kPage + 4] != 0) definition = page;
  }
  ASSERT_NE(definition, 0U);
  ZeroPage(definition);
  const Damage damage = Find();
  EXPECT_THAT(damage.problems, Contains(HasSubstr("table \"Stations\"")));
  EXPECT_THAT(damage.Lacking(Table::Buttons), SizeIs(128));
  EXPECT_TRUE(damage.isDbInfoReadable);
}

TEST_F(DamageTest, WithoutItsCountsTheDefaultNumberOfStationsIsExpected) {
  ZeroPage(PlaceOf("Version 2.12") / kPage);
  const Damage damage = Find();
  EXPECT_FALSE(damage.IsSound());
  EXPECT_FALSE(damage.isDbInfoReadable);
  EXPECT_THAT(damage.missing, IsEmpty());
}

}  // namespace
}  // namespace db
