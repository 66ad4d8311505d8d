// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_DOWNLOAD_SYSTEM_H_
#define TESTS_SUPPORT_DOWNLOAD_SYSTEM_H_

#include <gtest/gtest.h>

#include "db/database_files.h"
#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/temporary_folder.h"

namespace test {

// The table senders of 16 channels and two stations, so that all of it fits into one look, between
// a new database and an open line.
class DownloadSystem : public testing::Test {
 protected:
  DownloadSystem() {
    model_.ApplyFixedValues();
    model_.ChannelCount = 16;
    model_.StationCount = 2;
    model_.LabelCount = 16;
  }

  void SetUp() override {
    ASSERT_TRUE(port_.Open(1).ok());
    ASSERT_TRUE(files_.Open().ok());
  }

  model::SystemModel model_;
  TemporaryFolder folder_;
  db::DatabaseFiles files_{folder_ / "Tesk.mdb", folder_ / "WorkingDb.md$"};
  FakeSerialPort port_;
  RecordingReporter reporter_;
  switcher::TableSenders senders_{
      {.model = model_, .files = files_, .port = port_, .reporter = reporter_}};
};

}  // namespace test

#endif  // TESTS_SUPPORT_DOWNLOAD_SYSTEM_H_
