// SPDX-License-Identifier: MIT
//
// Network panels on the real console on the real simulated switcher: what the panels see is what
// the switcher has, what they take comes back to everybody, and nobody can spoil it for others.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <list>
#include <memory>
#include <random>
#include <sstream>

#include "tests/end_to_end/console_process.h"
#include "tests/support/free_port.h"
#include "tests/support/hex.h"
#include "tests/support/panel_process.h"
#include "tests/support/simulator_process.h"
#include "tests/support/socket_peer.h"

namespace test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using namespace std::chrono_literals;

constexpr int kDone = 0;
constexpr int kNoConnection = 1;
constexpr int kUsage = 2;
constexpr int kNotServed = 3;
constexpr int kLinkDown = 4;
constexpr int kNotConfirmed = 6;

constexpr int kChannels = 64;

constexpr int kNoMark = 0;

// The map as a panel prints it for scripts, of what the simulator says of each of its outputs:
// "ok output 6 status 0 sources 8 9", "... sources 8 9 priority 9" or "... sources none".
std::string MapOf(SimulatorProcess& simulator) {
  std::string map;
  for (int output = 1; output <= kChannels; ++output) {
    std::istringstream answer(simulator.Command("row " + std::to_string(output)));
    std::string status;
    std::string word;
    answer >> word >> word >> word >> word >> status >> word;
    std::string inputs;
    while (answer >> word && word != "none" && word != "priority") {
      inputs += (inputs.empty() ? "" : ",") + word;
    }
    map += "{\"event\":\"row\",\"output\":" + std::to_string(output) + ",\"status\":" + status +
           ",\"inputs\":[" + inputs + "]}\n";
  }
  return map;
}

// Bytes that the switcher sends, with the checksum of all behind the code and the end byte; as
// a command to the simulator.  `pairs`: each value travels as a pair.
std::string RawMessage(std::uint8_t code, const std::vector<int>& values, bool pairs) {
  std::vector<std::uint8_t> bytes{code};
  int sum = 0;
  for (const int value : values) {
    bytes.push_back(static_cast<std::uint8_t>(value % 128));
    if (pairs) bytes.push_back(static_cast<std::uint8_t>(value / 128));
    sum = (sum + value) % 128;
  }
  bytes.push_back(static_cast<std::uint8_t>(sum));
  bytes.push_back(0xFF);
  return "raw " + Hex(bytes);
}

// All 128 labels: "LAB 001 " and so on.
std::string RawLabels(int selector) {
  std::vector<int> values{selector};
  for (int station = 1; station <= 128; ++station) {
    const std::string digits = std::to_string(1000 + station).substr(1);
    for (const char c : "LAB " + digits + " ") values.push_back(c);
  }
  return RawMessage(0xF9, values, false);
}

// The buttons of station 3: the second listens to stations 2 and 9, the first of them 6; all
// others are inactive and have no first one.
std::string RawButtons() {
  constexpr int kButtons = 32;
  constexpr int kGroups = 8;
  std::vector<int> values{2};
  for (int button = 1; button <= kButtons; ++button) {
    values.push_back(button == 2 ? 1 : 254);
    values.push_back(button == 2 ? 6 : 0);
  }
  for (int button = 1; button <= kButtons; ++button) {
    for (int group = 1; group <= kGroups; ++group) {
      int flags = 0;
      if (button == 2 && group == 1) flags = 0x02;
      if (button == 2 && group == 2) flags = 0x01;
      values.push_back(flags);
    }
  }
  return RawMessage(0xFB, values, true);
}

class PanelsTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_.WriteSettings(line_,
                          "IP Port=" + std::to_string(port_) + "\r\nSoftpanel Support=Yes\r\n");
  }

  // Starts the console and waits until it has the whole map: only then does it ask for the
  // tally.
  void Start() {
    console_ = std::make_unique<ConsoleProcess>(folder_);
    ASSERT_TRUE(console_->IsUp());
    ASSERT_TRUE(simulator_.WaitForLine("rx poll tally"));
  }

  // Runs a panel to its end; what it printed.
  std::string Run(const std::vector<std::string>& arguments, int exitCode = kDone) {
    PanelProcess panel(port_, arguments);
    EXPECT_EQ(panel.Wait(), exitCode) << panel.Errors();
    return panel.Output();
  }

  // Starts a panel that watches, and waits until it has all it asked for.
  PanelProcess& Watch(const std::vector<std::string>& what, const char* lastLine) {
    std::vector<std::string> arguments{"--json", "watch"};
    arguments.insert(arguments.end(), what.begin(), what.end());
    PanelProcess& panel = watchers_.emplace_back(port_, arguments);
    EXPECT_TRUE(panel.WaitForLine(lastLine)) << panel.Errors();
    return panel;
  }
  PanelProcess& WatchMap() { return Watch({}, "\"output\":64,"); }

  // Connects a peer of the test's own and identifies it as automation.
  void Identify(SocketPeer& peer) const {
    ASSERT_TRUE(peer.Connect(port_));
    ASSERT_EQ(peer.Receive(4), "81 00 00 FF");
    ASSERT_TRUE(peer.Send("81 1E 1E FF F5"));
    ASSERT_TRUE(IsAnswered(peer));
  }

  // Whether the answer to a keep-alive comes; rows that the switcher reports may come ahead of it.
  static bool IsAnswered(const SocketPeer& peer) {
    std::string byte = peer.Receive(1);
    while (byte != "F4" && !byte.empty()) byte = peer.Receive(1);
    return byte == "F4";
  }

  void ExpectMark(int output, int input, int mark) {
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console_->Mark(output, input) == mark; }))
        << "output " << output << " input " << input << " shows " << console_->Mark(output, input);
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  std::string line_ = folder_ / "line";
  int port_ = FreePort();
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<ConsoleProcess> console_;
  std::list<PanelProcess> watchers_;
};

TEST_F(PanelsTest, EveryPanelSeesTheMapOfTheSwitcher) {
  for (const char* made : {"make 1 2", "make 64 63", "make 5 9 priority", "make 5 10", "make 33 1",
                           "make 33 64", "make 40 40"}) {
    ASSERT_THAT(simulator_.Command(made), StartsWith("ok"));
  }
  Start();
  const std::string map = MapOf(simulator_);
  ASSERT_THAT(map, HasSubstr("\"output\":5,\"status\":1,\"inputs\":[9,10]}"));
  PanelProcess first(port_, {"--json", "--type", "lrm", "map"});
  PanelProcess second(port_, {"--json", "--type", "mini", "map"});
  PanelProcess third(port_, {"--json", "--type", "60", "map"});
  for (PanelProcess* panel : {&first, &second, &third}) {
    EXPECT_EQ(panel->Wait(), kDone) << panel->Errors();
    EXPECT_EQ(panel->Output(), map);
  }
  EXPECT_EQ(Run({"map"}),
            "output 1: 2\n"
            "output 5: 9 10 (status 1)\n"
            "output 33: 1 64\n"
            "output 40: 40\n"
            "output 64: 63\n"
            "64 outputs, 7 crosspoints\n");
}

TEST_F(PanelsTest, LabelsAndButtonsAreThoseOfTheDatabase) {
  Start();
  std::string outputs;
  std::string inputs;
  for (int station = 1; station <= kChannels; ++station) {
    const std::string digits = std::to_string(1000 + station).substr(1);
    outputs += "output " + std::to_string(station) + ": \"Sta. " + digits + "\"\n";
    inputs += "input " + std::to_string(station) + ": \"Inpt " + digits + "\"\n";
  }
  EXPECT_EQ(Run({"labels"}), inputs + outputs);
  EXPECT_EQ(Run({"labels", "output"}), outputs);
  std::string buttons;
  for (int button = 1; button <= 32; ++button) {
    const std::string number = std::to_string(button);
    buttons += "{\"event\":\"button\",\"station\":7,\"button\":" + number +
               ",\"type\":\"talk\",\"first\":" + number + ",\"stations\":[" + number + "]}\n";
  }
  EXPECT_EQ(Run({"--json", "buttons", "7"}), buttons);
  EXPECT_THAT(Run({"buttons"}), EndsWith("\n64 stations, 2048 active buttons\n"));
}

TEST_F(PanelsTest, ATakeReachesTheSwitcherAndComesBackToEverybody) {
  Start();
  PanelProcess& first = WatchMap();
  PanelProcess& second = WatchMap();
  EXPECT_EQ(Run({"take", "6", "8"}), "output 6 hears input 8\n");
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 2"));
  constexpr char kMade[] = "{\"event\":\"row\",\"output\":6,\"status\":0,\"inputs\":[8]}";
  EXPECT_EQ(first.WaitForLine("row"), kMade);
  EXPECT_EQ(second.WaitForLine("row"), kMade);
  ExpectMark(6, 8, kCrosspoint);

  EXPECT_EQ(Run({"take", "6", "8", "listen-off"}), "output 6 does not hear input 8\n");
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 0"));
  constexpr char kBroken[] = "{\"event\":\"row\",\"output\":6,\"status\":0,\"inputs\":[]}";
  EXPECT_EQ(first.WaitForLine("row"), kBroken);
  EXPECT_EQ(second.WaitForLine("row"), kBroken);
  ExpectMark(6, 8, kNoMark);

  // What the operator takes reaches the panels the same way.
  console_->Use("ID_Sum", 7, 9);
  EXPECT_EQ(first.WaitForLine("row"),
            "{\"event\":\"row\",\"output\":7,\"status\":0,\"inputs\":[9]}");
  EXPECT_EQ(second.WaitForLine("row"),
            "{\"event\":\"row\",\"output\":7,\"status\":0,\"inputs\":[9]}");
}

TEST_F(PanelsTest, EveryActionOfATake) {
  Start();
  const std::pair<const char*, int> actions[] = {
      {"listen", 2},          {"listen-off", 0},
      {"priority", 138},      {"priority-off", 136},
      {"call", 134},          {"call-off", 132},
      {"call-priority", 142}, {"34", 0},
      {"call-priority", 142}, {"call-priority-off", 140},
  };
  for (const auto& [name, action] : actions) {
    SCOPED_TRACE(name);
    Run({"take", "20", "64", name});
    const auto take = simulator_.WaitForLine("rx take");
    ASSERT_TRUE(take);
    EXPECT_THAT(*take, HasSubstr("output 20 source 64 action " + std::to_string(action)));
  }
}

TEST_F(PanelsTest, AnOutputLockedForPanelsTooIsLeftAsItIs) {
  Start();
  console_->Use("aidLockOutput", 6, 8);
  EXPECT_EQ(Run({"take", "6", "8"}), "output 6 hears input 8\n") << "locked for the console alone";
  console_->Trigger("aidLockForPanels", "frmXmap");
  Run({"--timeout", "1", "take", "6", "9"}, kNotConfirmed);
  Run({"--timeout", "1", "take", "6", "8", "listen-off"}, kNotConfirmed);
  EXPECT_EQ(Run({"take", "7", "9"}), "output 7 hears input 9\n") << "the others are free";
  // What was ignored never was on the line.
  EXPECT_THAT(simulator_.WaitForLine("rx take").value_or(""),
              HasSubstr("output 6 source 8 action 2"));
  EXPECT_THAT(simulator_.WaitForLine("rx take").value_or(""),
              HasSubstr("output 7 source 9 action 2"));
  ExpectMark(6, 8, kCrosspoint);
  ExpectMark(6, 9, kNoMark);
  EXPECT_TRUE(ConsoleProcess::WaitFor([&] {
    return ReadFile(folder_ / "Teskctl.log").find("ignored, the output is locked") !=
           std::string::npos;
  }));
}

TEST_F(PanelsTest, ManyPanelsTakeAtTheSameTime) {
  Start();
  std::list<PanelProcess> panels;
  for (int output = 1; output <= 8; ++output) {
    panels.emplace_back(port_,
                        std::vector<std::string>{"--timeout", "60", "take", std::to_string(output),
                                                 std::to_string(output + 20)});
  }
  int output = 0;
  for (PanelProcess& panel : panels) {
    ++output;
    EXPECT_EQ(panel.Wait(), kDone) << panel.Errors();
    EXPECT_EQ(panel.Output(), "output " + std::to_string(output) + " hears input " +
                                  std::to_string(output + 20) + "\n");
    ExpectMark(output, output + 20, kCrosspoint);
  }
  EXPECT_EQ(Run({"--timeout", "60", "--json", "map"}), MapOf(simulator_));
  EXPECT_THAT(simulator_.Command("map"), StartsWith("ok channels 64 crosspoints 8 "));
}

TEST_F(PanelsTest, AnInhibitedTakeIsNotConfirmed) {
  Start();
  simulator_.Command("inhibit 6 8 on");
  Run({"--timeout", "8", "take", "6", "8"}, kNotConfirmed);
  EXPECT_TRUE(simulator_.WaitForLine("rx take output 6 source 8 action 2"));
  ExpectMark(6, 8, kNoMark);
}

TEST_F(PanelsTest, ATakeOutsideTheSystemIsRefusedByTheSwitcher) {
  Start();
  Run({"take", "65", "1"}, kUsage);
  Run({"take", "1", "65"}, kUsage);
  // On the switcher's line output 257 would be output 1.
  SocketPeer peer;
  Identify(peer);
  ASSERT_TRUE(
      peer.Send("FE 24 00 40 00 00 00 64 FF"
                " FE 24 00 00 02 01 00 27 FF"
                " FE 24 00 00 00 00 02 26 FF"
                " F5"));
  EXPECT_TRUE(IsAnswered(peer));
  EXPECT_EQ(simulator_.WaitForLine("rx take"), "rx take output 65 source 1 action 2 (refused)");
  Run({"take", "2", "3"});
  const auto take = simulator_.WaitForLine("rx take");
  ASSERT_TRUE(take);
  EXPECT_THAT(*take, HasSubstr("output 2 source 3 action 2"));
}

TEST_F(PanelsTest, AnUnacceptedTypeIsNotServed) {
  Start();
  Run({"--type", "20", "--timeout", "2", "map"}, kNotServed);
  SocketPeer peer;
  ASSERT_TRUE(peer.Connect(port_));
  ASSERT_EQ(peer.Receive(4), "81 00 00 FF");
  ASSERT_TRUE(peer.Send("81 14 14 FF FE 24 00 05 00 07 00 30 FF F5"));
  EXPECT_EQ(peer.Receive(1, 500ms), "");
  // The same connection may say something better.
  ASSERT_TRUE(peer.Send("81 32 32 FF FE 24 00 06 00 08 00 32 FF F5"));
  EXPECT_TRUE(IsAnswered(peer));
  const auto take = simulator_.WaitForLine("rx take");
  ASSERT_TRUE(take);
  EXPECT_THAT(*take, HasSubstr("output 7 source 9 action 2"));
}

TEST_F(PanelsTest, WhatTheSwitcherReportsGoesToAllPanels) {
  Start();
  constexpr char kLast[] = "\"station\":64,\"button\":32,";
  PanelProcess* const panels[] = {&Watch({"labels", "buttons"}, kLast),
                                  &Watch({"labels", "buttons"}, kLast)};
  ASSERT_EQ(simulator_.Command(RawLabels(20)), "ok bytes 1028");
  for (PanelProcess* panel : panels) {
    EXPECT_EQ(panel->WaitForLine(""),
              "{\"event\":\"label\",\"kind\":\"output\",\"station\":1,\"text\":\"LAB 001\"}");
    EXPECT_EQ(panel->WaitForLine("\"station\":64,"),
              "{\"event\":\"label\",\"kind\":\"output\",\"station\":64,\"text\":\"LAB 064\"}");
  }
  ASSERT_EQ(simulator_.Command(RawLabels(10)), "ok bytes 1028");
  for (PanelProcess* panel : panels) {
    EXPECT_EQ(panel->WaitForLine(""),
              "{\"event\":\"label\",\"kind\":\"input\",\"station\":1,\"text\":\"LAB 001\"}");
    EXPECT_EQ(panel->WaitForLine("\"station\":64,"),
              "{\"event\":\"label\",\"kind\":\"input\",\"station\":64,\"text\":\"LAB 064\"}");
  }
  ASSERT_EQ(simulator_.Command(RawButtons()), "ok bytes 645");
  for (PanelProcess* panel : panels) {
    EXPECT_EQ(panel->WaitForLine(""),
              "{\"event\":\"button\",\"station\":3,\"button\":1,\"type\":\"inactive\",\"first\":0,"
              "\"stations\":[]}");
    EXPECT_EQ(panel->WaitForLine(""),
              "{\"event\":\"button\",\"station\":3,\"button\":2,\"type\":\"listen\",\"first\":6,"
              "\"stations\":[2,9]}");
    EXPECT_TRUE(panel->WaitForLine("\"station\":3,\"button\":32,\"type\":\"inactive\""));
  }
  EXPECT_TRUE(console_->Boxes().empty());
}

TEST_F(PanelsTest, ALostSwitcherIsSaidAndItsReturnBringsTheMap) {
  Start();
  PanelProcess& panel = WatchMap();
  watchers_.emplace_back(port_, std::vector<std::string>{"--timeout", "2", "watch"});
  PanelProcess& quick = watchers_.back();
  ASSERT_TRUE(quick.WaitForLine("; the switcher is connected"));
  simulator_.Command("unplug");
  EXPECT_TRUE(quick.WaitForLine("the switcher is not connected"));
  Run({"map"}, kLinkDown);
  Run({"take", "1", "2"}, kLinkDown);
  simulator_.Command("make 12 13");
  simulator_.Command("replug");
  EXPECT_EQ(panel.WaitForLine("\"row\""),
            "{\"event\":\"row\",\"output\":12,\"status\":0,\"inputs\":[13]}");
  EXPECT_TRUE(quick.WaitForLine("the switcher is connected"));
  // All rows go to all panels first, one every 75 ms.
  EXPECT_EQ(Run({"--timeout", "120", "map", "12"}), "output 12: 13\n");
}

TEST_F(PanelsTest, AConsoleThatEndsAndStartsAgainIsFoundAgain) {
  Start();
  PanelProcess& panel = WatchMap();
  EXPECT_EQ(console_->Terminate(), 0);
  EXPECT_TRUE(panel.WaitForLine("\"disconnected\""));
  Run({"map"}, kNoConnection);
  simulator_.Command("make 12 13");
  Start();
  EXPECT_TRUE(panel.WaitForLine("\"connected\""));
  EXPECT_EQ(panel.WaitForLine("\"row\""),
            "{\"event\":\"row\",\"output\":12,\"status\":0,\"inputs\":[13]}");
}

TEST_F(PanelsTest, WithoutSupportNobodyListens) {
  folder_.WriteSettings(line_, "IP Port=" + std::to_string(port_) + "\r\nSoftpanel Support=No\r\n");
  Start();
  Run({"map"}, kNoConnection);
}

TEST_F(PanelsTest, HostilePeersSpoilNothingForOthers) {
  Start();
  PanelProcess& watcher = WatchMap();

  // Says nothing at all.
  SocketPeer silent;
  ASSERT_TRUE(silent.Connect(port_));
  // Never reads, and asks for everything again and again.
  SocketPeer slow;
  Identify(slow);
  std::string requests;
  for (int i = 0; i < 500; ++i) requests += "F2 00 47 00 00 00 00 00 00 47 FF ";
  ASSERT_TRUE(slow.Send(requests));
  // Sends a take that does not end.
  SocketPeer unfinished;
  Identify(unfinished);
  ASSERT_TRUE(unfinished.Send("FE 24 00 05"));
  // Send random bytes, before and after they have said who they are.
  std::mt19937 random(1);
  std::vector<std::uint8_t> noise(std::size_t{20} << 10);
  for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random());
  SocketPeer stranger;
  ASSERT_TRUE(stranger.Connect(port_));
  ASSERT_TRUE(stranger.SendBytes(noise));
  SocketPeer babbler;
  Identify(babbler);
  ASSERT_TRUE(babbler.SendBytes(noise));
  // Come and are torn off, some in the middle of what they are sent.
  for (int i = 0; i < 50; ++i) {
    SocketPeer torn;
    ASSERT_TRUE(torn.Connect(port_));
    if (i % 5 == 0) {
      ASSERT_EQ(torn.Receive(1), "81");
      ASSERT_TRUE(torn.Send("81 1E 1E FF F2 00 47 00 00 00 00 00 00 47 FF"));
      torn.Receive(64);
    }
    torn.Reset();
  }

  EXPECT_EQ(Run({"--timeout", "60", "take", "6", "8"}), "output 6 hears input 8\n");
  EXPECT_EQ(watcher.WaitForLine("\"row\""),
            "{\"event\":\"row\",\"output\":6,\"status\":0,\"inputs\":[8]}");
  ExpectMark(6, 8, kCrosspoint);
  EXPECT_EQ(Run({"--timeout", "60", "--json", "map"}), MapOf(simulator_));
  EXPECT_THAT(simulator_.Command("map"), StartsWith("ok channels 64 crosspoints 1 "));
  EXPECT_THAT(simulator_.Command("stats"), HasSubstr(" takes 1 "));

  // The take that does not end is reported on every tick, in one box.
  ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return !console_->Boxes().empty(); }));
  EXPECT_EQ(console_->Boxes().size(), 1U);
  EXPECT_EQ(console_->Boxes()[0].title, "Error Processing");
  EXPECT_THAT(console_->Boxes()[0].text, StartsWith("Error in Error Processing Take Command\r"));
  console_->CloseBox();
  EXPECT_EQ(console_->Terminate(), 0);
}

}  // namespace
}  // namespace test
