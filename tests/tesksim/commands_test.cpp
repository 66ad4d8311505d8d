// SPDX-License-Identifier: MIT

#include "tools/tesksim/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/tesksim/simulated_line.h"

namespace tesksim {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A terminal that is plugged in and out, and remembers what it was told.
struct FakeTerminal {
  TerminalControl Control() {
    return {.unplug = [this] { return Plug(false, "unplugged already"); },
            .replug = [this] { return Plug(true, "plugged in already"); },
            .where = [] { return "/dev/pts/99"; },
            .save = [this](const std::string& path) { return Save(path); },
            .quit = [this] { ended = true; }};
  }

  model::Status Plug(bool in, const char* already) {
    if (plugged == in) return {1, already};
    plugged = in;
    return {};
  }

  model::Status Save(const std::string& path) {
    if (path == "/nowhere") return {2, "cannot write /nowhere"};
    saved = path.empty() ? "the state file" : path;
    return {};
  }

  bool plugged = true;
  bool ended = false;
  std::string saved;
};

class CommandsTest : public testing::Test {
 protected:
  std::string Do(std::string_view command) { return commands_.Execute(command, line_.now); }

  SimulatedLine line_{{.channels = 16}};
  FakeTerminal terminal_;
  Commands commands_{line_.simulator, terminal_.Control()};
};

TEST_F(CommandsTest, MakeBreakAndRow) {
  EXPECT_EQ(Do("row 6"), "ok output 6 status 0 sources none");
  EXPECT_EQ(Do("make 6 8"), "ok output 6 status 0 sources 8");
  EXPECT_EQ(Do("make 6 12 priority"), "ok output 6 status 1 sources 8 12 priority 12");
  EXPECT_EQ(Do("row 6"), "ok output 6 status 1 sources 8 12 priority 12");
  EXPECT_EQ(Do("break 6 12"), "ok output 6 status 0 sources 8");
  EXPECT_EQ(line_.Answer(), "");
}

TEST_F(CommandsTest, SendRow) {
  Do("make 6 8");
  EXPECT_EQ(Do("send-row 6"), "ok");
  EXPECT_EQ(line_.Answer(), "F3 05 00 00 00 00 01 00 00 05 FF");
}

TEST_F(CommandsTest, Map) {
  Do("make 1 1");
  Do("make 1 2");
  Do("make 16 16 priority");
  EXPECT_EQ(Do("map"), "ok channels 16 crosspoints 3 priority 1 outputs-in-use 2");
}

TEST_F(CommandsTest, Tally) {
  EXPECT_EQ(Do("tally 1 1"), "ok");
  EXPECT_EQ(Do("tally 64 255"), "ok");
  EXPECT_EQ(line_.Answer(), "");
  EXPECT_EQ(Do("send-tally"), "ok");
  const std::string tally = line_.Answer();
  EXPECT_THAT(tally, StartsWith("E4 01 00 00"));
  EXPECT_THAT(tally, testing::EndsWith("00 7F 01 00 FF"));
}

TEST_F(CommandsTest, Gain) {
  EXPECT_EQ(Do("gain 2"), "ok input 2 step 64");
  EXPECT_EQ(Do("gain 2 100"), "ok input 2 step 100");
  EXPECT_EQ(Do("send-gains"), "ok");
  EXPECT_EQ(line_.Answer(), "E2 40 64 40 40 40 40 40 40 40 40 40 40 40 40 40 40 24 FF");
}

TEST_F(CommandsTest, Inhibit) {
  EXPECT_EQ(Do("inhibits 3"), "ok output 3 inhibits 3");  // from itself, as it begins
  EXPECT_EQ(Do("inhibits 3 none"), "ok output 3 inhibits none");
  EXPECT_EQ(Do("inhibit 3 1 on"), "ok output 3 inhibits 1");
  EXPECT_EQ(Do("inhibit 3 8 on"), "ok output 3 inhibits 1 8");
  EXPECT_EQ(Do("inhibit 3 1 off"), "ok output 3 inhibits 8");
  EXPECT_EQ(Do("inhibits 3 16 8"), "ok output 3 inhibits 8 16");
  // A take is refused, the command is not.
  EXPECT_EQ(line_.Ask("FD 02 00 07 00 02 00 0B FF"), "F3 02 00 00 00 00 00 00 00 02 FF");
  EXPECT_EQ(Do("make 3 8"), "ok output 3 status 0 sources 8");
}

TEST_F(CommandsTest, Label) {
  EXPECT_EQ(Do("label out 1"), "ok out 1 \"Sta. 001\"");
  EXPECT_EQ(Do("label in 128"), "ok in 128 \"{npt 064\" hidden");
  EXPECT_EQ(Do("label out 1 MIC"), "ok out 1 \"MIC     \"");
  EXPECT_EQ(Do("label out 1 {IC  2"), "ok out 1 \"{IC  2  \" hidden");
  EXPECT_EQ(Do("label in 1 \" A  B \""), "ok in 1 \" A  B   \"");
  EXPECT_EQ(Do("label in 1 \"\""), "ok in 1 \"        \"");
  EXPECT_EQ(Do("label in 2 \\xFF\\xe9\\\\\\\"xff"), "ok in 2 \"\\xFF\\xE9\\\\\\\"xff \"");
  EXPECT_EQ(line_.simulator.State().inLabels[2], "\xFF\xE9\\\"xff ");
  EXPECT_EQ(Do("label out 1"), "ok out 1 \"{IC  2  \" hidden");
}

TEST_F(CommandsTest, Relays) {
  EXPECT_EQ(Do("relays 16"), "ok output 16 relays none");
  EXPECT_EQ(Do("relay 16 64 on"), "ok output 16 relays 64");
  EXPECT_EQ(Do("relay 16 1 on"), "ok output 16 relays 1 64");
  EXPECT_EQ(Do("relay 16 64 off"), "ok output 16 relays 1");
  EXPECT_EQ(Do("relays 16 9 8 9"), "ok output 16 relays 8 9");
  EXPECT_EQ(Do("relays 16 none"), "ok output 16 relays none");
}

TEST_F(CommandsTest, Button) {
  EXPECT_EQ(Do("button 64 32"), "ok station 64 button 32 type 0 first 32 members 32");
  EXPECT_EQ(Do("button 64 32 255 7 7 256"),
            "ok station 64 button 32 type 255 first 7 members 7 256");
  EXPECT_EQ(Do("button 64 32 1 2 none"), "ok station 64 button 32 type 1 first 2 members none");
  EXPECT_EQ(Do("button 64 31"), "ok station 64 button 31 type 0 first 31 members 31");
}

TEST_F(CommandsTest, Opto) {
  EXPECT_EQ(Do("opto 64"), "ok opto 64 type 254 channel 64 first 64 members 64");
  EXPECT_EQ(Do("opto 64 3 255 1 1 64"), "ok opto 64 type 3 channel 255 first 1 members 1 64");
  EXPECT_EQ(Do("opto 1 0 0 0 none"), "ok opto 1 type 0 channel 0 first 0 members none");
}

TEST_F(CommandsTest, Spoil) {
  EXPECT_EQ(Do("spoil"), "ok");
  EXPECT_EQ(Do("spoil relays 3 checksum"), "ok relays 3 checksum");
  EXPECT_EQ(Do("spoil label-texts 10 end"), "ok relays 3 checksum, label-texts 10 end");
  EXPECT_EQ(Do("spoil E1 drop"), "ok relays 3 checksum, label-texts 10 end, optos drop");
  EXPECT_EQ(Do("spoil f4 3 length"), "ok label-texts 10 end, optos drop, relays 3 length");
  EXPECT_EQ(Do("spoil none"), "ok");
  EXPECT_EQ(Do("spoil"), "ok");
}

TEST_F(CommandsTest, Save) {
  EXPECT_EQ(Do("save"), "ok");
  EXPECT_EQ(terminal_.saved, "the state file");
  EXPECT_EQ(Do("save /tmp/a b"), "ok");
  EXPECT_EQ(terminal_.saved, "/tmp/a b");
  EXPECT_EQ(Do("save /nowhere"), "error cannot write /nowhere");
}

TEST_F(CommandsTest, Raw) {
  EXPECT_EQ(Do("raw E0 ff0102"), "ok bytes 4");
  EXPECT_EQ(line_.Answer(), "E0 FF 01 02");
  EXPECT_THAT(Do("raw E"), StartsWith("error "));
  EXPECT_THAT(Do("raw 0x"), StartsWith("error "));
  EXPECT_THAT(Do("raw"), StartsWith("error usage: raw HEX..."));
  EXPECT_THAT(Do("raw " + std::string(8194, '0')), StartsWith("error "));
}

TEST_F(CommandsTest, Silence) {
  EXPECT_EQ(Do("silence on"), "ok");
  EXPECT_EQ(line_.Ask("ED"), "");
  EXPECT_EQ(Do("silence off"), "ok");
  EXPECT_EQ(line_.Ask("ED"), "EB");
}

TEST_F(CommandsTest, EveryFaultIsACommand) {
  for (const FaultSetting& fault : kFaultSettings) {
    const std::string name(fault.name);
    SCOPED_TRACE(name);
    EXPECT_EQ(Do(name + " 7"), "ok");
    EXPECT_EQ(line_.simulator.Output().Settings().*fault.value, 7);
    EXPECT_THAT(Do(name + " -1"), StartsWith("error "));
    EXPECT_THAT(Do(name + " " + std::to_string(fault.limit + 1)), StartsWith("error "));
    EXPECT_THAT(Do(name), StartsWith("error "));
    EXPECT_EQ(line_.simulator.Output().Settings().*fault.value, 7);
    EXPECT_EQ(Do(name + " 0"), "ok");
  }
}

TEST_F(CommandsTest, UnplugAndReplug) {
  EXPECT_EQ(Do("replug"), "error plugged in already");
  EXPECT_EQ(Do("unplug"), "ok");
  EXPECT_FALSE(terminal_.plugged);
  EXPECT_EQ(Do("unplug"), "error unplugged already");
  EXPECT_EQ(Do("replug"), "ok connect to /dev/pts/99");
  EXPECT_TRUE(terminal_.plugged);
}

TEST_F(CommandsTest, Stats) {
  line_.Ask("E5 E4 ED ED 00 FD 02 00 07 00 05 00 0E FF FD 02 FF F4 00 FF");
  line_.Ask("F5 05 00 01 01 00 00 06 FF");
  EXPECT_EQ(Do("stats"),
            "ok rx-bytes 29 map-polls 1 tally-polls 1 keep-alives 2 table-polls 0 messages 4 "
            "takes 1 tables 1 refused 0 malformed 2 noise-bytes 1 tx-bytes 339 tx-messages 19 "
            "tx-dropped 0");
  line_.Ask("E7");  // two labels, two rows for each output, optos, buttons of 64 stations
  EXPECT_THAT(Do("stats"), HasSubstr(" table-polls 1 "));
  EXPECT_THAT(Do("stats"), HasSubstr(" tx-messages 118 "));
}

TEST_F(CommandsTest, Log) {
  EXPECT_EQ(Do("log off"), "ok");
  line_.Ask("ED");
  EXPECT_TRUE(line_.log.empty());
  EXPECT_EQ(Do("log on"), "ok");
  line_.Ask("ED");
  EXPECT_THAT(line_.log, testing::ElementsAre("rx poll keep-alive", "tx link answer"));
}

TEST_F(CommandsTest, Quit) {
  EXPECT_EQ(Do("quit"), "ok");
  EXPECT_TRUE(terminal_.ended);
}

TEST_F(CommandsTest, HelpKnowsEveryCommand) {
  const std::string all = Do("help");
  EXPECT_THAT(all, StartsWith("ok make break row "));
  EXPECT_EQ(Do("help gain"),
            "ok gain IN [STEP]: show or set a gain (0..127; 100 is 0 dB); "
            "sends nothing");
  EXPECT_THAT(Do("help delay"), StartsWith("ok delay MS: "));
  EXPECT_THAT(Do("help nothing"), StartsWith("error unknown command nothing"));
  std::istringstream names(all.substr(3));
  for (std::string name; names >> name;) {
    SCOPED_TRACE(name);
    EXPECT_THAT("\n" + Commands::Help(), HasSubstr("\n  " + name + " "));
    EXPECT_THAT(Do("help " + name), StartsWith("ok " + name));
  }
}

TEST_F(CommandsTest, WhatIsOutsideTheSystemIsRefusedAndChangesNothing) {
  for (const char* command : {"make 0 1",
                              "make 17 1",
                              "make 1 0",
                              "make 1 17",
                              "break 17 1",
                              "break 1 17",
                              "row 17",
                              "row x",
                              "row 1x",
                              "send-row 0",
                              "gain 0",
                              "gain 17 1",
                              "gain 1 128",
                              "gain 1 -1",
                              "tally 0 1",
                              "tally 65 1",
                              "tally 1 256",
                              "inhibit 17 1 on",
                              "inhibit 1 17 on",
                              "inhibit 1 1 maybe",
                              "inhibits 17",
                              "inhibits 1 17",
                              "inhibits 1 2 none",
                              "inhibits 1 0",
                              "label up 1",
                              "label out 0",
                              "label out 129",
                              "label in 1 123456789",
                              "label in 1 \"open",
                              "label in 1 \"",
                              "label in 1 \\x4",
                              "label in 1 \\xGG",
                              "label in 1 back\\",
                              "relay 17 1 on",
                              "relay 1 65 on",
                              "relay 1 1 yes",
                              "relays 17",
                              "relays 1 65",
                              "button 65 1",
                              "button 1 33",
                              "button 1 1 0",
                              "button 1 1 0 1",
                              "button 1 1 256 1 none",
                              "button 1 1 0 -1 none",
                              "button 1 1 0 1 257",
                              "opto 65",
                              "opto 1 1 1 1",
                              "opto 1 1 1 1 65",
                              "opto 1 1 256 1 none",
                              "spoil relays",
                              "spoil relays 3",
                              "spoil relays checksum",
                              "spoil relays 0 checksum",
                              "spoil relays 3 wrong",
                              "spoil label-texts 11 checksum",
                              "spoil label-texts 20 number",
                              "spoil optos 1 checksum",
                              "spoil optos number",
                              "spoil takes 1 drop",
                              "spoil FD 1 drop",
                              "silence maybe",
                              "log maybe",
                              "make 1 1 urgent",
                              "row 99999999999999999999"}) {
    SCOPED_TRACE(command);
    EXPECT_THAT(Do(command), StartsWith("error "));
  }
  EXPECT_EQ(Do("map"), "ok channels 16 crosspoints 0 priority 0 outputs-in-use 0");
  EXPECT_EQ(Do("inhibits 1"), "ok output 1 inhibits 1");
  EXPECT_EQ(Do("label in 1"), "ok in 1 \"Inpt 001\"");
  EXPECT_EQ(Do("relays 1"), "ok output 1 relays none");
  EXPECT_EQ(Do("button 1 1"), "ok station 1 button 1 type 0 first 1 members 1");
  EXPECT_EQ(Do("opto 1"), "ok opto 1 type 254 channel 1 first 1 members 1");
  EXPECT_EQ(Do("spoil"), "ok");
  EXPECT_EQ(line_.Answer(), "");
}

TEST_F(CommandsTest, WrongUse) {
  EXPECT_EQ(Do(""), "error no command");
  EXPECT_EQ(Do("  \t\r"), "error no command");
  EXPECT_EQ(Do("frobnicate 1"), "error unknown command frobnicate; help lists them");
  EXPECT_EQ(Do("make 1"), "error usage: make OUT IN [priority]");
  EXPECT_EQ(Do("quit now"), "error usage: quit ");
  EXPECT_FALSE(terminal_.ended);
}

TEST_F(CommandsTest, BlanksAndCarriageReturnsDoNotMatter) {
  EXPECT_EQ(Do("  make\t6   8\r"), "ok output 6 status 0 sources 8");
}

}  // namespace
}  // namespace tesksim
