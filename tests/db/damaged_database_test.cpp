// SPDX-License-Identifier: MIT

// What the console does with a database of which something is lost.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/jet/database.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/schema.h"
#include "db/station_list.h"
#include "tests/db/database_files_fixture.h"
#include "tests/support/damaged_file.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::WriteFile;

using DatabaseDamageTest = DatabaseFilesTest;

class DamagedDatabaseTest : public DatabaseFilesTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CreateDatabase(main_).ok());
    test::ZeroPageOf(main_, "Sta. 012");
    damaged_ = ReadFile(main_);
    ASSERT_TRUE(files_.Open().ok());
    lost_ = files_.DamageFound().missing;
    ASSERT_FALSE(lost_.empty());
  }

  std::string damaged_;
  DatabaseFiles files_{main_, copy_};
  std::vector<int> lost_;
};

TEST_F(DamagedDatabaseTest, IsOpenedAndWhatIsLostIsKnown) {
  EXPECT_FALSE(files_.DamageFound().IsSound());
  EXPECT_TRUE(std::binary_search(lost_.begin(), lost_.end(), 12));
  EXPECT_EQ(Label(files_), "Sta. 001");
}

TEST_F(DamagedDatabaseTest, ATableIsCompleteOnlyWithoutTheLostStations) {
  const model::Status status = files_.CheckTable(Table::Relays, 1, 64);
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_EQ(status.Description(),
            "The database is damaged, stations cannot be read: " + StationList(lost_));
  EXPECT_FALSE(files_.CheckTable(Table::Buttons, 12, 12).ok());
  EXPECT_TRUE(files_.CheckTable(Table::Buttons, 1, 1).ok());
  EXPECT_TRUE(files_.CheckTable(Table::Relays, lost_.back() + 1, 128).ok());
}

TEST_F(DamagedDatabaseTest, IsKeptBeforeItIsReplaced) {
  SetLabel(files_, "Studio 1");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  std::vector<std::string> kept = FilesThatBegin("Tesk-damaged-20");
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].size(), std::string("Tesk-damaged-2026-04-17.mdb").size());
  EXPECT_TRUE(ReadFile(folder_ / kept[0]) == damaged_);
  EXPECT_FALSE(ReadFile(main_) == damaged_);
  // Another time on the same day.
  ASSERT_TRUE(files_.Open().ok());
  SetLabel(files_, "Studio 2");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  kept = FilesThatBegin("Tesk-damaged-20");
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_TRUE(kept[0].ends_with("-2.mdb")) << kept[0];
}

// Without it the only bytes that more could be made of would be gone.
TEST_F(DamagedDatabaseTest, IsNotReplacedWhenItCannotBeKept) {
  SetLabel(files_, "Studio 1");
  {
    const test::FullDisk full(100000);
    EXPECT_EQ(files_.SaveAndClose().Number(), 3026);
  }
  EXPECT_TRUE(ReadFile(main_) == damaged_);
  EXPECT_TRUE(files_.IsOpen());
  EXPECT_TRUE(FilesThatBegin("Tesk-").empty());
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_EQ(FilesThatBegin("Tesk-damaged-20").size(), 1U);
}

// Every attempt that fails would leave one more.
TEST_F(DamagedDatabaseTest, IsKeptOnceHoweverOftenClosingFails) {
  SetLabel(files_, "Studio 1");
  fs::permissions(main_, fs::perms::owner_read | fs::perms::group_read);
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_EQ(files_.SaveAndClose().Number(), 3027);
    EXPECT_TRUE(FilesThatBegin("Tesk-").empty());
  }
  fs::permissions(main_, fs::perms::owner_write, fs::perm_options::add);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_EQ(FilesThatBegin("Tesk-damaged-20").size(), 1U);
}

// Opening a damaged table puts its indexes right in the working copy.  The next opening does so
// again, and finds the same damage.
TEST_F(DamagedDatabaseTest, IsNotTouchedWithoutAnEdit) {
  EXPECT_FALSE(ReadFile(copy_) == damaged_) << "something was put right";
  for (int run = 0; run < 2; ++run) {
    bool saved = true;
    ASSERT_TRUE(files_.SaveAndClose(&saved).ok());
    EXPECT_FALSE(saved);
    EXPECT_FALSE(fs::exists(copy_));
    EXPECT_TRUE(ReadFile(main_) == damaged_);
    EXPECT_TRUE(FilesThatBegin("Tesk-").empty());
    ASSERT_TRUE(files_.Open().ok());
    EXPECT_EQ(files_.DamageFound().missing, lost_);
    EXPECT_FALSE(files_.CheckTable(Table::Relays, 1, 64).ok());
  }
}

TEST_F(DamagedDatabaseTest, WithoutAnEditNothingKeepsItFromBeingClosed) {
  fs::permissions(main_, fs::perms::owner_read);
  EXPECT_TRUE(files_.SaveAndClose().ok());
  ASSERT_TRUE(files_.Open().ok());
  fs::permissions(main_, fs::perms::owner_write, fs::perm_options::add);
  {
    const test::FullDisk full(100000);
    EXPECT_TRUE(files_.SaveAndClose().ok());
  }
  ASSERT_TRUE(files_.Open().ok());
  fs::rename(main_, folder_ / "away");
  EXPECT_TRUE(files_.SaveAndClose().ok());
  EXPECT_FALSE(fs::exists(main_));
  EXPECT_TRUE(ReadFile(folder_ / "away") == damaged_);
}

// What was edited has its place all the same.
TEST_F(DamagedDatabaseTest, ThatIsNotThereAnyMoreNeedsNoKeeping) {
  SetLabel(files_, "Studio 1");
  fs::rename(main_, folder_ / "away");
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(FilesThatBegin("Tesk-").empty());
  ASSERT_TRUE(files_.Open().ok());
  EXPECT_EQ(Label(files_), "Studio 1");
}

// The house puts its good copy in place while the console still runs.
TEST_F(DamagedDatabaseTest, AGoodFileInItsPlaceStaysOrIsKept) {
  const auto putInPlace = [this] {
    fs::remove(main_);
    ASSERT_TRUE(CreateDatabase(main_).ok());
  };
  putInPlace();
  std::string good = ReadFile(main_);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(ReadFile(main_) == good);

  WriteFile(main_, damaged_);
  ASSERT_TRUE(files_.Open().ok());
  SetLabel(files_, "Studio 1");
  putInPlace();
  good = ReadFile(main_);
  ASSERT_TRUE(files_.SaveAndClose().ok());
  EXPECT_TRUE(FilesThatBegin("Tesk-damaged-").empty());
  const std::vector<std::string> kept = FilesThatBegin("Tesk-replaced-20");
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_TRUE(ReadFile(folder_ / kept[0]) == good);
}

TEST_F(DamagedDatabaseTest, IsSalvagedIntoANewFileBesideIt) {
  fs::path salvaged;
  SalvageReport report;
  ASSERT_TRUE(files_.SalvageMainFile(Fill::Defaults, &salvaged, &report).ok());
  EXPECT_EQ(report.missing, lost_);
  EXPECT_EQ(FilesThatBegin("Tesk-salvaged-20"),
            std::vector<std::string>{salvaged.filename().string()});
  EXPECT_TRUE(ReadFile(main_) == damaged_);
  DatabaseFiles whole(salvaged, folder_ / "Other.md$");
  ASSERT_TRUE(whole.Open().ok());
  EXPECT_TRUE(whole.DamageFound().IsSound());
  EXPECT_EQ(whole.Stations()->RecordCount(), 128);
}

TEST_F(DatabaseDamageTest, OfASoundFileNothingIsKeptAndEveryTableIsComplete) {
  DatabaseFiles files(main_, copy_);
  ASSERT_TRUE(files.Open().ok());
  EXPECT_TRUE(files.DamageFound().IsSound());
  EXPECT_TRUE(files.CheckTable(Table::Relays, 1, 64).ok());
  SetLabel(files, "Studio 1");
  ASSERT_TRUE(files.SaveAndClose().ok());
  EXPECT_TRUE(FilesThatBegin("Tesk-").empty());
}

// What keeps it from being opened is damage as well.
TEST_F(DatabaseDamageTest, AFileThatIsTooDamagedToBeOpenedIsKnownToBeDamaged) {
  const std::string whole = ReadFile(std::string(TESK_TEST_DATA) + "/mdb/tesk_jet4.mdb");
  WriteFile(main_, whole.substr(0, 61440));
  DatabaseFiles files(main_, copy_);
  const model::Status status = files.Open();
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_FALSE(files.DamageFound().IsSound());
  EXPECT_FALSE(files.IsOpen());
}

constexpr std::ptrdiff_t kPageBytes = 4096;

// The page of a database on which the tree of an index of the stations begins.
std::size_t RootOf(const fs::path& file, std::string_view name) {
  std::unique_ptr<jet::Database> database;
  std::shared_ptr<jet::Table> table;
  EXPECT_TRUE(jet::Database::Open(file, jet::Access::ReadOnly, &database).ok());
  EXPECT_TRUE(database->GetStore().OpenTable(kStationsTable, &table).ok());
  return table->Def().realIndexes[table->Def().FindIndex(name)->real].root;
}

std::vector<int> Numbers(DatabaseFiles& files) {
  std::vector<int> numbers;
  jet::RecordSet& stations = *files.Stations();
  bool ok = stations.MoveFirst().ok();
  for (; ok && !stations.Eof(); ok = stations.MoveNext().ok()) {
    jet::Value number;
    EXPECT_TRUE(stations.Get("StationNum", &number).ok());
    numbers.push_back(number.Int());
  }
  EXPECT_TRUE(ok);
  return numbers;
}

// The records have all that the index is made of.
TEST_F(DatabaseDamageTest, TheStationsAreThereInOrderWithoutTheRootOfTheirIndex) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  const std::string sound = ReadFile(main_);
  for (const char fill : {'\0', '\xAA'}) {
    std::string damaged = sound;
    std::fill_n(damaged.begin() + root * kPageBytes, kPageBytes, fill);
    WriteFile(main_, damaged);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    ASSERT_TRUE(status.ok()) << status.Description();
    EXPECT_FALSE(files.DamageFound().IsSound()) << "the operator is told";
    EXPECT_TRUE(files.DamageFound().missing.empty());
    std::vector<int> all(128);
    std::iota(all.begin(), all.end(), 1);
    EXPECT_EQ(Numbers(files), all);
    ASSERT_TRUE(files.Stations()->Seek(77).ok());
    EXPECT_EQ(Label(files), "Ext. 013");
    ASSERT_TRUE(files.SaveAndClose().ok());
    EXPECT_TRUE(ReadFile(main_) == damaged) << "nothing was edited";
  }
}

// It may be the only copy of what stands there.
TEST_F(DatabaseDamageTest, WhatStandsWhereAnIndexBeganIsNotWrittenOver) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  std::string damaged = ReadFile(main_);
  const auto records = static_cast<std::ptrdiff_t>(damaged.find("Sta. 012")) / kPageBytes;
  std::swap_ranges(damaged.begin() + root * kPageBytes, damaged.begin() + (root + 1) * kPageBytes,
                   damaged.begin() + records * kPageBytes);
  WriteFile(main_, damaged);
  DatabaseFiles files(main_, copy_);
  EXPECT_EQ(files.Open().Number(), 3049);
  EXPECT_FALSE(files.DamageFound().IsSound());
  EXPECT_TRUE(ReadFile(copy_) == damaged);
}

// Nor is one whose beginning alone was lost, as when the power fails while it is written.
TEST_F(DatabaseDamageTest, ATornPageWhereAnIndexBeganIsNotWrittenOver) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const auto root = static_cast<std::ptrdiff_t>(RootOf(main_, kStationNumIndex));
  const std::string sound = ReadFile(main_);
  for (const char fill : {'\0', '\xAA'}) {
    std::string damaged = sound;
    const auto records = static_cast<std::ptrdiff_t>(damaged.find("Sta. 012")) / kPageBytes;
    std::swap_ranges(damaged.begin() + root * kPageBytes, damaged.begin() + (root + 1) * kPageBytes,
                     damaged.begin() + records * kPageBytes);
    std::fill_n(damaged.begin() + root * kPageBytes, 512, fill);
    WriteFile(main_, damaged);
    DatabaseFiles files(main_, copy_);
    EXPECT_EQ(files.Open().Number(), 3049);
    EXPECT_FALSE(files.DamageFound().IsSound());
    EXPECT_TRUE(ReadFile(copy_) == damaged);
  }
}

// Its first page says what it is; without it the stations are there all the same.
TEST_F(DatabaseDamageTest, AHeaderThatIsLostIsDamageWhenThereAreStations) {
  ASSERT_TRUE(CreateDatabase(main_).ok());
  const std::string sound = ReadFile(main_);
  std::string zeroed = sound;
  std::fill_n(zeroed.begin(), 4096, '\0');
  std::string scrambled = sound;
  for (std::size_t at = 0x42; at < 0x6A; ++at) scrambled[at] = static_cast<char>(scrambled[at] ^ 1);
  for (const auto& [bytes, number] : {std::pair(zeroed, 3343), std::pair(scrambled, 3031)}) {
    SCOPED_TRACE(number);
    WriteFile(main_, bytes);
    DatabaseFiles files(main_, copy_);
    const model::Status status = files.Open();
    EXPECT_EQ(status.Number(), number);
    EXPECT_EQ(files.DamageFound().problems, std::vector<std::string>{status.Description()});
    fs::path salvaged;
    SalvageReport report;
    ASSERT_TRUE(files.SalvageMainFile(Fill::Nothing, &salvaged, &report).ok());
    EXPECT_EQ(report.stations, 128);
  }
  WriteFile(main_, "this is no database");
  DatabaseFiles files(main_, copy_);
  EXPECT_FALSE(files.Open().ok());
  EXPECT_TRUE(files.DamageFound().IsSound());
}

}  // namespace
}  // namespace db
