// SPDX-License-Identifier: MIT

#include "switcher/live_commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "switcher/wire/message_table.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/hex.h"
#include "tests/support/recording_reporter.h"

namespace switcher {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LiveCommandsTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(port_.Open(1).ok()); }

  model::SystemModel model_;
  test::FakeSerialPort port_;
  test::RecordingReporter reporter_;
  LiveCommands commands_{{.model = model_, .port = port_, .reporter = reporter_}};
};

TEST_F(LiveCommandsTest, TakeIsWrittenAndTheSendEventArmed) {
  EXPECT_TRUE(commands_.SendTake(200, 130, 0x86));
  EXPECT_EQ(port_.TakeWritten(), "FD 06 01 01 01 47 01 4E FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_THAT(reporter_.reports, IsEmpty());
}

TEST_F(LiveCommandsTest, GainIsWrittenAndTheSendEventArmed) {
  EXPECT_TRUE(commands_.SendGain(5, 100));
  EXPECT_EQ(port_.TakeWritten(), "E3 05 64 69 FF");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
}

TEST_F(LiveCommandsTest, FailedTakeIsReportedAndBusyUntilTheLineHasDrained) {
  port_.writesUntilFailure = 3;
  EXPECT_FALSE(commands_.SendTake(1, 1, 0x02));
  EXPECT_EQ(port_.TakeWritten(), "FD 02 00");
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 1);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Serial Communications Error|Error Sending Take Command"
                          "\r\rError # 8020 - The line takes no bytes"));
}

TEST_F(LiveCommandsTest, EveryCommandOfTheLineHasAnOperation) {
  std::set<std::uint8_t> codes;
  EXPECT_TRUE(commands_.SendTake(1, 1, 0x02));
  codes.insert(test::FromHex(port_.TakeWritten()).front());
  EXPECT_TRUE(commands_.SendGain(0, 1));
  codes.insert(test::FromHex(port_.TakeWritten()).front());
  for (const MessageKind& kind : kMessages) {
    EXPECT_EQ(codes.contains(kind.code), kind.use == MessageUse::Command) << kind.name;
  }
}

// There is no send event to come; what opens the port again ends the sending.
TEST_F(LiveCommandsTest, FailedGainOnAClosedPortIsReported) {
  port_.Close();
  EXPECT_FALSE(commands_.SendGain(0, 1));
  EXPECT_TRUE(model_.SendBusy);
  EXPECT_EQ(port_.sendThreshold, 0);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("critical|Serial Communications Error|Error Sending Gain Command"
                          "\r\rError # 8018 - The port is not open"));
}

class LockedCommandsTest : public LiveCommandsTest {
 protected:
  model::Locks locks_;
  LiveCommands operator_{{.model = model_, .port = port_, .reporter = reporter_}, &locks_};
};

TEST_F(LockedCommandsTest, ATakeOnALockedOutputIsRefusedWithTheReason) {
  locks_.LockOutput(6, model::Locks::Against::Console);
  EXPECT_FALSE(operator_.SendTake(6, 8, 0x03));
  EXPECT_EQ(port_.TakeWritten(), "");
  EXPECT_FALSE(model_.SendBusy);
  EXPECT_THAT(reporter_.reports,
              ElementsAre("exclamation|Control Error|Action Not Allowed On Locked Output"));
  EXPECT_TRUE(operator_.SendTake(8, 6, 0x03));
  EXPECT_EQ(port_.TakeWritten(), "FD 03 00 05 00 07 00 0F FF");
  EXPECT_TRUE(commands_.SendTake(6, 8, 0x03)) << "those whom the locks do not concern";
  EXPECT_EQ(port_.TakeWritten(), "FD 03 00 07 00 05 00 0F FF");
}

TEST_F(LockedCommandsTest, NothingIsSentWhileTheConsoleIsLocked) {
  locks_.LockConsole(true);
  EXPECT_FALSE(operator_.SendTake(6, 8, 0x03));
  EXPECT_FALSE(operator_.SendGain(5, 100));
  EXPECT_EQ(port_.TakeWritten(), "");
  constexpr char kRefused[] =
      "exclamation|Control Error|Action Not Allowed While Console Is Locked";
  EXPECT_THAT(reporter_.reports, ElementsAre(kRefused, kRefused));
  locks_.LockConsole(false);
  EXPECT_TRUE(operator_.SendGain(5, 100));
  EXPECT_EQ(port_.TakeWritten(), "E3 05 64 69 FF");
}

}  // namespace
}  // namespace switcher
