// SPDX-License-Identifier: MIT

#include "tools/tesksim/demo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tesksim/simulated_line.h"

namespace tesksim {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

int Made(const SwitcherState& state) {
  int made = 0;
  for (int output = 1; output <= state.ChannelCount(); ++output) {
    for (const Crosspoint crosspoint : state.crosspoints.Row(output)) {
      made += crosspoint != Crosspoint::Off ? 1 : 0;
    }
  }
  return made;
}

TEST(Demo, BeginsWithABelievableState) {
  for (std::uint32_t seed = 0; seed < 50; ++seed) {
    SwitcherState state({.channels = 64});
    Demo(seed).Fill(state);
    EXPECT_GE(Made(state), 16);
    EXPECT_LE(Made(state), 96);
    EXPECT_EQ(std::count(state.tally.begin(), state.tally.end(), 0), 2);
    for (const std::int16_t gain : state.gains) {
      EXPECT_GE(gain, 92);
      EXPECT_LE(gain, 106);
    }
    for (int channel = 1; channel <= 64; ++channel) {
      EXPECT_EQ(state.crosspoints.At(channel, channel), Crosspoint::Off);
    }
  }
}

TEST(Demo, ChangesNothingThatIsInhibited) {
  SwitcherState state({.channels = 8});
  for (int output = 1; output <= 8; ++output) {
    for (int input = 1; input <= 8; ++input) state.inhibits.At(output, input) = 1;
  }
  Demo demo(1);
  for (int i = 0; i < 100; ++i) EXPECT_EQ(demo.Change(state), std::nullopt);
  EXPECT_EQ(Made(state), 0);
}

TEST(Demo, SaysNothingBeforeItIsPolled) {
  SimulatedLine line({.channels = 16}, {.demo = true});
  EXPECT_TRUE(line.Run(seconds(60)).empty());
}

TEST(Demo, SaysNothingToANewConsoleBeforeThatHasPolled) {
  SimulatedLine line({.channels = 16}, {.demo = true});
  line.Send("E5");
  line.Run(seconds(10));
  line.simulator.DropLine();
  EXPECT_TRUE(line.Run(seconds(60)).empty());
}

TEST(Demo, ReportsAChangedRowEveryFewSeconds) {
  SimulatedLine line({.channels = 16}, {.demo = true});
  line.Send("E5");
  EXPECT_EQ(line.Run(seconds(1)).size(), 16u * 11 + 19);
  const std::size_t bytes = line.Run(seconds(600)).size();
  EXPECT_EQ(bytes % 11, 0u);
  EXPECT_GE(bytes / 11, 100u);  // every six seconds
  EXPECT_LE(bytes / 11, 300u);  // every two
}

TEST(Demo, ASilentSwitcherReportsNoChange) {
  SimulatedLine line({.channels = 16}, {.demo = true});
  line.simulator.SetSilence(true);
  line.Send("E5");
  EXPECT_TRUE(line.Run(seconds(60)).empty());
}

TEST(Demo, TheSameSeedMakesTheSameDay) {
  const auto run = [](std::uint32_t seed) {
    SimulatedLine line({.channels = 16}, {.seed = seed, .demo = true});
    line.Send("E5");
    return test::Hex(line.Run(seconds(100)));
  };
  EXPECT_EQ(run(3), run(3));
  EXPECT_NE(run(3), run(4));
}

}  // namespace
}  // namespace tesksim
