// SPDX-License-Identifier: MIT

#ifndef TESTS_SWITCHER_SENDERS_FIXTURE_H_
#define TESTS_SWITCHER_SENDERS_FIXTURE_H_

#include <gtest/gtest.h>

#include <string>

#include "switcher/table_senders.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace switcher {

// The table senders between a database of few stations and an open line.
class SendersTest : public testing::Test {
 protected:
  explicit SendersTest(const jet::TableSpec& stations = db::StationsSpec()) : database_(stations) {
    model_.ChannelCount = 16;
    model_.StationCount = 16;
    model_.ApplyFixedValues();
  }

  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  // Sends this to its end and counts the values.  Returns whether nothing failed.
  bool Send(Table table, int station = model::kAll) {
    Transmission transmission = senders_.Make({.table = table, .station = station});
    while (transmission.Step([this] { ++values_; })) continue;
    return !transmission.Failed();
  }

  // What a failure shows.
  static std::string Failure(const std::string& line, const std::string& error) {
    return "critical|Serial Communications Error|" + line + "\r\rError # " + error;
  }

  model::SystemModel model_;
  test::SmallDatabase database_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  TableSenders senders_{
      {.model = model_, .files = database_.Files(), .port = port_, .reporter = reporter_}};
  int values_ = 0;  // told as progress
};

}  // namespace switcher

#endif  // TESTS_SWITCHER_SENDERS_FIXTURE_H_
