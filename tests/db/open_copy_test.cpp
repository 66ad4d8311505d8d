// SPDX-License-Identifier: MIT

#include "db/open_copy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "db/schema.h"
#include "tests/support/damaged_file.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

class OpenCopyTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(CreateDatabase(file_).ok()); }

  model::Status Open() { return OpenCopy(file_, &copy_); }

  test::TemporaryFolder folder_;
  const std::filesystem::path file_ = folder_ / "copy.mdb";
  std::unique_ptr<jet::Database> copy_;
};

TEST_F(OpenCopyTest, ASoundOneIsReadAndNotTouched) {
  const std::string before = test::ReadFile(file_);
  ASSERT_TRUE(Open().ok());
  std::unique_ptr<jet::RecordSet> stations;
  ASSERT_TRUE(copy_->OpenTable(kStationsTable, &stations).ok());
  EXPECT_EQ(stations->RecordCount(), 128);
  EXPECT_EQ(stations->Edit().Number(), 3027);
  EXPECT_TRUE(test::ReadFile(file_) == before);
}

TEST_F(OpenCopyTest, ADamagedOneIsRefusedAndNotTouched) {
  test::ZeroPageOf(file_, "Sta. 012");
  const std::string before = test::ReadFile(file_);
  const model::Status status = Open();
  EXPECT_EQ(status.Number(), 3049);
  EXPECT_THAT(status.Description(), testing::StartsWith("The file is damaged: "));
  EXPECT_EQ(copy_, nullptr);
  EXPECT_TRUE(test::ReadFile(file_) == before);
}

TEST_F(OpenCopyTest, WhatIsNoDatabaseIsRefused) {
  test::WriteFile(file_, "a letter");
  EXPECT_EQ(Open().Number(), 3343);
  std::filesystem::remove(file_);
  EXPECT_EQ(Open().Number(), 3024);
  ASSERT_EQ(mkfifo(file_.c_str(), 0666), 0);
  EXPECT_EQ(Open().Number(), 3051) << "nobody waits for a pipe";
  EXPECT_EQ(copy_, nullptr);
}

TEST_F(OpenCopyTest, WhatIsTooLargeForACopyIsRefusedUnread) {
  std::filesystem::resize_file(file_, std::uintmax_t{64} << 20);
  EXPECT_EQ(Open().Number(), 0) << "the largest that is looked at: " << Open().Description();
  std::filesystem::resize_file(file_, (std::uintmax_t{64} << 20) + 1);
  EXPECT_EQ(Open().Description(), "Cannot read copy.mdb: It is too large");
}

TEST_F(OpenCopyTest, OneWithAPasswordIsRefused) {
  std::string bytes = test::ReadFile(file_);
  bytes[0x42] = static_cast<char>(bytes[0x42] ^ 0x17);
  test::WriteFile(file_, bytes);
  EXPECT_EQ(Open().Number(), 3031);
}

}  // namespace
}  // namespace db
