// SPDX-License-Identifier: MIT

#include "tests/jet/exercise.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "db/jet/audit.h"
#include "db/jet/store.h"
#include "tests/jet/jet_support.h"

namespace test {
namespace {

using jet::Database;
using jet::ErrorNumber;
using jet::FieldType;
using jet::Status;
using jet::Value;

class Run {
 public:
  Run(Database& database, Exercise* exercise) : database_(database), exercise_(*exercise) {}

  // Notes an error; whether there was none.
  bool Ok(const Status& status) {
    if (!status.ok()) exercise_.errors.push_back(status);
    return status.ok();
  }

  void ReadAll(jet::RecordSet& records) {
    // A damaged index may lead in circles through sound pages only if the engine lets it.
    int left = 100000;
    for (bool more = Ok(records.MoveFirst()); more && records.HasRecord();
         more = Ok(records.MoveNext())) {
      ASSERT_GT(--left, 0) << "the walk does not end";
      for (int i = 0; i < records.FieldCount(); ++i) {
        Value value;
        (void)Ok(records.Get(i, &value));
        ++exercise_.values;
      }
    }
    for (bool more = Ok(records.MoveLast()); more && records.HasRecord();
         more = Ok(records.MovePrevious())) {
      ASSERT_GT(--left, 0) << "the walk back does not end";
    }
  }

  void ReadTable(const std::string& name) {
    std::unique_ptr<jet::RecordSet> records;
    if (!Ok(database_.OpenTable(name, &records))) return;
    ReadAll(*records);
    std::shared_ptr<jet::Table> table;
    if (!Ok(database_.GetStore().OpenTable(name, &table))) return;
    for (const jet::LogicalIndex& index : table->Def().logicalIndexes) {
      if (Ok(records->SetIndex(index.name))) {
        ReadAll(*records);
        (void)Ok(records->Seek("Sta. 001"));
        (void)Ok(records->Seek(7));
      }
    }
    if (records->FieldCount() > 0) {
      const std::string field = records->Field(0).name;
      const std::array<std::string_view, 1> order = {field};
      std::unique_ptr<jet::RecordSet> sorted;
      if (Ok(database_.OpenOrdered(name, order, &sorted))) ReadAll(*sorted);
    }
  }

  static Value SomeValue(const jet::FieldInfo& field, int salt) {
    switch (field.type) {
      case FieldType::Text:
        return "t" + std::to_string(salt % 100);
      case FieldType::Memo:
        return std::string(static_cast<std::size_t>(salt % 3) * 3000 + 1, 'm');
      case FieldType::Integer:
      case FieldType::Long:
        return 20000 + salt;
      default:
        return {};
    }
  }

  void WriteTable(const std::string& name) {
    std::unique_ptr<jet::RecordSet> records;
    if (!Ok(database_.OpenTable(name, &records))) return;
    for (int i = 0; i < 6 && records->HasRecord(); ++i) {
      if (Ok(records->Edit())) {
        Set(*records, i);
        if (!Ok(records->Update())) records->CancelUpdate();
      }
      if (!Ok(records->MoveNext())) break;
    }
    for (int i = 0; i < 3; ++i) {
      if (!Ok(records->AddNew())) break;
      Set(*records, 100 + i);
      if (!Ok(records->Update())) records->CancelUpdate();
    }
    if (Ok(records->MoveFirst()) && records->HasRecord()) (void)Ok(records->Delete());
    if (records->FieldCount() > 0) {
      (void)Ok(database_.CreateIndex(name, {.name = "New", .fields = {records->Field(0).name}}));
    }
  }

 private:
  void Set(jet::RecordSet& records, int salt) {
    for (int i = 0; i < records.FieldCount(); ++i) {
      const Value value = SomeValue(records.Field(i), salt);
      if (!value.IsNull()) (void)Ok(records.Set(i, value));
    }
  }

  Database& database_;
  Exercise& exercise_;
};

}  // namespace

Exercise ReadEverything(const std::vector<std::uint8_t>& file) {
  Exercise exercise;
  MemoryDisk disk(file);
  std::unique_ptr<Database> database;
  const Status opened = Database::Open(disk.NewFile(), jet::Access::ReadOnly, &database);
  exercise.opened = opened.ok();
  if (!opened.ok()) {
    exercise.errors.push_back(opened);
  } else {
    Run run(*database, &exercise);
    for (const std::string& name : database->TableNames()) run.ReadTable(name);
    jet::Findings findings;
    (void)run.Ok(jet::Audit(database->GetStore(), &findings));
  }
  EXPECT_EQ(disk.writes, 0);
  EXPECT_EQ(disk.content, file);
  return exercise;
}

Exercise WriteEverywhere(std::vector<std::uint8_t>* file) {
  Exercise exercise;
  MemoryDisk disk(*file);
  std::unique_ptr<Database> database;
  const Status opened = Database::Open(disk.NewFile(), jet::Access::ReadWrite, &database);
  exercise.opened = opened.ok();
  if (!opened.ok()) {
    exercise.errors.push_back(opened);
  } else {
    Run run(*database, &exercise);
    (void)run.Ok(database->CreateTable({"New table", {{.name = "N"}}}));
    for (const std::string& name : database->TableNames()) run.WriteTable(name);
  }
  database.reset();
  *file = disk.content;
  return exercise;
}

void ExpectGoodError(const Status& status) {
  EXPECT_NE(status.Number(), 0);
  EXPECT_FALSE(status.Text().empty());
  if (status.Error() == ErrorNumber::Damaged || status.Error() == ErrorNumber::UnknownFormat) {
    EXPECT_NE(status.Page(), jet::kNoPage) << status.Number() << ": " << status.Text();
  }
}

}  // namespace test
