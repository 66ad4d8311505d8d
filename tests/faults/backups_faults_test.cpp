// SPDX-License-Identifier: MIT
//
// Dated copies of the database on a disk that does not do all that it is asked.

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "db/backups.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/temporary_folder.h"

namespace db {
namespace {

using Cause = Backups::Cause;

class BackupsFaultsTest : public testing::Test {
 protected:
  BackupsFaultsTest() { TeskWatch(plan_.Shared()); }
  ~BackupsFaultsTest() override { TeskWatch(nullptr); }

  // One more copy, a second after the one before, of a database that is never the same.
  model::Status Keep() {
    const std::time_t now = begun_ + ++kept_;
    return backups_.Keep(backups_.PathOf(Cause::Daily, now), "database " + std::to_string(kept_),
                         &holder_);
  }

  // The contents of the copies, the newest first.
  std::vector<std::string> Held() const {
    std::vector<Backups::Copy> copies;
    EXPECT_TRUE(backups_.List(&copies).ok());
    std::vector<std::string> held;
    for (const Backups::Copy& copy : copies) held.push_back(test::ReadFile(copy.path));
    return held;
  }

  test::TemporaryFolder folder_;
  faults::FaultPlan plan_{std::filesystem::canonical(folder_.Path())};
  Backups backups_{std::filesystem::canonical(folder_.Path()) / "Backups"};
  std::filesystem::path holder_;

 private:
  const std::time_t begun_ = 1'800'000'000;
  int kept_ = 0;
};

TEST_F(BackupsFaultsTest, AnOldOneThatCannotBeDeletedIsNoFailure) {
  for (int copies = 0; copies < 21; ++copies) ASSERT_TRUE(Keep().ok());
  // Each copy is made with as many calls, and the last of them deletes the oldest.
  plan_.Restart();
  ASSERT_TRUE(Keep().ok());
  const std::vector<std::string> calls = plan_.Calls();
  ASSERT_TRUE(calls.back().starts_with("remove ")) << calls.back();
  ASSERT_EQ(Held().back(), "database 3");

  plan_.Restart();
  plan_.Fail(static_cast<int>(calls.size()), static_cast<int>(calls.size()), EPERM);
  EXPECT_TRUE(Keep().ok());
  EXPECT_EQ(test::ReadFile(holder_), "database 23");
  EXPECT_EQ(Held().size(), 21u);
  EXPECT_EQ(Held().back(), "database 3");

  // Of two that are too many the second is deleted although the first is not.
  plan_.Restart();
  const int next = static_cast<int>(calls.size());
  plan_.Fail(next, next, EPERM);
  EXPECT_TRUE(Keep().ok());
  EXPECT_EQ(test::ReadFile(holder_), "database 24");
  EXPECT_EQ(Held().size(), 21u) << "one more, and one of the two less";
}

}  // namespace
}  // namespace db
