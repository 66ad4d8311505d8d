// SPDX-License-Identifier: MIT

#include "app/log/log_file.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <atomic>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/another_user.h"
#include "tests/support/full_disk.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"

namespace app {
namespace {

using Kind = EventLog::Kind;

QDateTime LoggedAt(int second) { return {QDate(2026, 11, 21), QTime(12, 3, second)}; }

class LogFileTest : public testing::Test {
 protected:
  std::filesystem::path Path() const { return folder_ / "Teskctl.log"; }
  // Everything was written when the object has gone.
  std::string Text() {
    file_.reset();
    return test::ReadFile(Path());
  }
  void AwaitHint(bool shown) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !hints_.isHidden() == shown; }, 60'000));
  }

  test::TemporaryFolder folder_;
  EventLog log_;
  HintStrip hints_;
  std::unique_ptr<LogFile> file_ = std::make_unique<LogFile>(Path(), log_, hints_);
};

TEST_F(LogFileTest, HasALineForEachOfTheLogInTheSameWords) {
  log_.Add(Kind::Panel, QStringLiteral("Panel 2, 192.0.2.7: take CAM 4 < MIC ANCH (Take)"),
           LoggedAt(1));
  log_.Add(Kind::Map, QStringLiteral("CAM 4: + MIC ANCH, − VISION"), LoggedAt(2));
  log_.Add(Kind::Report, QStringLiteral("Comm Error: line 1\r\rline 2"), LoggedAt(3));
  EXPECT_EQ(Text(),
            "2026-11-21 12:03:01.000\tPanel\tPanel 2, 192.0.2.7: take CAM 4 < MIC ANCH (Take)\n"
            "2026-11-21 12:03:02.000\tMap\tCAM 4: + MIC ANCH, − VISION\n"
            "2026-11-21 12:03:03.000\tReport\tComm Error: line 1 line 2\n");
}

TEST_F(LogFileTest, WithoutAnEventThereIsNoFile) { EXPECT_EQ(Text(), "(none)"); }

TEST_F(LogFileTest, GoesOnWhereTheLastRunEnded) {
  test::WriteFile(Path(), "before\n");
  log_.Add(Kind::Note, QStringLiteral("Database saved"), LoggedAt(1));
  EXPECT_EQ(Text(), "before\n2026-11-21 12:03:01.000\tNote\tDatabase saved\n");
}

TEST_F(LogFileTest, KeepsTheOldestLinesWhenTheWindowDoesNotAnyMore) {
  for (int line = 0; line < EventLog::kLimit + 3; ++line) {
    log_.Add(Kind::Note, QString::number(line), LoggedAt(1));
  }
  EXPECT_EQ(log_.rowCount(), EventLog::kLimit);
  EXPECT_EQ(Text().substr(0, 32), "2026-11-21 12:03:01.000\tNote\t0\n2");
}

TEST_F(LogFileTest, AFullDiskCostsAHintWhichGoesWithTheNextLine) {
  log_.Add(Kind::Note, QStringLiteral("one"), LoggedAt(1));
  file_ = nullptr;  // written
  file_ = std::make_unique<LogFile>(Path(), log_, hints_);
  QString hint;
  {
    const test::FullDisk full(std::filesystem::file_size(Path()) + 5);
    log_.Add(Kind::Note, QStringLiteral("two"), LoggedAt(2));
    AwaitHint(true);
    hint = test::Find<QWidget>(hints_, "aidHintText").toolTip();
  }
  EXPECT_EQ(hint.toStdString(),
            "The event log is not kept on disk: Cannot write Teskctl.log: File too large");
  log_.Add(Kind::Note, QStringLiteral("three"), LoggedAt(3));
  AwaitHint(false);
  EXPECT_EQ(Text(),
            "2026-11-21 12:03:01.000\tNote\tone\nLines missing here: 1\n2026-11-21 "
            "12:03:03.000\tNote\tthree\n");
}

TEST_F(LogFileTest, AFolderThatMayNotBeWrittenCostsAHint) {
  const test::AnotherUser user;
  log_.Add(Kind::Note, QStringLiteral("one"), LoggedAt(1));
  AwaitHint(true);
  EXPECT_EQ(log_.rowCount(), 1);
  EXPECT_EQ(Text(), "(none)");
}

TEST_F(LogFileTest, WhatADiskIsTooSlowForIsCounted) {
  std::promise<void> begun;
  std::promise<void> answer;
  const std::shared_future<void> answered = answer.get_future().share();
  std::atomic<std::size_t> count = 0;
  std::vector<std::string> written;
  file_ = std::make_unique<LogFile>(
      [&](std::string_view line) {
        if (written.empty()) begun.set_value();
        answered.wait();
        written.emplace_back(line.substr(line.rfind('\t') + 1));
        ++count;
        return files::Outcome();
      },
      log_, hints_);
  log_.Add(Kind::Note, QStringLiteral("first"));
  begun.get_future().wait();
  constexpr std::size_t kWaiting = files::BackgroundLines::kWaiting;
  for (std::size_t line = 0; line < kWaiting + 3; ++line) {
    log_.Add(Kind::Note, QStringLiteral("waits"));
  }
  EXPECT_EQ(test::Find<QWidget>(hints_, "aidHintText").toolTip().toStdString(),
            "The event log is not kept on disk: the disk does not answer");
  answer.set_value();
  ASSERT_TRUE(QTest::qWaitFor([&] { return count == kWaiting + 1; }, 60'000));
  log_.Add(Kind::Note, QStringLiteral("last"));
  EXPECT_TRUE(hints_.isHidden());
  file_.reset();
  ASSERT_EQ(written.size(), kWaiting + 3);
  EXPECT_EQ(written[kWaiting], "waits");
  EXPECT_EQ(written[kWaiting + 1], "Lines missing here: 3");
  EXPECT_EQ(written[kWaiting + 2], "last");
}

}  // namespace
}  // namespace app
