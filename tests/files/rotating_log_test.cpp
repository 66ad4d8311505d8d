// SPDX-License-Identifier: MIT

#include "files/rotating_log.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/temporary_folder.h"

namespace files {
namespace {

class RotatingLogTest : public testing::Test {
 protected:
  std::filesystem::path Path() const { return folder_ / "Teskctl.log"; }
  std::string Text(int files = 0) const { return test::ReadFile(log_.Older(files)); }

  test::TemporaryFolder folder_;
  RotatingLog log_{Path(), {.bytes = 20, .files = 3}};
};

TEST_F(RotatingLogTest, WithoutALineThereIsNoFile) { EXPECT_EQ(Text(), "(none)"); }

TEST_F(RotatingLogTest, LinesAreAddedToWhatIsThere) {
  test::WriteFile(Path(), "before\n");
  ASSERT_TRUE(log_.Add("one").ok());
  ASSERT_TRUE(log_.Add("two").ok());
  EXPECT_EQ(Text(), "before\none\ntwo\n");
}

TEST_F(RotatingLogTest, AFullFileMakesWayAndTheOldestGoes) {
  for (const char* const line :
       {"a123456789", "b12345678", "c123456789", "d123456789", "e123456789"}) {
    ASSERT_TRUE(log_.Add(line).ok());
  }
  EXPECT_EQ(log_.Older(1), folder_ / "Teskctl.1.log");
  EXPECT_EQ(Text(0), "e123456789\n");
  EXPECT_EQ(Text(1), "d123456789\n");
  EXPECT_EQ(Text(2), "c123456789\n");
  EXPECT_EQ(Text(3), "(none)");
}

TEST_F(RotatingLogTest, AFileIsFilledToItsLastByte) {
  ASSERT_TRUE(log_.Add("123456789").ok());
  ASSERT_TRUE(log_.Add("123456789").ok());
  EXPECT_EQ(Text().size(), 20u);
  EXPECT_EQ(Text(1), "(none)");
}

TEST_F(RotatingLogTest, ALineLongerThanAFileHasOneToItself) {
  ASSERT_TRUE(log_.Add("one").ok());
  ASSERT_TRUE(log_.Add(std::string(30, 'x')).ok());
  ASSERT_TRUE(log_.Add("two").ok());
  EXPECT_EQ(Text(0), "two\n");
  EXPECT_EQ(Text(1), std::string(30, 'x') + "\n");
  EXPECT_EQ(Text(2), "one\n");
}

TEST_F(RotatingLogTest, AFullFileThatCannotMakeWayTakesTheLineAllTheSame) {
  std::filesystem::create_directories(log_.Older(2) / "in the way");
  test::WriteFile(log_.Older(1), "before\n");
  ASSERT_TRUE(log_.Add("a123456789").ok());
  EXPECT_FALSE(log_.Add("b123456789").ok());
  EXPECT_FALSE(log_.Add("c123456789").ok());
  EXPECT_EQ(Text(0), "a123456789\nb123456789\nc123456789\n");
  EXPECT_EQ(Text(1), "before\n");
  std::filesystem::remove_all(log_.Older(2));
  EXPECT_TRUE(log_.Add("d123456789").ok());
  EXPECT_EQ(Text(0), "d123456789\n");
  EXPECT_EQ(Text(1), "a123456789\nb123456789\nc123456789\n");
  EXPECT_EQ(Text(2), "before\n");
}

TEST_F(RotatingLogTest, WhatStandsBehindAGapStaysWhereItIs) {
  RotatingLog log(Path(), {.bytes = 20, .files = 4});
  test::WriteFile(log.Older(2), "older\n");
  test::WriteFile(log.Older(3), "oldest\n");
  ASSERT_TRUE(log.Add("a123456789").ok());
  ASSERT_TRUE(log.Add("b123456789").ok());
  EXPECT_EQ(Text(0), "b123456789\n");
  EXPECT_EQ(Text(1), "a123456789\n");
  EXPECT_EQ(Text(2), "older\n");
  EXPECT_EQ(Text(3), "oldest\n");
}

}  // namespace
}  // namespace files
