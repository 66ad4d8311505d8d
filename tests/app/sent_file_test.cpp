// SPDX-License-Identifier: MIT

#include "app/kept/sent_file.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <string>

#include "files/whole_file.h"
#include "tests/support/temporary_folder.h"

namespace app {
namespace {

using switcher::HeldMessage;
using switcher::Table;

class SentFileTest : public testing::Test {
 protected:
  std::string Content() {
    std::string text;
    (void)files::ReadWhole(path_, 1000, &text);
    return text;
  }

  test::TemporaryFolder folder_;
  std::filesystem::path path_ = folder_ / "Tesk.sent";
  switcher::HeldMessages messages_;
  SentFile file_{path_, messages_};
};

constexpr char kLine[] = "inhibits 3 held 0000000000000007 -\n";

TEST_F(SentFileTest, WithoutAFileNothingIsKnownAndNothingIsMade) {
  EXPECT_TRUE(file_.Read().empty());
  file_.Finish();
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(SentFileTest, WhatChangesIsWrittenSoonAndNotAtOnce) {
  QSignalSpy written(&file_, &SentFile::Written);
  messages_[{Table::Inhibits, 3}] = {HeldMessage::State::Held, 7, {}};
  file_.Update();
  file_.Update();
  EXPECT_FALSE(std::filesystem::exists(path_)) << "not in the handler";
  ASSERT_TRUE(written.wait(30000));
  EXPECT_EQ(Content(), kLine);
  SentFile again(path_, messages_);
  EXPECT_EQ(again.Read(), messages_);
}

TEST_F(SentFileTest, TheEndOfARunWaitsForNothing) {
  messages_[{Table::Inhibits, 3}] = {HeldMessage::State::Held, 7, {}};
  file_.Update();
  file_.Finish();
  EXPECT_EQ(Content(), kLine);
}

TEST_F(SentFileTest, AFileThatCannotBeWrittenIsToldAndTriedAgain) {
  std::filesystem::create_directory(path_);
  EXPECT_TRUE(file_.Read().empty());
  QSignalSpy failed(&file_, &SentFile::Failed);
  QSignalSpy written(&file_, &SentFile::Written);
  messages_[{Table::Inhibits, 3}] = {HeldMessage::State::Held, 7, {}};
  file_.Update();
  ASSERT_TRUE(failed.wait(30000));
  EXPECT_TRUE(failed[0][0].toString().contains(QStringLiteral("Tesk.sent")));
  std::filesystem::remove(path_);
  file_.Update();
  ASSERT_TRUE(written.wait(30000));
  EXPECT_EQ(Content(), kLine);
}

TEST_F(SentFileTest, WhatFailsAgainIsToldOnce) {
  std::filesystem::create_directory(path_);
  QSignalSpy failed(&file_, &SentFile::Failed);
  QSignalSpy written(&file_, &SentFile::Written);
  messages_[{Table::Inhibits, 3}] = {HeldMessage::State::Held, 7, {}};
  for (int times = 0; times < 3; ++times) file_.Finish();
  EXPECT_EQ(failed.size(), 1);
  std::filesystem::remove(path_);
  file_.Finish();
  EXPECT_EQ(written.size(), 1);
  std::filesystem::remove(path_);
  std::filesystem::create_directory(path_);
  messages_.clear();
  file_.Finish();
  EXPECT_EQ(failed.size(), 2) << "a failure of its own";
  messages_[{Table::Inhibits, 3}] = {HeldMessage::State::Held, 7, {}};
  file_.Finish();
  EXPECT_EQ(written.size(), 2) << "nothing is to be written any more";
}

TEST_F(SentFileTest, ADamagedFileIsReadAsFarAsItGoes) {
  ASSERT_TRUE(files::Replace(path_, std::string("\0\xFF rubbish\n", 11) + kLine).ok());
  switcher::HeldMessages read = file_.Read();
  ASSERT_EQ(read.size(), 1U);
  EXPECT_EQ(read.begin()->second.digest, 7U);
}

}  // namespace
}  // namespace app
