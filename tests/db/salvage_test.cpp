// SPDX-License-Identifier: MIT

#include "db/salvage.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "db/schema.h"
#include "tests/jet/jet_support.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t kPageSize = 4096;

class SalvageTest : public testing::Test {
 protected:
  void SetUp() override {
    const model::Status status = CreateDatabase(damaged_.NewFile());
    ASSERT_TRUE(status.ok()) << status.Description();
  }

  // Salvages the bytes as they are now, and opens the new file.
  SalvageReport Run(Fill fill = Fill::Nothing) {
    const std::vector<std::uint8_t> before = damaged_.content;
    salvaged_.content.clear();
    SalvageReport report;
    const model::Status status = Salvage(std::make_unique<jet::MemoryPageFile>(damaged_.content),
                                         salvaged_.NewFile(), fill, &report);
    EXPECT_TRUE(status.ok()) << status.Description();
    EXPECT_EQ(damaged_.content, before);
    database_ = test::Open(salvaged_);
    EXPECT_EQ(test::Problems(*database_), "");
    stations_ = test::OpenTable(*database_, kStationsTable);
    EXPECT_TRUE(stations_->SetIndex(kStationNumIndex).ok());
    return report;
  }

  // A field in the new file.
  jet::Value Read(int station, const char* field) {
    EXPECT_TRUE(stations_->Seek(station).ok());
    if (stations_->NoMatch()) return "(no record)";
    return test::Read(*stations_, field);
  }

  // Changes the sound file before it is damaged.
  void Store(int station, const char* field, const jet::Value& value) {
    const auto database = test::Open(damaged_);
    const auto stations = test::OpenTable(*database, kStationsTable);
    ASSERT_TRUE(stations->SetIndex(kStationNumIndex).ok());
    ASSERT_TRUE(stations->Seek(station).ok());
    ASSERT_TRUE(stations->Edit().ok());
    ASSERT_TRUE(stations->Set(field, value).ok());
    ASSERT_TRUE(stations->Update().ok());
  }

  // Where bytes stand in the damaged file.
  std::size_t PlaceOf(const std::string& bytes) const {
    const auto at =
        std::search(damaged_.content.begin(), damaged_.content.end(), bytes.begin(), bytes.end(),
                    [](std::uint8_t one, char other) { return static_cast<char>(one) == other; });
    EXPECT_NE(at, damaged_.content.end()) << bytes;
    return static_cast<std::size_t>(at - damaged_.content.begin());
  }
  static std::string TwoBytesEach(const std::string& text) {
    std::string stored;
    for (const char c : text) stored += {c, '\0'};
    return stored;
  }

  void Zero(std::size_t begin, std::size_t length) {
    std::fill_n(damaged_.content.begin() + static_cast<std::ptrdiff_t>(begin), length, 0);
  }
  void ZeroPage(std::size_t page) { Zero(page * kPageSize, kPageSize); }

  test::MemoryDisk damaged_;
  test::MemoryDisk salvaged_;
  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> stations_;
};

const std::string kOddFlags = "1100110011001100111100001111000011110000101010101111000011001100";

TEST_F(SalvageTest, OfASoundFileEverythingIsThere) {
  Store(12, "Label", "STUDIO 1");
  const SalvageReport report = Run();
  EXPECT_TRUE(report.IsWhole());
  EXPECT_EQ(report.labelCount, 128);
  EXPECT_EQ(report.stations, 128);
  EXPECT_THAT(report.doubtful, IsEmpty());
  EXPECT_EQ(stations_->RecordCount(), 128);
  EXPECT_EQ(Read(12, "Label"), jet::Value("STUDIO 1"));
  EXPECT_EQ(test::Int(*test::OpenTable(*database_, kDbInfoTable), "LabelCount"), 128);
}

// A flipped bit in the count must not take stations along that are there.
TEST_F(SalvageTest, StationsAboveAWrongCountAreThereAndTheCountIsPutRight) {
  for (const int count : {0, 64, 127}) {
    SCOPED_TRACE(count);
    {
      const auto database = test::Open(damaged_);
      const auto dbInfo = test::OpenTable(*database, kDbInfoTable);
      ASSERT_TRUE(dbInfo->Edit().ok());
      ASSERT_TRUE(dbInfo->Set("LabelCount", count).ok());
      ASSERT_TRUE(dbInfo->Update().ok());
    }
    const SalvageReport report = Run();
    EXPECT_FALSE(report.IsWhole());
    EXPECT_FALSE(report.isCountSound);
    EXPECT_EQ(report.labelCount, 128);
    EXPECT_EQ(report.stations, 128);
    EXPECT_THAT(report.leftOut, IsEmpty());
    EXPECT_EQ(Read(128, "StationNum"), jet::Value(128));
    EXPECT_EQ(test::Int(*test::OpenTable(*database_, kDbInfoTable), "LabelCount"), 128);
  }
}

// It is that station's number that is damaged, not the count.
TEST_F(SalvageTest, ANumberFarAboveAllOthersIsLeftOutAndNamed) {
  Store(77, "StationNum", 1101);
  const SalvageReport report = Run();
  EXPECT_FALSE(report.IsWhole());
  EXPECT_TRUE(report.isCountSound);
  EXPECT_EQ(report.labelCount, 128);
  EXPECT_THAT(report.missing, ElementsAre(77));
  EXPECT_THAT(report.leftOut, ElementsAre(1101));
  EXPECT_EQ(Read(1101, "Label"), jet::Value("(no record)"));
}

TEST_F(SalvageTest, APageOfRecordsIsMissing) {
  ZeroPage(PlaceOf("Notes for Station 007") / kPageSize);
  const SalvageReport report = Run();
  EXPECT_FALSE(report.IsWhole());
  EXPECT_THAT(report.missing, ElementsAre(6, 7, 8, 9, 10));
  EXPECT_THAT(report.incomplete, IsEmpty());
  EXPECT_EQ(report.stations, 123);
  EXPECT_EQ(stations_->RecordCount(), 123);
  EXPECT_EQ(Read(7, "Label"), jet::Value("(no record)"));
  EXPECT_EQ(Read(11, "Label"), jet::Value("Sta. 011"));
}

TEST_F(SalvageTest, WhatIsMissingGetsTheDefaultsOnlyWhenTold) {
  Store(7, "Label", "STUDIO 1");
  ZeroPage(PlaceOf("STUDIO 1") / kPageSize);
  const SalvageReport report = Run(Fill::Defaults);
  EXPECT_THAT(report.missing, ElementsAre(6, 7, 8, 9, 10));
  EXPECT_EQ(stations_->RecordCount(), 128);
  EXPECT_EQ(Read(7, "Label"), jet::Value("Sta. 007"));
  EXPECT_EQ(Read(7, "B32 First"), jet::Value(32));
}

TEST_F(SalvageTest, ALostFieldIsNamedAndNull) {
  Store(77, "Relays", kOddFlags);
  ZeroPage(PlaceOf(TwoBytesEach(kOddFlags)) / kPageSize);
  const SalvageReport report = Run();
  EXPECT_THAT(report.missing, IsEmpty());
  ASSERT_THAT(report.incomplete, Contains(testing::Field(&UnreadableStation::station, 77)));
  for (const UnreadableStation& station : report.incomplete) {
    EXPECT_THAT(station.fields, ElementsAre("Relays"));
  }
  EXPECT_TRUE(Read(77, "Relays").IsNull());
  EXPECT_EQ(Read(77, "Label"), jet::Value("Ext. 013"));

  Run(Fill::Defaults);
  EXPECT_EQ(Read(77, "Relays"), jet::Value(std::string(64, '0')));
}

TEST_F(SalvageTest, TheDefinitionsAreNotNeeded) {
  for (std::size_t page = 0; page < damaged_.content.size() / kPageSize; ++page) {
    if (page < 7 || damaged_.content[page * kPageSize] == 2) ZeroPage(page);
  }
  EXPECT_TRUE(Run().IsWhole());
}

TEST_F(SalvageTest, TheTableOfRowsIsNotNeeded) {
  Store(77, "Relays", kOddFlags);
  Zero(PlaceOf("Notes for Station 007") / kPageSize * kPageSize, 30);
  Zero(PlaceOf(TwoBytesEach(kOddFlags)) / kPageSize * kPageSize, 80);
  EXPECT_TRUE(Run().IsWhole());
  EXPECT_EQ(Read(7, "Notes"), jet::Value("Notes for Station 007"));
  EXPECT_EQ(Read(77, "Relays"), jet::Value(kOddFlags));
}

// The slots are in order all the same, so that the page looks sound; two rows have other bounds.
TEST_F(SalvageTest, AWrongOffsetThatIsPossibleHarmsNoRow) {
  const std::size_t page = PlaceOf("Notes for Station 007") / kPageSize * kPageSize;
  constexpr std::size_t kSlots = 14;
  damaged_.content[page + kSlots + 2 * 1] ^= 0x20;
  const SalvageReport report = Run();
  EXPECT_TRUE(report.IsWhole());
  EXPECT_THAT(report.doubtful, IsEmpty());
  EXPECT_EQ(Read(7, "Notes"), jet::Value("Notes for Station 007"));
  EXPECT_EQ(Read(8, "Notes"), jet::Value("Notes for Station 008"));
}

// A page of values that has one too many, because its record lost it, is not taken for a page that
// has a wrong offset.
TEST_F(SalvageTest, APageInItsPlaceIsNotTakenForAnother) {
  for (int station = 1; station <= 40; ++station) {
    std::string flags = kOddFlags;
    std::rotate(flags.begin(), flags.begin() + station, flags.end());
    Store(station, "Relays", flags);
  }
  Store(1, "Relays", kOddFlags);
  const std::size_t values = PlaceOf(TwoBytesEach(kOddFlags)) / kPageSize * kPageSize;
  constexpr std::size_t kSlots = 14;
  damaged_.content[values + kSlots + 2 * 21] ^= 0x20;
  // The first long value of the fifth record, its inhibits: 128 bytes, on a page beyond the file.
  const auto five =
      damaged_.content.begin() + static_cast<std::ptrdiff_t>(PlaceOf(std::string{109, 0, 5, 0}));
  const std::array<std::uint8_t, 4> head = {128, 0, 0, 0x40};
  std::search(five, damaged_.content.end(), head.begin(), head.end())[7] = 0x7F;
  const SalvageReport report = Run();
  ASSERT_THAT(report.incomplete, SizeIs(1));
  EXPECT_EQ(report.incomplete[0].station, 5);
  EXPECT_THAT(report.incomplete[0].fields, ElementsAre("Inhibits"));
  EXPECT_EQ(Read(1, "Relays"), jet::Value(kOddFlags));
  std::string flags = kOddFlags;
  std::rotate(flags.begin(), flags.begin() + 22, flags.end());
  EXPECT_EQ(Read(22, "Relays"), jet::Value(flags));
}

// Two offsets agree with the length of the value between them, and are not even on the page.
TEST_F(SalvageTest, OffsetsThatAgreeByChanceHideNoValue) {
  Store(4, "Relays", kOddFlags);
  const std::size_t value = PlaceOf(TwoBytesEach(kOddFlags));
  const std::size_t page = value / kPageSize * kPageSize;
  const std::size_t slot = (page + kPageSize - value) / 128 - 1;
  ASSERT_GT(slot, 0U);
  damaged_.content[page] = 0xFF;
  damaged_.content[page + 14 + 2 * slot - 2] = 0x80;
  damaged_.content[page + 14 + 2 * slot - 1] = 0x1C;
  damaged_.content[page + 14 + 2 * slot] = 0x00;
  damaged_.content[page + 14 + 2 * slot + 1] = 0x1C;
  EXPECT_TRUE(Run().IsWhole());
  EXPECT_EQ(Read(4, "Relays"), jet::Value(kOddFlags));
}

// Within one sector of zeros everything of a record can be but its ends.
TEST_F(SalvageTest, AValueOfNoLengthThatIsNowhereIsLost) {
  const std::size_t five = PlaceOf(std::string{109, 0, 5, 0});
  Zero(five + 100, 300);
  const SalvageReport report = Run();
  ASSERT_THAT(report.incomplete, SizeIs(1));
  EXPECT_EQ(report.incomplete[0].station, 5);
  EXPECT_THAT(report.incomplete[0].fields, Contains("B1 Prog"));
  EXPECT_TRUE(Read(5, "B1 Prog").IsNull());
  ASSERT_THAT(report.doubtful, SizeIs(1));
  EXPECT_THAT(report.doubtful[0].fields, Contains("B32 Prog"));
}

TEST_F(SalvageTest, ARowThatHasMovedIsFoundWithoutItsHome) {
  // Their page has room for three longer rows.
  for (const int station : {6, 7, 8}) Store(station, "Notes", std::string(128, 'n'));
  Store(9, "Notes", std::string(128, 'o'));
  const std::size_t home = PlaceOf("Sta. 010") / kPageSize;
  ASSERT_NE(home, PlaceOf(std::string(128, 'o')) / kPageSize);
  ZeroPage(home);
  EXPECT_THAT(Run().missing, ElementsAre(6, 7, 8, 10));
  EXPECT_EQ(Read(9, "Notes"), jet::Value(std::string(128, 'o')));
}

TEST_F(SalvageTest, ALabelThatNoDatabaseCanHoldIsLost) {
  // Two characters of no known order, in eight bytes.
  const std::size_t label = PlaceOf("\xFF\xFESta. 012");
  const std::string han = "\x2D\x4E\x87\x65\x2D\x4E\x87\x65\x2D\x4E";
  std::copy(han.begin(), han.end(), damaged_.content.begin() + static_cast<std::ptrdiff_t>(label));
  const SalvageReport report = Run();
  ASSERT_THAT(report.incomplete, SizeIs(1));
  EXPECT_EQ(report.incomplete[0].station, 12);
  EXPECT_THAT(report.incomplete[0].fields, ElementsAre("Label"));
  EXPECT_EQ(stations_->RecordCount(), 128);
}

TEST_F(SalvageTest, DeletedRecordsStayDeleted) {
  {
    const auto database = test::Open(damaged_);
    const auto stations = test::OpenTable(*database, kStationsTable);
    ASSERT_TRUE(stations->SetIndex(kStationNumIndex).ok());
    for (int station = 90; station <= 128; ++station) {  // whole pages, and a part of one
      ASSERT_TRUE(stations->Seek(station).ok());
      ASSERT_TRUE(stations->Delete().ok());
    }
  }
  const SalvageReport report = Run();
  EXPECT_EQ(stations_->RecordCount(), 89);
  EXPECT_THAT(report.missing, SizeIs(39));
}

TEST_F(SalvageTest, OfTwoRecordsWithOneNumberTheIndexNamesTheRightOne) {
  // The fifth record, whose number becomes that of the fourth.
  const std::size_t five = PlaceOf(std::string{109, 0, 5, 0});
  damaged_.content[five + 2] = 4;
  const SalvageReport report = Run();
  EXPECT_THAT(report.missing, ElementsAre(5));
  EXPECT_EQ(Read(4, "Label"), jet::Value("Sta. 004"));

  // And the other way round: the first of the two is the wrong one.
  damaged_.content[five + 2] = 5;
  damaged_.content[PlaceOf(std::string{109, 0, 4, 0}) + 2] = 5;
  EXPECT_THAT(Run().missing, ElementsAre(4));
  EXPECT_EQ(Read(5, "Label"), jet::Value("Sta. 005"));
}

TEST_F(SalvageTest, PagesOfDifferentKindsInEachOthersPlaceAreFound) {
  Store(77, "Relays", kOddFlags);
  const std::size_t one = PlaceOf("Notes for Station 007") / kPageSize * kPageSize;
  const std::size_t other = PlaceOf(TwoBytesEach(kOddFlags)) / kPageSize * kPageSize;
  const auto at = [this](std::size_t begin) {
    return damaged_.content.begin() + static_cast<std::ptrdiff_t>(begin);
  };
  std::swap_ranges(at(one), at(one + kPageSize), at(other));
  EXPECT_TRUE(Run().IsWhole());
  EXPECT_EQ(Read(77, "Relays"), jet::Value(kOddFlags));
}

TEST_F(SalvageTest, ARowThatContradictsItselfIsTakenWithADoubt) {
  const std::size_t five = PlaceOf(std::string{109, 0, 5, 0});
  damaged_.content[five] = 0xFF;  // columns
  const SalvageReport report = Run();
  EXPECT_TRUE(report.IsWhole());
  ASSERT_THAT(report.doubtful, SizeIs(1));
  EXPECT_EQ(report.doubtful[0].station, 5);
  EXPECT_THAT(report.doubtful[0].fields, SizeIs(109));
  EXPECT_EQ(Read(5, "Label"), jet::Value("Sta. 005"));
}

TEST_F(SalvageTest, FlagsThatAreNoneAreKeptAndNamed) {
  Store(20, "Inhibits", "abc");
  const SalvageReport report = Run();
  EXPECT_TRUE(report.IsWhole());
  ASSERT_THAT(report.doubtful, SizeIs(1));
  EXPECT_THAT(report.doubtful[0].fields, ElementsAre("Inhibits"));
  EXPECT_EQ(Read(20, "Inhibits"), jet::Value("abc"));
}

TEST_F(SalvageTest, NothingIsLeftOfRubbish) {
  damaged_.content.assign(100'000, 0x5A);
  const SalvageReport report = Run();
  EXPECT_FALSE(report.hasDbInfo);
  EXPECT_EQ(report.stations, 0);
  EXPECT_THAT(report.missing, SizeIs(128));
  EXPECT_EQ(stations_->RecordCount(), 0);
}

TEST_F(SalvageTest, AnEmptyFileIsNoReasonToFail) {
  damaged_.content.clear();
  EXPECT_THAT(Run(Fill::Defaults).missing, SizeIs(128));
  EXPECT_EQ(stations_->RecordCount(), 128);
}

TEST_F(SalvageTest, AFileThatCannotBeReadInPlacesIsReadInTheOthers) {
  damaged_.readsUntilFailure = 600;  // some time after its version is known
  SalvageReport report;
  const model::Status status =
      Salvage(damaged_.NewFile(), salvaged_.NewFile(), Fill::Nothing, &report);
  EXPECT_TRUE(status.ok()) << status.Description();
  EXPECT_FALSE(report.IsWhole());
  database_ = test::Open(salvaged_);
  EXPECT_EQ(test::Problems(*database_), "");
}

// With files of the disk.
class SalvageFileTest : public SalvageTest {
 protected:
  void SetUp() override {
    SalvageTest::SetUp();
    test::WriteFile(old_, std::string(damaged_.content.begin(), damaged_.content.end()));
  }

  const test::TemporaryFolder folder_;
  const std::filesystem::path old_ = folder_ / "Tesk.mdb";
  const std::filesystem::path new_ = folder_ / "new.mdb";
  SalvageReport report_;
};

TEST_F(SalvageFileTest, TheNewFileIsMade) {
  const model::Status status = Salvage(old_, new_, Fill::Nothing, &report_);
  EXPECT_TRUE(status.ok()) << status.Description();
  EXPECT_TRUE(report_.IsWhole());
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Open(new_, jet::Access::ReadOnly, &database), test::IsOk());
  EXPECT_EQ(test::OpenTable(*database, kStationsTable)->RecordCount(), 128);
}

TEST_F(SalvageFileTest, AFileThatIsThereIsNotReplaced) {
  test::WriteFile(new_, "somebody's");
  const model::Status status = Salvage(old_, new_, Fill::Nothing, &report_);
  EXPECT_EQ(status.Number(), 3204);
  EXPECT_EQ(status.Description(), "Cannot make new.mdb: File exists");
  EXPECT_EQ(test::ReadFile(new_), "somebody's");
}

TEST_F(SalvageFileTest, ALinkIsNotFollowed) {
  std::filesystem::create_symlink(folder_ / "elsewhere.mdb", new_);
  EXPECT_EQ(Salvage(old_, new_, Fill::Nothing, &report_).Number(), 3204);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "elsewhere.mdb"));
  EXPECT_TRUE(std::filesystem::is_symlink(new_));
}

TEST_F(SalvageFileTest, NeitherIsTheDamagedFileItself) {
  EXPECT_EQ(Salvage(old_, old_, Fill::Nothing, &report_).Number(), 3204);
  EXPECT_EQ(test::ReadFile(old_), std::string(damaged_.content.begin(), damaged_.content.end()));
}

TEST_F(SalvageFileTest, WithoutADamagedFileNothingIsMade) {
  EXPECT_EQ(Salvage(folder_ / "none.mdb", new_, Fill::Nothing, &report_).Number(), 3024);
  EXPECT_FALSE(std::filesystem::exists(new_));
}

}  // namespace
}  // namespace db
