// SPDX-License-Identifier: MIT

#include "files/line_file.h"

#include <gtest/gtest.h>

#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"

namespace files {
namespace {

class LineFileTest : public testing::Test {
 protected:
  std::string Text() const { return test::ReadFile(file_.Path()); }

  test::TemporaryFolder folder_;
  LineFile file_{folder_ / "lines"};
};

TEST_F(LineFileTest, WithoutALineThereIsNoFile) {
  EXPECT_FALSE(file_.IsOpen());
  EXPECT_EQ(Text(), "(none)");
}

TEST_F(LineFileTest, LinesAreAddedToWhatIsThere) {
  test::WriteFile(file_.Path(), "before\n");
  ASSERT_TRUE(file_.Append("one\ntwo\n").ok());
  ASSERT_TRUE(file_.Append("three\n").ok());
  EXPECT_EQ(Text(), "before\none\ntwo\nthree\n");
  EXPECT_EQ(file_.Size(), 21u);
}

TEST_F(LineFileTest, ATornEndIsALineOfItsOwn) {
  test::WriteFile(file_.Path(), "bef");
  ASSERT_TRUE(file_.Append("one\n").ok());
  ASSERT_TRUE(file_.Append("two\n").ok());
  EXPECT_EQ(Text(), "bef\none\ntwo\n");
}

TEST_F(LineFileTest, AFullDiskCostsTheLineOnly) {
  ASSERT_TRUE(file_.Append("one\n").ok());
  {
    const test::FullDisk full(6);
    const Outcome outcome = file_.Append("two\n");
    EXPECT_EQ(outcome.error, std::errc::file_too_large);
    EXPECT_NE(outcome.text.find("Cannot write"), std::string::npos) << outcome.text;
    EXPECT_EQ(file_.Size(), 4u);
  }
  EXPECT_EQ(Text(), "one\n");
  ASSERT_TRUE(file_.Append("three\n").ok());
  EXPECT_EQ(Text(), "one\nthree\n");
}

TEST_F(LineFileTest, ADeletedFileIsMadeAnewWithTheNextLine) {
  ASSERT_TRUE(file_.Append("one\n").ok());
  std::filesystem::remove(file_.Path());
  ASSERT_TRUE(file_.Append("two\n").ok());
  EXPECT_EQ(Text(), "two\n");
  EXPECT_EQ(file_.Size(), 4u);
}

TEST_F(LineFileTest, LinesGoIntoTheFileThatHasTheNameNow) {
  ASSERT_TRUE(file_.Append("one\n").ok());
  test::WriteFile(folder_ / "other", "torn");
  std::filesystem::rename(folder_ / "other", file_.Path());
  ASSERT_TRUE(file_.Append("two\n").ok());
  EXPECT_EQ(Text(), "torn\ntwo\n");
}

TEST_F(LineFileTest, WhereItCannotBeMadeEveryLineSaysSo) {
  LineFile file(folder_ / "gone" / "lines");
  EXPECT_FALSE(file.Append("one\n").ok());
  EXPECT_FALSE(file.IsOpen());
  std::filesystem::create_directory(folder_ / "gone");
  EXPECT_TRUE(file.Append("two\n").ok());
  EXPECT_EQ(test::ReadFile(file.Path()), "two\n");
}

TEST_F(LineFileTest, ClosedItIsOpenedForTheNextLine) {
  ASSERT_TRUE(file_.Append("one\n").ok());
  const std::shared_ptr<File> kept = file_.Opened();
  file_.Close();
  EXPECT_EQ(file_.Opened(), nullptr);
  EXPECT_TRUE(kept->IsOpen());
  std::filesystem::remove(file_.Path());
  ASSERT_TRUE(file_.Append("two\n").ok());
  EXPECT_EQ(Text(), "two\n");
}

}  // namespace
}  // namespace files
