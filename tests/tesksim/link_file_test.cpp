// SPDX-License-Identifier: MIT

#include "tools/tesksim/link_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

#include "tests/support/temporary_folder.h"

namespace tesksim {
namespace {

namespace fs = std::filesystem;

class LinkFileTest : public testing::Test {
 protected:
  fs::path Target() const { return fs::read_symlink(path_); }
  bool Exists() const { return fs::exists(fs::symlink_status(path_)); }

  test::TemporaryFolder folder_;
  fs::path path_ = folder_.Path() / "com1";
};

TEST_F(LinkFileTest, PointsToItsTargetUntilItGoes) {
  {
    LinkFile link(path_);
    EXPECT_FALSE(Exists());
    ASSERT_TRUE(link.PointTo("/dev/pts/1").ok());
    EXPECT_EQ(Target(), "/dev/pts/1");
    ASSERT_TRUE(link.PointTo("/dev/pts/2").ok());
    EXPECT_EQ(Target(), "/dev/pts/2");
    link.Remove();
    EXPECT_FALSE(Exists());
    ASSERT_TRUE(link.PointTo("/dev/pts/3").ok());
  }
  EXPECT_FALSE(Exists());
}

TEST_F(LinkFileTest, ReplacesALinkThatACrashLeftBehind) {
  fs::create_symlink("/nowhere", path_);
  LinkFile link(path_);
  ASSERT_TRUE(link.PointTo("/dev/pts/1").ok());
  EXPECT_EQ(Target(), "/dev/pts/1");
}

TEST_F(LinkFileTest, LeavesAFileOrFolderAlone) {
  std::ofstream(path_) << "precious";
  LinkFile link(path_);
  const model::Status status = link.PointTo("/dev/pts/1");
  EXPECT_FALSE(status.ok());
  EXPECT_EQ(status.Description(), path_.string() + " exists and is no symbolic link");
  EXPECT_TRUE(fs::is_regular_file(path_));
  EXPECT_EQ(fs::file_size(path_), 8u);
}

TEST_F(LinkFileTest, LeavesALinkAloneThatSomebodyElseHasTakenOver) {
  {
    LinkFile link(path_);
    ASSERT_TRUE(link.PointTo("/dev/pts/1").ok());
    LinkFile other(path_);
    ASSERT_TRUE(other.PointTo("/dev/pts/2").ok());
    link.Remove();
    EXPECT_EQ(Target(), "/dev/pts/2");
  }
  EXPECT_FALSE(Exists());
}

TEST_F(LinkFileTest, SaysWhereItCannotBeMade) {
  LinkFile link(folder_.Path() / "missing" / "com1");
  EXPECT_FALSE(link.PointTo("/dev/pts/1").ok());
}

TEST_F(LinkFileTest, AnEmptyPathMakesNoLink) {
  LinkFile link("");
  EXPECT_TRUE(link.PointTo("/dev/pts/1").ok());
  link.Remove();
  EXPECT_TRUE(fs::is_empty(folder_.Path()));
}

}  // namespace
}  // namespace tesksim
