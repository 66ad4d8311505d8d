// SPDX-License-Identifier: MIT
//
// Pointers that lead in a circle: each walk ends with an error that names the page.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/store.h"
#include "tests/jet/exercise.h"
#include "tests/jet/jet_support.h"

namespace {

using jet::GetU16;
using jet::GetU32;
using jet::PutU32;
using test::IsOk;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kPage = 4096;

std::unique_ptr<jet::Database> OpenBytes(const Bytes& bytes) {
  std::unique_ptr<jet::Database> database;
  EXPECT_THAT(jet::Database::Open(std::make_unique<jet::MemoryPageFile>(bytes),
                                  jet::Access::ReadWrite, &database),
              IsOk());
  return database;
}

jet::TableDef DefinitionOf(const Bytes& bytes, std::string_view table) {
  const auto database = OpenBytes(bytes);
  std::shared_ptr<jet::Table> opened;
  EXPECT_THAT(database->GetStore().OpenTable(table, &opened), IsOk());
  return opened->Def();
}

// The bytes of a row.
std::uint8_t* Row(Bytes& bytes, jet::RowPointer row) {
  std::uint8_t* page = bytes.data() + row.page * kPage;
  return page + (GetU16(page + 14 + 2 * std::size_t{row.slot}) & 0x1FFF);
}

// The pointer to the long value of the only record of table "T": the record consists of its
// column count, the head of the value (length, pointer, 0) and its tables.
std::uint32_t FirstPart(Bytes& bytes) {
  const auto database = OpenBytes(bytes);
  std::shared_ptr<jet::Table> table;
  EXPECT_THAT(database->GetStore().OpenTable("T", &table), IsOk());
  jet::RowPointer row;
  EXPECT_THAT(table->FirstRow(&row), IsOk());
  return GetU32(Row(bytes, row) + 2 + 4);
}

// Everything else is done to the file, too.
void ExpectSurvives(const Bytes& bytes) {
  for (const jet::Status& status : test::ReadEverything(bytes).errors) {
    test::ExpectGoodError(status);
  }
  Bytes copy = bytes;
  for (const jet::Status& status : test::WriteEverywhere(&copy).errors) {
    test::ExpectGoodError(status);
  }
}

// Walks in the order of the index, for the error.
jet::Status WalkError(const Bytes& bytes, const char* table, const char* index) {
  const auto database = OpenBytes(bytes);
  std::shared_ptr<jet::Table> opened;
  EXPECT_THAT(database->GetStore().OpenTable(table, &opened), IsOk());
  std::unique_ptr<jet::Database> readOnly;
  EXPECT_THAT(jet::Database::Open(std::make_unique<jet::MemoryPageFile>(bytes),
                                  jet::Access::ReadOnly, &readOnly),
              IsOk());
  return test::OpenTable(*readOnly, table)->SetIndex(index);
}

TEST(Circles, OfADefinition) {
  Bytes bytes = test::SampleBytes("tesk_jet4");
  const jet::TableDef definition = DefinitionOf(bytes, "Stations");
  ASSERT_EQ(definition.pages.size(), 2U);
  Bytes circle = bytes;
  PutU32(&circle[definition.pages[0] * kPage + 4], definition.pages[0]);
  std::unique_ptr<jet::RecordSet> records;
  const jet::Status status = OpenBytes(circle)->OpenTable("Stations", &records);
  EXPECT_EQ(status.Number(), 3049) << status.Text();
  EXPECT_EQ(status.Page(), definition.pages[0]);
  EXPECT_EQ(test::OpenTable(*OpenBytes(circle), "DbInfo")->RecordCount(), 1);
  ExpectSurvives(circle);
  // Behind the end of the string nothing is followed.
  circle = bytes;
  PutU32(&circle[definition.pages[1] * kPage + 4], definition.pages[0]);
  EXPECT_EQ(test::OpenTable(*OpenBytes(circle), "Stations")->RecordCount(), 128);
  ExpectSurvives(circle);
}

TEST(Circles, OfTheLeavesOfAnIndex) {
  Bytes bytes = test::SampleBytes("compIndexTestV2000");
  const jet::TableDef definition = DefinitionOf(bytes, "Table1");
  int circles = 0;
  for (std::uint32_t page = 3; page < bytes.size() / kPage; ++page) {
    const std::uint8_t* head = &bytes[page * kPage];
    if (head[0] != 4 || GetU32(head + 4) != definition.page || GetU32(head + 16) == 0) continue;
    ++circles;
    Bytes circle = bytes;
    PutU32(&circle[page * kPage + 16], page);
    const jet::Status status =
        WalkError(circle, "Table1", definition.logicalIndexes[0].name.c_str());
    EXPECT_EQ(status.Number(), 3049) << status.Text();
    EXPECT_NE(status.Page(), jet::kNoPage);
    ExpectSurvives(circle);
  }
  EXPECT_GT(circles, 0);
}

TEST(Circles, OfANodeAboveItself) {
  Bytes bytes = test::SampleBytes("compIndexTestV2000");
  const jet::TableDef definition = DefinitionOf(bytes, "Table1");
  int circles = 0;
  for (const jet::RealIndex& index : definition.realIndexes) {
    if (bytes[index.root * kPage] != 3) continue;
    ++circles;
    Bytes circle = bytes;
    PutU32(&circle[index.root * kPage + 20], index.root);
    const jet::Status status =
        WalkError(circle, "Table1", definition.logicalIndexes[0].name.c_str());
    EXPECT_EQ(status.Number(), 3049) << status.Text();
    EXPECT_NE(status.Page(), jet::kNoPage);
    ExpectSurvives(circle);
  }
  EXPECT_GT(circles, 0);
}

TEST(Circles, OfALongValue) {
  test::MemoryDisk disk;
  std::unique_ptr<jet::Database> database;
  ASSERT_THAT(jet::Database::Create(disk.NewFile(), &database), IsOk());
  ASSERT_THAT(database->CreateTable({"T", {{.name = "M", .type = jet::FieldType::Memo}}}), IsOk());
  auto records = test::OpenTable(*database, "T");
  ASSERT_THAT(records->AddNew(), IsOk());
  ASSERT_THAT(records->Set("M", std::string(50000, 'x')), IsOk());
  ASSERT_THAT(records->Update(), IsOk());
  // Each part of the chain stands alone on its page, the pointer to the next part first.
  std::vector<std::uint32_t> parts;
  for (std::uint32_t next = FirstPart(disk.content); next != 0;) {
    parts.push_back(next >> 8);
    ASSERT_LT(parts.size(), 100U);
    next = GetU32(Row(disk.content, jet::RowPointer::Unpack(next)));
  }
  ASSERT_EQ(parts.size(), 25U) << "100000 bytes, 4072 a part";
  for (const std::size_t from : {0, 12, 23}) {
    for (const std::size_t to : {0, 5, 12}) {
      if (to > from) continue;
      Bytes circle = disk.content;
      PutU32(Row(circle, {parts[from], 0}), parts[to] << 8);
      const auto damaged = OpenBytes(circle);
      jet::Value value;
      const jet::Status status = test::OpenTable(*damaged, "T")->Get("M", &value);
      // Either the circle is noticed, or that the parts are not those of the value.
      EXPECT_EQ(status.Number(), 3049) << from << " to " << to << ": " << status.Text();
      EXPECT_NE(status.Page(), jet::kNoPage);
      ExpectSurvives(circle);
    }
  }
}

TEST(Circles, OfAUsageMap) {
  Bytes bytes = test::SampleBytes("tesk_jet4");
  const jet::TableDef definition = DefinitionOf(bytes, "Stations");
  for (const jet::RowPointer row : {definition.ownedMap, definition.freeMap}) {
    Bytes circle = bytes;
    std::uint8_t* map = Row(circle, row);
    map[0] = 1;  // the map refers to pages of bits, and these are its own page
    for (int i = 0; i < 17; ++i) PutU32(map + 1 + 4 * i, row.page);
    ExpectSurvives(circle);
    if (row != definition.ownedMap) continue;
    std::unique_ptr<jet::RecordSet> records;
    const jet::Status status = OpenBytes(circle)->OpenTable("Stations", &records);
    EXPECT_EQ(status.Number(), 3049) << status.Text();
    EXPECT_EQ(status.Page(), row.page);
  }
}

TEST(Circles, OfMovedRows) {
  Bytes bytes = test::SampleBytes("overflowTestV2000");
  int circles = 0;
  for (std::uint32_t page = 3; page < bytes.size() / kPage; ++page) {
    std::uint8_t* head = &bytes[page * kPage];
    if (head[0] != 1 || GetU32(head + 4) == 0x4C41564C) continue;
    for (std::uint32_t slot = 0; slot < GetU16(head + 12); ++slot) {
      if ((GetU16(head + 14 + 2 * slot) & 0xC000) != 0x4000) continue;
      ++circles;
      Bytes circle = bytes;
      PutU32(Row(circle, {page, static_cast<std::uint8_t>(slot)}), (page << 8) | slot);
      ExpectSurvives(circle);
    }
  }
  EXPECT_GT(circles, 0);
}

}  // namespace
