// SPDX-License-Identifier: MIT
//
// What a table should hold, kept as simply as can be.

#ifndef TESTS_JET_TABLE_MODEL_H_
#define TESTS_JET_TABLE_MODEL_H_

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "db/jet/database.h"

namespace test {

// Makes the same random edits to a table and to a copy of it in memory, and compares them.
// The table has an Integer primary key and fields of type Integer, Text and Memo.
class TableModel {
 public:
  // `key` is the field and the index of the primary key, `others` are further indexes, each on
  // the Text field of its name.
  TableModel(jet::Database& database, std::string table, std::string key,
             std::vector<std::string> others, std::uint32_t seed);

  // One edit or search.  A difference fails the test.
  void Step();
  // Goes over to another object on the same file.
  void Reopen(jet::Database& database);
  // For a batch that is dropped: keeps the present content, and brings it back.
  void Keep() { kept_ = model_; }
  void GoBack() { model_ = kept_; }
  // Every record, in storage order and in the order of each index.
  void CompareAll();

 private:
  using Record = std::vector<jet::Value>;

  int Random(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  int RandomKey();
  jet::Value RandomValue(const jet::FieldInfo& field);
  void LoadRecords();
  Record ReadRecord();
  void Add();
  void Edit(int key);
  void Delete(int key);
  void Search();
  void FillSome(Record* record);
  bool SeekKey(int key);

  const std::string table_;
  const std::string key_;
  const std::vector<std::string> others_;
  std::unique_ptr<jet::RecordSet> records_;
  std::vector<jet::FieldInfo> fields_;
  int keyField_ = 0;
  std::map<int, Record> model_;
  std::map<int, Record> kept_;
  std::mt19937 random_;
};

}  // namespace test

#endif  // TESTS_JET_TABLE_MODEL_H_
