// SPDX-License-Identifier: MIT

#include "tools/tesksim/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tesksim/simulated_line.h"

namespace tesksim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using test::Hex;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kRow1[] = "F3 00 00 00 00 00 00 00 00 00 FF";

class FaultsTest : public testing::Test {
 protected:
  // The row of output 1, sent once more.
  std::string Row() {
    line_.simulator.SendRow(1);
    return line_.Answer();
  }

  SimulatedLine line_{{.channels = 16}};
};

TEST_F(FaultsTest, BadChecksumInEveryThirdMessage) {
  line_.SetFault("bad-checksum", 3);
  for (int round = 0; round < 20; ++round) {
    EXPECT_EQ(Row(), kRow1);
    EXPECT_EQ(Row(), kRow1);
    const std::string bad = Row();
    EXPECT_EQ(bad.substr(0, 27), "F3 00 00 00 00 00 00 00 00 ");
    EXPECT_NE(bad.substr(27, 2), "00");
    EXPECT_LT(std::stoi(bad.substr(27, 2), nullptr, 16), 128);
    EXPECT_EQ(bad.substr(29), " FF");
  }
  EXPECT_EQ(line_.log[2], "tx row output 1 status 0 sources none (bad checksum)");
}

TEST_F(FaultsTest, CutInEverySecondMessage) {
  line_.SetFault("cut", 2);
  for (int round = 0; round < 50; ++round) {
    EXPECT_EQ(Row(), kRow1);
    const std::string cut = Row();
    EXPECT_GE(cut.size(), 2u);
    EXPECT_LE(cut.size(), 26u);  // nine of eleven bytes
    EXPECT_EQ(cut, std::string(kRow1).substr(0, cut.size()));
  }
  EXPECT_EQ(line_.log[1], "tx row output 1 status 0 sources none (cut)");
}

TEST_F(FaultsTest, MissingEndByte) {
  line_.SetFault("missing-end", 1);
  EXPECT_EQ(Row(), "F3 00 00 00 00 00 00 00 00 00");
  EXPECT_EQ(Row(), "F3 00 00 00 00 00 00 00 00 00");
  EXPECT_EQ(line_.log[0], "tx row output 1 status 0 sources none (no end byte)");
}

TEST_F(FaultsTest, UnknownCode) {
  line_.SetFault("unknown-code", 2);
  EXPECT_EQ(Row(), kRow1);
  EXPECT_EQ(Row(), "E0 00 00 00 00 00 00 00 00 00 FF");
  EXPECT_EQ(line_.log[1], "tx row output 1 status 0 sources none (unknown code)");
}

TEST_F(FaultsTest, AFaultIsSwitchedOffByZero) {
  line_.SetFault("missing-end", 1);
  EXPECT_NE(Row(), kRow1);
  line_.SetFault("missing-end", 0);
  EXPECT_EQ(Row(), kRow1);
}

TEST_F(FaultsTest, TwoFaultsInOneMessage) {
  line_.SetFault("unknown-code", 1);
  line_.SetFault("missing-end", 1);
  EXPECT_EQ(Row(), "E0 00 00 00 00 00 00 00 00 00");
}

TEST_F(FaultsTest, LinkAnswersAndRawBytesAreNotHarmed) {
  line_.SetFault("cut", 1);
  line_.SetFault("bad-checksum", 1);
  EXPECT_EQ(line_.Ask("ED"), "EB");
  line_.simulator.SendRaw({0x01, 0x02});
  EXPECT_EQ(line_.Answer(), "01 02");
}

TEST_F(FaultsTest, AMapOfCutMessagesStillComesToItsEnd) {
  line_.SetFault("cut", 1);
  EXPECT_THAT(line_.Ask("E5"), testing::Not(testing::IsEmpty()));
  EXPECT_EQ(line_.log.size(), 1u + 16 + 1);
  EXPECT_EQ(line_.log.back(), "tx gains (cut)");
}

TEST_F(FaultsTest, NoiseComesAtItsRateAndIsOfAllBytes) {
  line_.SetFault("noise", 100);
  const Bytes noise = line_.Run(seconds(100));
  EXPECT_NEAR(static_cast<double>(noise.size()), 10000.0, 400.0);
  int high = 0;
  for (const std::uint8_t byte : noise) high += byte >= 0x80 ? 1 : 0;
  EXPECT_NEAR(high, 5000, 400);
}

TEST_F(FaultsTest, DataNoiseHasNoHighBytes) {
  line_.SetFault("data-noise", 100);
  const Bytes noise = line_.Run(seconds(10));
  EXPECT_NEAR(static_cast<double>(noise.size()), 1000.0, 150.0);
  for (const std::uint8_t byte : noise) ASSERT_LT(byte, 0x80);
}

TEST_F(FaultsTest, NoiseGetsIntoMessagesAndAddsToThem) {
  line_.SetFault("data-noise", 1000);
  line_.simulator.SendTally();
  const Bytes received = line_.Run(milliseconds(100));
  const auto start = std::find(received.begin(), received.end(), 0xE4);
  const auto end = std::find(start, received.end(), 0xFF);
  ASSERT_NE(end, received.end());
  EXPECT_GT(end - start + 1, 131);
}

TEST_F(FaultsTest, GapNoiseKeepsOutOfMessages) {
  line_.SetFault("gap-noise", 1000);
  line_.simulator.SendTally();
  line_.simulator.SendTally();
  const Bytes received = line_.Run(seconds(1));
  EXPECT_GT(received.size(), 2u * 131 + 500);
  auto from = received.begin();
  for (int tally = 0; tally < 2; ++tally) {
    const auto start = std::find(from, received.end(), 0xE4);
    const auto end = std::find(start, received.end(), 0xFF);
    ASSERT_NE(end, received.end());
    EXPECT_EQ(end - start + 1, 131);
    from = end + 1;
  }
  const auto high = [](std::uint8_t byte) { return byte >= 0x80; };
  EXPECT_EQ(std::count_if(received.begin(), received.end(), high), 4);
}

TEST_F(FaultsTest, NoiseStopsWhenItIsSwitchedOff) {
  line_.SetFault("noise", 1000);
  EXPECT_FALSE(line_.Run(seconds(1)).empty());
  line_.SetFault("noise", 0);
  line_.Run(seconds(1));
  EXPECT_TRUE(line_.Run(seconds(100)).empty());
}

TEST_F(FaultsTest, NoiseIsPacedLikeEverythingElse) {
  SimulatedLine slow({.channels = 16}, {.baud = 300});
  slow.SetFault("noise", 5000);
  EXPECT_EQ(slow.Run(seconds(10)).size(), 299u);  // 30 a second from the first one on
}

TEST_F(FaultsTest, TheSameSeedMakesTheSameFaults) {
  const auto run = [](std::uint32_t seed) {
    SimulatedLine line({.channels = 16}, {.seed = seed});
    line.SetFault("noise", 50);
    line.SetFault("cut", 2);
    line.SetFault("bad-checksum", 3);
    return line.Ask("E5");
  };
  EXPECT_EQ(run(5), run(5));
  EXPECT_NE(run(5), run(6));
}

TEST_F(FaultsTest, DelayedAnswersComeLateAndInOrder) {
  line_.SetFault("delay", 250);
  line_.Send("FD 02 00 07 00 05 00 0E FF ED");
  EXPECT_EQ(Hex(line_.Run(milliseconds(250))), "");
  EXPECT_EQ(Hex(line_.Run(milliseconds(3))), "EB F3 05 00 00 00 00 01 00 00 05 FF");
  line_.Send("ED");
  line_.Run(milliseconds(100));
  line_.SetFault("delay", 0);
  line_.Send("E5");
  EXPECT_EQ(Hex(line_.Run(milliseconds(149))), "");  // not before the keep-alive
  EXPECT_THAT(line_.Answer(), testing::StartsWith("EB F3 00 00"));
}

TEST_F(FaultsTest, DelayedRequestsAreLostWithTheLine) {
  line_.SetFault("delay", 250);
  line_.Send("ED");
  line_.simulator.DropLine();
  EXPECT_EQ(line_.Answer(), "");
}

}  // namespace
}  // namespace tesksim
