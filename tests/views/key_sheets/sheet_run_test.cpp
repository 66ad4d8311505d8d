// SPDX-License-Identifier: MIT

#include "views/key_sheets/sheet_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "tests/views/key_sheets/recording_pages.h"
#include "tests/views/view_console.h"

namespace views {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class SheetRunTest : public testing::Test {
 protected:
  // Draws until a signal tells the end.
  void Draw(std::vector<int> stations, int failsAt = 0) {
    run_ = std::make_unique<SheetRun>(console_.Services(), std::move(stations),
                                      std::make_shared<test::RecordingPages>(drawn_, failsAt));
    done_ = std::make_unique<QSignalSpy>(run_.get(), &SheetRun::Done);
    failed_ = std::make_unique<QSignalSpy>(run_.get(), &SheetRun::DeviceFailed);
    unread_ = std::make_unique<QSignalSpy>(run_.get(), &SheetRun::ReadFailed);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return done_->count() + failed_->count() + unread_->count() > 0; }, 60'000));
  }

  // What stands at the heads of the pages.
  std::vector<std::string> Heads() const {
    std::vector<std::string> heads;
    for (const auto& page : drawn_.pages) heads.push_back(page.empty() ? "" : page.front());
    return heads;
  }

  test::ViewConsole console_{64};
  test::Drawn drawn_;
  std::unique_ptr<SheetRun> run_;
  std::unique_ptr<QSignalSpy> done_;
  std::unique_ptr<QSignalSpy> failed_;
  std::unique_ptr<QSignalSpy> unread_;
};

TEST_F(SheetRunTest, DrawsAPageForEachStation) {
  Draw({30, 31});
  EXPECT_THAT(Heads(), ElementsAre(StartsWith("30  Sta. 030"), StartsWith("31  Sta. 031")));
  EXPECT_EQ(run_->DoneCount(), 2);
  EXPECT_EQ(run_->PageCount(), 2);
  EXPECT_TRUE(drawn_.isEnded);
}

TEST_F(SheetRunTest, AStationWithoutARecordMakesNoPage) {
  ASSERT_TRUE(console_.stations->Seek(2).ok());
  ASSERT_TRUE(console_.stations->Delete().ok());
  Draw({1, 2, 3});
  EXPECT_THAT(*done_, SizeIs(1));
  EXPECT_THAT(Heads(), ElementsAre(StartsWith("1  "), StartsWith("3  ")));
  EXPECT_EQ(run_->DoneCount(), 3);
  EXPECT_EQ(run_->PageCount(), 2);
}

TEST_F(SheetRunTest, ADocumentThatFailsEndsIt) {
  Draw({1, 2, 3, 4}, 3);
  EXPECT_THAT(*failed_, SizeIs(1));
  EXPECT_THAT(drawn_.pages, SizeIs(2));
  EXPECT_EQ(run_->PageCount(), 2);
}

TEST_F(SheetRunTest, WithoutADatabaseItSaysSo) {
  console_.databaseIsOpen = false;
  Draw({1});
  EXPECT_THAT(*unread_, SizeIs(1));
  EXPECT_THAT(*done_, IsEmpty());
}

}  // namespace
}  // namespace views
