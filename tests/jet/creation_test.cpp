// SPDX-License-Identifier: MIT
//
// New databases, tables and indexes, and what is refused.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "db/jet/store.h"
#include "tests/jet/record_fixture.h"
#include "tests/support/temporary_folder.h"

namespace {

using jet::Database;
using jet::FieldType;
using test::Fails;
using test::Ints;
using test::IsOk;
using Numbers = std::vector<int>;

class CreationTest : public test::RecordTest {
 protected:
  void TearDown() override { EXPECT_EQ(test::Problems(*database_), ""); }
};

TEST_F(CreationTest, AnIndexOnExistingRecords) {
  for (int i = 0; i < 1000; ++i) Add(i, "n" + std::to_string((i * 37) % 100));
  for (int i = 0; i < 1000; i += 3) {
    GoTo(i);
    ASSERT_THAT(records_->Edit(), IsOk());
    ASSERT_THAT(records_->Set("Free", std::to_string(9999 - i)), IsOk());
    ASSERT_THAT(records_->Update(), IsOk());
  }
  ASSERT_THAT(database_->CreateIndex("T", {.name = "Free", .fields = {"Free"}}), IsOk());
  ASSERT_THAT(database_->CreateIndex("T", {.name = "Both", .fields = {"Name", "Num"}}), IsOk());
  ASSERT_THAT(records_->SetIndex("Free"), IsOk());
  ASSERT_THAT(records_->Seek("9000"), IsOk());
  EXPECT_EQ(test::Int(*records_, "Num"), 999);
  ASSERT_THAT(records_->SetIndex("Both"), IsOk());
  ASSERT_THAT(records_->Seek("n5"), IsOk());
  ASSERT_FALSE(records_->NoMatch()) << "the first field alone";
  EXPECT_EQ(test::Int(*records_, "Num"), 65);
  Add(2000, "n5");
  const auto reopened = test::Open(disk_);
  EXPECT_EQ(test::Problems(*reopened), "");
  const auto records = test::OpenTable(*reopened, "T");
  ASSERT_THAT(records->SetIndex("Free"), IsOk());
  EXPECT_EQ(Ints(*records, "Num").size(), 1001U);
}

TEST_F(CreationTest, AUniqueIndexOnExistingRecords) {
  Add(1, "a");
  Add(2, "b");
  Add(3, jet::Value());
  Add(4, jet::Value());
  const jet::IndexSpec unique = {.name = "U", .fields = {"Name"}, .unique = true};
  ASSERT_THAT(database_->CreateIndex("T", unique), IsOk()) << "several nulls are no duplicates";
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", 5), IsOk());
  ASSERT_THAT(records_->Set("Name", "A"), IsOk());
  EXPECT_EQ(records_->Update().Number(), 3022);
}

TEST_F(CreationTest, AnIndexThatTheRecordsContradict) {
  Add(1, "a");
  Add(2, "A");
  const auto before = disk_.content;
  const jet::IndexSpec unique = {.name = "U", .fields = {"Name"}, .unique = true};
  EXPECT_THAT(database_->CreateIndex("T", unique),
              Fails(3022, "Two records have the same value for index \"U\""));
  Add(3, jet::Value());
  const jet::IndexSpec primary = {.name = "P", .fields = {"Name"}, .primary = true};
  EXPECT_EQ(database_->CreateIndex("T", primary).Number(), 3058);
  EXPECT_THAT(records_->SetIndex("U"), Fails(3265, "Table \"T\" has no index \"U\""));
  GoTo(3);
  ASSERT_THAT(records_->Delete(), IsOk());
  EXPECT_EQ(disk_.content.size(), before.size());
}

TEST_F(CreationTest, AnIndexOverAValueThatHasNoKey) {
  Add(1, "a");
  ASSERT_THAT(records_->Edit(), IsOk());
  ASSERT_THAT(records_->Set("Free", "Ж"), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
  EXPECT_THAT(database_->CreateIndex("T", {.name = "F", .fields = {"Free"}}),
              Fails(3251, "A record has a value that cannot be entered into index \"F\""));
}

TEST_F(CreationTest, AnIndexThatCannotBe) {
  const auto refused = [this](const jet::IndexSpec& spec) {
    return database_->CreateIndex("T", spec);
  };
  EXPECT_THAT(refused({.name = "Num", .fields = {"Free"}}),
              Fails(3010, "Table \"T\" has an index \"Num\" already"));
  EXPECT_THAT(refused({.name = "X", .fields = {"None"}}),
              Fails(3265, "Index \"X\" names field \"None\", which is not there"));
  EXPECT_THAT(refused({.name = "X", .fields = {}}),
              Fails(3251, "Index \"X\" must have from 1 to 10 fields"));
  EXPECT_THAT(refused({.name = "", .fields = {"Num"}}),
              Fails(3125, "\"\" cannot be the name of an index"));
  EXPECT_THAT(database_->CreateIndex("U", {.name = "X", .fields = {"Num"}}),
              Fails(3078, "There is no table \"U\""));
  EXPECT_THAT(database_->CreateIndex("MSysACEs", {.name = "X", .fields = {"ACM"}}),
              Fails(3027, "The tables of the system cannot be changed"));
}

TEST_F(CreationTest, AsManyIndexesAsATableCanHave) {
  Add(1, "a");
  for (int i = 2; i < 32; ++i) {
    const jet::IndexSpec spec = {.name = "I" + std::to_string(i), .fields = {"Free", "Num"}};
    ASSERT_THAT(database_->CreateIndex("T", spec), IsOk()) << i;
  }
  EXPECT_THAT(database_->CreateIndex("T", {.name = "I32", .fields = {"Num"}}),
              Fails(3251, "Table \"T\" has as many indexes as it can have"));
  Add(2, "b");
  GoTo(1);
  ASSERT_THAT(records_->Delete(), IsOk());
}

TEST_F(CreationTest, ATableThatCannotBe) {
  const auto refused = [this](const jet::TableSpec& spec) { return database_->CreateTable(spec); };
  EXPECT_THAT(refused({"t", {{.name = "N"}}}), Fails(3010, "There is already a table \"t\""));
  EXPECT_THAT(refused({"U", {}}), Fails(3190, "Table \"U\" must have from 1 to 255 fields"));
  EXPECT_THAT(refused({"U", std::vector<jet::FieldSpec>(256, {.name = "N"})}),
              Fails(3190, "Table \"U\" must have from 1 to 255 fields"));
  EXPECT_THAT(refused({"U", {{.name = "N"}, {.name = "n"}}}),
              Fails(3010, "Table \"U\" has field \"n\" twice"));
  EXPECT_THAT(refused({"U", {{.name = "N", .type = FieldType::Long}}}),
              Fails(3251, "Field \"N\" is of a type that cannot be created"));
  for (const int size : {0, 256, -1}) {
    EXPECT_THAT(refused({"U", {{.name = "N", .type = FieldType::Text, .size = size}}}),
                Fails(3251, "Text field \"N\" must have a size from 1 to 255"));
  }
  for (const char* name : {"", " U", "a.b", "a!b", "a[b", "a]b", "a`b", "a\tb", "\xFF"}) {
    EXPECT_EQ(refused({name, {{.name = "N"}}}).Number(), 3125) << name;
    EXPECT_EQ(refused({"U", {{.name = name}}}).Number(), 3125) << name;
  }
  EXPECT_EQ(refused({std::string(65, 'x'), {{.name = "N"}}}).Number(), 3125);
  EXPECT_EQ(database_->TableNames(), std::vector<std::string>{"T"});
}

TEST_F(CreationTest, ATableWithTheSameIndexTwice) {
  const std::array indexes = {jet::IndexSpec{.name = "I", .fields = {"N"}},
                              jet::IndexSpec{.name = "i", .fields = {"N"}}};
  EXPECT_THAT(database_->CreateTable({"U", {{.name = "N"}}}, indexes),
              Fails(3010, "Table \"U\" has index \"i\" twice"));
}

TEST_F(CreationTest, ATableOfTheMostFieldsAndTheLongestNames) {
  jet::TableSpec wide = {std::string(64, 'W'), {}};
  for (int i = 0; i < 255; ++i) {
    std::string name = "Field " + std::to_string(i) + " ";
    name.resize(64, 'x');
    wide.fields.push_back(
        {.name = name, .type = i % 2 == 0 ? FieldType::Memo : FieldType::Integer});
  }
  ASSERT_THAT(database_->CreateTable(wide), IsOk());
  const auto records = test::OpenTable(*database_, wide.name);
  ASSERT_EQ(records->FieldCount(), 255);
  for (int round = 0; round < 3; ++round) {
    ASSERT_THAT(records->AddNew(), IsOk());
    for (int i = 0; i < 255; ++i) {
      const jet::Value value = i % 2 == 0 ? jet::Value("m" + std::to_string(i)) : jet::Value(i);
      ASSERT_THAT(records->Set(i, value), IsOk());
    }
    ASSERT_THAT(records->Update(), IsOk());
  }
  const auto reopened = test::Open(disk_);
  const auto again = test::OpenTable(*reopened, wide.name);
  EXPECT_EQ(again->FieldNames(), records->FieldNames());
  EXPECT_EQ(again->RecordCount(), 3);
  jet::Value value;
  ASSERT_THAT(again->Get(254, &value), IsOk());
  EXPECT_EQ(value.Text(), "m254");
}

TEST(CreationOnDisk, ReplacesAFileAndOpensItAgain) {
  const test::TemporaryFolder folder;
  const auto path = folder / "new.mdb";
  test::WriteFile(path, std::string(200000, 'x'));
  std::unique_ptr<Database> database;
  ASSERT_THAT(Database::Create(path, &database), IsOk());
  ASSERT_THAT(database->CreateTable({"T", {{.name = "N"}}}), IsOk());
  database.reset();
  EXPECT_EQ(std::filesystem::file_size(path) % 4096, 0U);
  EXPECT_LT(std::filesystem::file_size(path), 100000U);
  ASSERT_THAT(Database::Open(path, jet::Access::ReadWrite, &database), IsOk());
  EXPECT_EQ(database->TableNames(), std::vector<std::string>{"T"});
}

TEST(CreationOnDisk, RefusesWhatIsNoPlaceForAFile) {
  const test::TemporaryFolder folder;
  std::unique_ptr<Database> database;
  EXPECT_EQ(Database::Create(folder.Path(), &database).Number(), 3051);
  EXPECT_EQ(Database::Create(folder / "none/new.mdb", &database).Number(), 3024);
  EXPECT_EQ(Database::Open(folder / "none.mdb", jet::Access::ReadOnly, &database).Number(), 3024);
  EXPECT_EQ(Database::Open(folder.Path(), jet::Access::ReadOnly, &database).Number(), 3051);
  EXPECT_EQ(database, nullptr);
}

// By the clock on the wall, in summer as in winter, and in the hour that comes twice.
TEST(LocalDays, AreThoseOfTheClockOnTheWall) {
  const char* const before = std::getenv("TZ");
  const std::string kept = before == nullptr ? "" : before;
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  tzset();
  EXPECT_DOUBLE_EQ(jet::Store::LocalDays(1768474800), 46037.5);           // 2026-01-15, 12:00
  EXPECT_DOUBLE_EQ(jet::Store::LocalDays(1784109600), 46218.5);           // 2026-07-15, 12:00
  EXPECT_DOUBLE_EQ(jet::Store::LocalDays(1792888200), 46320 + 2.5 / 24);  // 2026-10-25, 02:30
  EXPECT_DOUBLE_EQ(jet::Store::LocalDays(1792891800), 46320 + 2.5 / 24);
  if (before == nullptr) {
    unsetenv("TZ");
  } else {
    setenv("TZ", kept.c_str(), 1);
  }
  tzset();
}

}  // namespace
