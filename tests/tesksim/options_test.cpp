// SPDX-License-Identifier: MIT

#include "tools/tesksim/options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tesksim {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string Parse(const std::vector<const char*>& arguments, Options* options) {
  return ParseOptions(arguments, options);
}

TEST(Options, Defaults) {
  Options options;
  EXPECT_EQ(Parse({}, &options), "");
  EXPECT_EQ(options.channels, std::nullopt);
  EXPECT_EQ(options.stations, std::nullopt);
  EXPECT_EQ(options.labels, std::nullopt);
  EXPECT_THAT(options.stateFile, IsEmpty());
  EXPECT_THAT(options.databaseFile, IsEmpty());
  EXPECT_THAT(options.spoiled, IsEmpty());
  EXPECT_EQ(options.simulator.baud, 57600);
  EXPECT_EQ(options.simulator.seed, 1u);
  EXPECT_FALSE(options.simulator.demo);
  EXPECT_FALSE(options.log);
  EXPECT_FALSE(options.silence);
  EXPECT_FALSE(options.help);
  EXPECT_THAT(options.link, IsEmpty());
  EXPECT_THAT(options.device, IsEmpty());
  EXPECT_THAT(options.faults, IsEmpty());
}

TEST(Options, All) {
  Options options;
  EXPECT_EQ(Parse({"--channels",
                   "256",
                   "--baud=0",
                   "--seed",
                   "9",
                   "--link",
                   "/tmp/a b",
                   "--demo",
                   "--log",
                   "--silence",
                   "--help",
                   "--noise",
                   "5",
                   "--delay=20",
                   "--stations",
                   "1",
                   "--labels=256",
                   "--state",
                   "kept",
                   "--database=Tesk.mdb",
                   "--spoil",
                   "relays:3:checksum",
                   "--spoil=optos:drop"},
                  &options),
            "");
  EXPECT_EQ(options.channels, 256);
  EXPECT_EQ(options.stations, 1);
  EXPECT_EQ(options.labels, 256);
  EXPECT_EQ(options.stateFile, "kept");
  EXPECT_EQ(options.databaseFile, "Tesk.mdb");
  ASSERT_EQ(options.spoiled.size(), 2u);
  EXPECT_EQ(options.spoiled[0].message, (TableMessage{0xF4, 3}));
  EXPECT_EQ(options.spoiled[0].harm, Harm::Checksum);
  EXPECT_EQ(options.spoiled[1].message, (TableMessage{0xE1, 0}));
  EXPECT_EQ(options.spoiled[1].harm, Harm::Drop);
  EXPECT_EQ(options.simulator.baud, 0);
  EXPECT_EQ(options.simulator.seed, 9u);
  EXPECT_TRUE(options.simulator.demo);
  EXPECT_EQ(options.link, "/tmp/a b");
  EXPECT_TRUE(options.log && options.silence && options.help);
  ASSERT_EQ(options.faults.size(), 2u);
  EXPECT_EQ(options.faults[0].first->name, "noise");
  EXPECT_EQ(options.faults[0].second, 5);
  EXPECT_EQ(options.faults[1].first->name, "delay");
  EXPECT_EQ(options.faults[1].second, 20);
}

TEST(Options, Device) {
  Options options;
  EXPECT_EQ(Parse({"--device=/dev/ttyUSB0"}, &options), "");
  EXPECT_EQ(options.device, "/dev/ttyUSB0");
}

struct WrongLine {
  std::vector<const char*> arguments;
  const char* complaint;
};

TEST(Options, WrongOnesAreNamed) {
  const WrongLine cases[] = {
      {{"channels"}, "what is \"channels\"?"},
      {{"-h"}, "what is \"-h\"?"},
      {{"--"}, "unknown option --"},
      {{"--chanels", "8"}, "unknown option --chanels"},
      {{"--channels"}, "--channels needs a value"},
      {{"--channels", "4"}, "--channels must be a multiple of 8 within 8..256"},
      {{"--channels", "12"}, "--channels must be a multiple of 8 within 8..256"},
      {{"--channels", "264"}, "--channels must be a multiple of 8 within 8..256"},
      {{"--channels", "8x"}, "--channels must be a multiple of 8 within 8..256"},
      {{"--baud", "110"}, "--baud must be 0 or 300..4000000"},
      {{"--baud", "-1"}, "--baud must be 0 or 300..4000000"},
      {{"--seed", ""}, "--seed must be a number from 0"},
      {{"--stations", "0"}, "--stations must be 1..256"},
      {{"--stations", "257"}, "--stations must be 1..256"},
      {{"--labels", "0"}, "--labels must be 1..256"},
      {{"--labels", "300"}, "--labels must be 1..256"},
      {{"--state", ""}, "--state must be a path"},
      {{"--database", ""}, "--database must be a path"},
      {{"--spoil", "relays:checksum"}, "--spoil must be MESSAGE:N:HARM, as in relays:3:checksum"},
      {{"--spoil", ""}, "--spoil must be MESSAGE:N:HARM, as in relays:3:checksum"},
      {{"--link", ""}, "--link must be a path"},
      {{"--device="}, "--device must be a path"},
      {{"--log=on"}, "--log takes no value"},
      {{"--noise", "5001"}, "--noise must be 0..5000"},
      {{"--delay", "soon"}, "--delay must be 0..60000"},
      {{"--link", "a", "--device", "b"}, "--link names a pseudo terminal, and --device uses none"},
  };
  for (const WrongLine& wrong : cases) {
    SCOPED_TRACE(wrong.complaint);
    Options options;
    EXPECT_EQ(Parse(wrong.arguments, &options), wrong.complaint);
  }
}

TEST(Options, HelpNamesEveryOptionAndFault) {
  const std::string help = HelpText();
  for (const char* option :
       {"channels", "stations",    "labels",       "state",      "database",  "spoil",
        "baud",     "link",        "device",       "seed",       "demo",      "log",
        "silence",  "help",        "noise",        "data-noise", "gap-noise", "bad-checksum",
        "cut",      "missing-end", "unknown-code", "delay"}) {
    EXPECT_THAT(help, HasSubstr("  --" + std::string(option)));
  }
  std::size_t longest = 0;
  for (std::size_t start = 0, end = 0; (end = help.find('\n', start)) != help.npos;
       start = end + 1) {
    longest = std::max(longest, end - start);
  }
  EXPECT_LE(longest, 100u);
}

}  // namespace
}  // namespace tesksim
