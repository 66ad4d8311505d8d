// SPDX-License-Identifier: MIT

#ifndef TESTS_JET_RECORD_FIXTURE_H_
#define TESTS_JET_RECORD_FIXTURE_H_

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "tests/jet/jet_support.h"

namespace test {

// An empty table "T" of a database in memory.
//
//   Num   Integer, primary key, index "Num"
//   Name  Text of 8 characters, index "Name"; may not be ""
//   Free  Text of 8 characters
//   Note  Memo
class RecordTest : public testing::Test {
 protected:
  void SetUp() override;

  // A new record set on the table.
  std::unique_ptr<jet::RecordSet> OpenT() { return OpenTable(*database_, "T"); }
  // Adds a record through records_.
  void Add(int num, const jet::Value& name);
  // Makes the record of that number the current one of records_, by a search without index.
  void GoTo(int num);

  MemoryDisk disk_;
  std::unique_ptr<jet::Database> database_;
  std::unique_ptr<jet::RecordSet> records_;
};

}  // namespace test

#endif  // TESTS_JET_RECORD_FIXTURE_H_
