// SPDX-License-Identifier: MIT

#include "tests/jet/record_fixture.h"

#include <array>

namespace test {

void RecordTest::SetUp() {
  using jet::FieldType;
  ASSERT_THAT(jet::Database::Create(disk_.NewFile(), &database_), IsOk());
  const jet::TableSpec table = {
      "T",
      {{.name = "Num", .type = FieldType::Integer},
       {.name = "Name", .type = FieldType::Text, .size = 8},
       {.name = "Free", .type = FieldType::Text, .size = 8, .allowZeroLength = true},
       {.name = "Note", .type = FieldType::Memo, .allowZeroLength = true}}};
  const std::array indexes = {jet::IndexSpec{.name = "Num", .fields = {"Num"}, .primary = true},
                              jet::IndexSpec{.name = "Name", .fields = {"Name"}}};
  ASSERT_THAT(database_->CreateTable(table, indexes), IsOk());
  records_ = OpenT();
  ASSERT_NE(records_, nullptr);
}

void RecordTest::Add(int num, const jet::Value& name) {
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set("Num", num), IsOk());
  ASSERT_THAT(records_->Set("Name", name), IsOk());
  ASSERT_THAT(records_->Update(), IsOk());
}

void RecordTest::GoTo(int num) {
  ASSERT_THAT(records_->FindFirst("Num", num), IsOk());
  ASSERT_FALSE(records_->NoMatch()) << num;
}

}  // namespace test
