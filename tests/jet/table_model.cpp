// SPDX-License-Identifier: MIT

#include "tests/jet/table_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "tests/jet/jet_support.h"

namespace test {
namespace {

using jet::FieldType;
using jet::Value;

constexpr int kKeys = 600;  // numbers that keys are drawn from: collisions are wanted

}  // namespace

TableModel::TableModel(jet::Database& database, std::string table, std::string key,
                       std::vector<std::string> others, std::uint32_t seed)
    : table_(std::move(table)), key_(std::move(key)), others_(std::move(others)), random_(seed) {
  Reopen(database);
  for (int i = 0; i < records_->FieldCount(); ++i) fields_.push_back(records_->Field(i));
  keyField_ = records_->FieldIndex(key_);
  LoadRecords();
}

void TableModel::Reopen(jet::Database& database) {
  records_ = OpenTable(database, table_);
  ASSERT_NE(records_, nullptr);
  ASSERT_THAT(records_->SetIndex(key_), IsOk());
}

TableModel::Record TableModel::ReadRecord() {
  Record record(fields_.size());
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    EXPECT_THAT(records_->Get(static_cast<int>(i), &record[i]), IsOk());
  }
  return record;
}

void TableModel::LoadRecords() {
  EXPECT_THAT(records_->MoveFirst(), IsOk());
  while (records_->HasRecord()) {
    Record record = ReadRecord();
    const int key = record[static_cast<std::size_t>(keyField_)].Int();
    model_[key] = std::move(record);
    EXPECT_THAT(records_->MoveNext(), IsOk());
  }
}

int TableModel::RandomKey() {
  // Half the time one that is there.
  if (!model_.empty() && Random(1) == 0) {
    return std::next(model_.begin(), Random(static_cast<int>(model_.size()) - 1))->first;
  }
  return Random(kKeys) - kKeys / 2;
}

Value TableModel::RandomValue(const jet::FieldInfo& field) {
  if (Random(9) == 0) return {};
  if (field.type == FieldType::Integer) return Random(65535) - 32768;
  static const std::vector<std::string> kLetters = {"a", "B", "é", "ß", "-", " ", "0",
                                                    "ÿ", "z", "'", "Ä", "œ", "€", "n"};
  int length = Random(10);
  if (field.type == FieldType::Text) {
    length = std::min(field.size, Random(3) == 0 ? field.size : length);
  } else if (Random(3) == 0) {
    length = Random(Random(20) == 0 ? 12000 : 200);
  }
  if (!field.allowZeroLength) length = std::max(length, 1);
  std::string text;
  for (int i = 0; i < length; ++i) {
    text += kLetters[static_cast<std::size_t>(Random(static_cast<int>(kLetters.size()) - 1))];
  }
  return text;
}

void TableModel::FillSome(Record* record) {
  const int changes = 1 + Random(4);
  for (int i = 0; i < changes; ++i) {
    const int field = Random(static_cast<int>(fields_.size()) - 1);
    if (field == keyField_) continue;
    const Value value = RandomValue(fields_[static_cast<std::size_t>(field)]);
    ASSERT_THAT(records_->Set(field, value), IsOk());
    (*record)[static_cast<std::size_t>(field)] = value;
  }
}

bool TableModel::SeekKey(int key) {
  EXPECT_THAT(records_->Seek(key), IsOk());
  EXPECT_EQ(records_->NoMatch(), !model_.contains(key)) << table_ << " " << key;
  return !records_->NoMatch();
}

void TableModel::Step() {
  const int what = Random(9);
  if (what < 4) {
    Add();
  } else if (what < 7) {
    Edit(RandomKey());
  } else if (what < 9) {
    Delete(RandomKey());
  } else {
    Search();
  }
}

void TableModel::Add() {
  const int key = RandomKey();
  Record record(fields_.size());
  record[static_cast<std::size_t>(keyField_)] = key;
  ASSERT_THAT(records_->AddNew(), IsOk());
  ASSERT_THAT(records_->Set(keyField_, key), IsOk());
  FillSome(&record);
  const jet::Status status = records_->Update();
  if (model_.contains(key)) {
    ASSERT_EQ(status.Number(), 3022) << status.Text();
    records_->CancelUpdate();
    return;
  }
  ASSERT_THAT(status, IsOk());
  ASSERT_EQ(ReadRecord(), record);
  model_[key] = std::move(record);
}

void TableModel::Edit(int key) {
  if (!SeekKey(key)) return;
  Record record = model_.at(key);
  ASSERT_EQ(ReadRecord(), record);
  ASSERT_THAT(records_->Edit(), IsOk());
  FillSome(&record);
  const int newKey = Random(5) == 0 ? RandomKey() : key;
  ASSERT_THAT(records_->Set(keyField_, newKey), IsOk());
  record[static_cast<std::size_t>(keyField_)] = newKey;
  const jet::Status status = records_->Update();
  if (newKey != key && model_.contains(newKey)) {
    ASSERT_EQ(status.Number(), 3022) << status.Text();
    records_->CancelUpdate();
    return;
  }
  ASSERT_THAT(status, IsOk());
  ASSERT_EQ(ReadRecord(), record);
  model_.erase(key);
  model_[newKey] = std::move(record);
}

void TableModel::Delete(int key) {
  if (!SeekKey(key)) return;
  ASSERT_THAT(records_->Delete(), IsOk());
  model_.erase(key);
  ASSERT_THAT(records_->MoveNext(), IsOk());
  const auto next = model_.upper_bound(key);
  ASSERT_EQ(records_->HasRecord(), next != model_.end());
  if (next == model_.end()) return;
  ASSERT_EQ(ReadRecord(), next->second);
}

// Walks a little from a random place.
void TableModel::Search() {
  auto at = model_.find(RandomKey());
  if (at == model_.end() || !SeekKey(at->first)) return;
  for (int i = Random(5); i > 0 && at != model_.begin(); --i) {
    --at;
    ASSERT_THAT(records_->MovePrevious(), IsOk());
    ASSERT_EQ(ReadRecord(), at->second);
  }
  ASSERT_EQ(records_->RecordCount(), static_cast<int>(model_.size()));
}

void TableModel::CompareAll() {
  auto expected = model_.begin();
  ASSERT_THAT(records_->MoveFirst(), IsOk());
  for (; records_->HasRecord(); ++expected) {
    ASSERT_NE(expected, model_.end());
    ASSERT_EQ(ReadRecord(), expected->second) << table_ << " " << expected->first;
    ASSERT_THAT(records_->MoveNext(), IsOk());
  }
  ASSERT_EQ(expected, model_.end());
  for (const std::string& index : others_) {
    ASSERT_THAT(records_->SetIndex(index), IsOk());
    std::vector<int> keys = Ints(*records_, key_);
    for (const auto& [key, record] : model_) {
      const Value& value = record[static_cast<std::size_t>(records_->FieldIndex(index))];
      ASSERT_THAT(records_->Seek(value), IsOk());
      ASSERT_FALSE(records_->NoMatch()) << index << " of " << key;
    }
    std::sort(keys.begin(), keys.end());
    std::vector<int> all;
    for (const auto& entry : model_) all.push_back(entry.first);
    ASSERT_EQ(keys, all) << index;
  }
  ASSERT_THAT(records_->SetIndex(key_), IsOk());
}

}  // namespace test
