// SPDX-License-Identifier: MIT

#include "db/backups.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

using Cause = Backups::Cause;

// A second of 21 November 2026, after 18:05:12 on the clock on the wall.
std::time_t At(int second) {
  std::tm time{};
  time.tm_year = 2026 - 1900;
  time.tm_mon = 10;
  time.tm_mday = 21;
  time.tm_hour = 18;
  time.tm_min = 5;
  time.tm_sec = 12 + second;
  time.tm_isdst = -1;
  return std::mktime(&time);
}

class BackupsTest : public testing::Test {
 protected:
  std::filesystem::path Folder() const { return folder_ / "Backups"; }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  // Of a database that is never the same.
  model::Status Keep(Cause cause, std::time_t now) {
    return Keep(cause, now, "the database " + std::to_string(++kept_));
  }
  model::Status Keep(Cause cause, std::time_t now, const std::string& bytes) {
    return backups_.Keep(backups_.PathOf(cause, now), bytes, &holder_);
  }

  std::vector<Backups::Copy> List() const {
    std::vector<Backups::Copy> copies;
    EXPECT_TRUE(backups_.List(&copies).ok());
    return copies;
  }

  test::TemporaryFolder folder_;
  Backups backups_{Folder()};
  int kept_ = 0;
  std::filesystem::path holder_;
};

TEST_F(BackupsTest, ACopyIsNamedByItsTimeAndItsCause) {
  ASSERT_TRUE(Keep(Cause::BeforeRetrieval, At(0)).ok());
  ASSERT_TRUE(Keep(Cause::Daily, At(1)).ok());
  ASSERT_TRUE(Keep(Cause::BeforeSaving, At(2)).ok());
  ASSERT_TRUE(Keep(Cause::BeforeRestoring, At(3)).ok());
  EXPECT_EQ(Names(), (std::vector<std::string>{"Tesk-2026-11-21-180512-before-retrieval.mdb",
                                               "Tesk-2026-11-21-180513-daily.mdb",
                                               "Tesk-2026-11-21-180514-before-saving.mdb",
                                               "Tesk-2026-11-21-180515-before-restoring.mdb"}));
  EXPECT_EQ(test::ReadFile(Folder() / "Tesk-2026-11-21-180513-daily.mdb"), "the database 2");
}

TEST_F(BackupsTest, TheNewestIsListedFirst) {
  ASSERT_TRUE(Keep(Cause::Daily, At(0)).ok());
  ASSERT_TRUE(Keep(Cause::BeforeSaving, At(30)).ok());
  const std::vector<Backups::Copy> copies = List();
  ASSERT_EQ(copies.size(), 2u);
  EXPECT_EQ(copies[0].cause, Cause::BeforeSaving);
  EXPECT_EQ(copies[0].path, Folder() / "Tesk-2026-11-21-180542-before-saving.mdb");
  EXPECT_EQ(copies[0].time.tm_mday, 21);
  EXPECT_EQ(copies[0].time.tm_sec, 42);
  EXPECT_EQ(copies[0].time.tm_isdst, -1) << "whether it was summer, the name does not say";
  EXPECT_EQ(copies[1].cause, Cause::Daily);
}

TEST_F(BackupsTest, TwentyAreKeptAndNothingOfOthersIsDeleted) {
  std::filesystem::create_directory(Folder());
  for (const char* const other : {"Tesk-2020-01-01-000000-mine.mdb",
                                  "Tesk-2020-1-1-00000000-daily.mdb", "Tesk.mdb", "notes.txt"}) {
    test::WriteFile(Folder() / other, "");
  }
  for (int second = 0; second < 25; ++second) {
    ASSERT_TRUE(Keep(Cause::Daily, At(second)).ok());
  }
  const std::vector<Backups::Copy> copies = List();
  ASSERT_EQ(copies.size(), 20u);
  EXPECT_EQ(copies.front().path.filename(), "Tesk-2026-11-21-180536-daily.mdb");
  EXPECT_EQ(copies.back().path.filename(), "Tesk-2026-11-21-180517-daily.mdb");
  EXPECT_EQ(Names().size(), 24u);
}

TEST_F(BackupsTest, TheNewOneStaysThoughTheClockWasSetBack) {
  for (int second = 1; second <= 20; ++second) {
    ASSERT_TRUE(Keep(Cause::Daily, At(second)).ok());
  }
  ASSERT_TRUE(Keep(Cause::Daily, At(0)).ok());
  const std::vector<Backups::Copy> copies = List();
  ASSERT_EQ(copies.size(), 20u);
  EXPECT_EQ(copies.back().path.filename(), "Tesk-2026-11-21-180512-daily.mdb");
}

// A clock that was ahead has named as many as are kept: they go first, not each new copy with the
// next one.
TEST_F(BackupsTest, CopiesOfALaterDayAreTheOldest) {
  constexpr int kMonth = 31 * 24 * 60 * 60;
  for (int second = 0; second < 20; ++second) {
    ASSERT_TRUE(Keep(Cause::Daily, At(kMonth + second)).ok());
  }
  ASSERT_TRUE(Keep(Cause::BeforeRetrieval, At(0)).ok());
  ASSERT_TRUE(Keep(Cause::BeforeSaving, At(1), "one").ok());
  ASSERT_TRUE(Keep(Cause::Daily, At(2), "one").ok());
  EXPECT_EQ(holder_.filename(), "Tesk-2026-11-21-180513-before-saving.mdb");
  const std::vector<std::string> names = Names();
  ASSERT_EQ(names.size(), 20u);
  EXPECT_EQ(names[0], "Tesk-2026-11-21-180512-before-retrieval.mdb");
  EXPECT_EQ(names[1], "Tesk-2026-11-21-180513-before-saving.mdb");
  EXPECT_EQ(names[2], "Tesk-2026-12-22-180514-daily.mdb") << "the two oldest of them have gone";
}

TEST_F(BackupsTest, WhatTheNewestHoldsIsNotWrittenAgain) {
  ASSERT_TRUE(Keep(Cause::BeforeRetrieval, At(0), "one").ok());
  EXPECT_EQ(holder_.filename(), "Tesk-2026-11-21-180512-before-retrieval.mdb");
  ASSERT_TRUE(Keep(Cause::Daily, At(1), "one").ok());
  EXPECT_EQ(holder_.filename(), "Tesk-2026-11-21-180512-before-retrieval.mdb");
  EXPECT_EQ(List().size(), 1u);
  ASSERT_TRUE(Keep(Cause::Daily, At(2), "two").ok());
  ASSERT_TRUE(Keep(Cause::Daily, At(3), "one").ok());
  EXPECT_EQ(holder_.filename(), "Tesk-2026-11-21-180515-daily.mdb");
  EXPECT_EQ(List().size(), 3u) << "an older one with the same bytes is not the newest";
  test::WriteFile(holder_, "onf");
  ASSERT_TRUE(Keep(Cause::Daily, At(4), "one").ok());
  EXPECT_EQ(List().size(), 4u) << "as large is not the same";
}

TEST_F(BackupsTest, AFullDiskLeavesNoPartOfACopyAndDeletesNothing) {
  for (int second = 0; second < 20; ++second) {
    ASSERT_TRUE(Keep(Cause::Daily, At(second)).ok());
  }
  const std::vector<std::string> before = Names();
  {
    const test::FullDisk full(4);
    EXPECT_EQ(Keep(Cause::Daily, At(30)).Number(), 3026);
  }
  EXPECT_EQ(Names(), before);
}

TEST_F(BackupsTest, WhatACrashHasLeftOfACopyGoes) {
  std::filesystem::create_directory(Folder());
  test::WriteFile(Folder() / "Tesk-2026-11-20-180512-daily.mdb.new", "half a copy");
  test::WriteFile(Folder() / "notes.mdb.new", "somebody's");
  ASSERT_TRUE(Keep(Cause::Daily, At(0)).ok());
  EXPECT_EQ(Names(),
            (std::vector<std::string>{"Tesk-2026-11-21-180512-daily.mdb", "notes.mdb.new"}));
}

TEST_F(BackupsTest, WhereNoFolderCanBeMadeItSaysSo) {
  test::WriteFile(Folder(), "in the way");
  const model::Status status = Keep(Cause::Daily, At(0));
  EXPECT_FALSE(status.ok());
}

TEST_F(BackupsTest, AFolderThatCannotBeReadIsNotOneWithoutCopies) {
  EXPECT_TRUE(List().empty()) << "there is none yet";
  test::WriteFile(Folder(), "in the way");
  std::vector<Backups::Copy> copies;
  EXPECT_FALSE(backups_.List(&copies).ok());
  EXPECT_TRUE(copies.empty());
}

}  // namespace
}  // namespace db
