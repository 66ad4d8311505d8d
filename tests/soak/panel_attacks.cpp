// SPDX-License-Identifier: MIT
//
// panel_attacks [SECONDS [PATIENCE [ATTACK]]]: the real console on a simulated switcher of 57600
// baud, under one attack of network panels after the other, each for SECONDS (default 20).  Prints
// what it measured, and ends with 0 when everybody else was served in time:
//   flood        126 connections come and go; a row reaches a panel behind their slots within 3 s
//   churn        96 connections a second, each for a second; a panel's polls are answered within
//                1 s
//   drip         a take that is never ended, a byte each 100 ms; its panel is dropped, and an
//                operator who closes the box sees at most one more in ten seconds
//   endless      120 unended frames of 60 kB; the operator's take is on the line within 100 ms, a
//                panel's polls are answered within 1 s
//   takes        1,000 takes a second from 64 panels; a poll goes out at least every 3 s, the
//                operator's take within 100 ms, and a dead switcher is noticed within 6 s
//   full house   128 silent connections; a panel that comes has its answer within 3 s
// All limits are multiplied by PATIENCE, for machines with something else to do.  ATTACK is the
// name of the only one to run.

#include <QCoreApplication>
#include <QTcpServer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/support/raw_panel.h"
#include "tests/support/simulator_process.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;
using namespace std::chrono_literals;
using test::RawPanel;

constexpr char kIdentify[] = "81 35 35 FF";
constexpr milliseconds kLost{60000};  // so long is waited for what does not come

milliseconds Since(Clock::time_point start) {
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

// The console, its switcher, and what is measured of them.
class House {
 public:
  House(Clock::duration time, int patience) : time_(time), patience_(patience) {
    QTcpServer server;
    if (server.listen(QHostAddress::Any, 0)) port_ = server.serverPort();
    server.close();
    folder_.WriteSettings(line_,
                          "Softpanel Support=Yes\r\nIP Port=" + std::to_string(port_) + "\r\n");
    console_ = std::make_unique<test::ConsoleProcess>(folder_);
    up_ = console_->IsUp() && simulator_.WaitForLine("rx poll tally").has_value();
    // Only a switcher that reports its tally is watched.
    simulator_.Command("send-tally");
    up_ = up_ && simulator_.WaitForLine("rx poll keep-alive").has_value();
  }

  bool IsUp() const { return up_; }
  int Port() const { return port_; }
  Clock::duration Time() const { return time_; }
  test::ConsoleProcess& Console() { return *console_; }
  test::SimulatorProcess& Switcher() { return simulator_; }

  RawPanel Panel() const {
    RawPanel panel(port_);
    panel.Send(kIdentify);
    return panel;
  }

  // Whether `measured` is within the limit; says so.
  bool Check(const char* what, milliseconds measured, milliseconds limit) const {
    const bool ok = measured <= limit * patience_;
    std::printf("  %-44s %6lld ms%s\n", what, static_cast<long long>(measured.count()),
                ok ? "" : "  FAILED");
    return ok;
  }

  // Until a panel has this byte.
  static milliseconds TimeTo(RawPanel& panel, std::uint8_t byte) {
    const auto start = Clock::now();
    while (Since(start) < kLost && panel.Poll()) {
      const auto& bytes = panel.Received();
      if (std::find(bytes.begin(), bytes.end(), byte) != bytes.end()) return Since(start);
      std::this_thread::sleep_for(1ms);
    }
    return kLost;
  }

  // The longest time to the answer of a panel's poll, twice a second for the time of the attack.
  milliseconds LongestAnswer() const {
    RawPanel panel = Panel();
    milliseconds longest{0};
    for (const auto start = Clock::now(); Clock::now() - start < time_;) {
      panel.Received().clear();
      panel.Send("F5");
      longest = std::max(longest, TimeTo(panel, 0xF4));
      std::this_thread::sleep_for(500ms);
    }
    return longest;
  }

  // The longest way of the operator's take to the line.
  milliseconds LongestTake() {
    milliseconds longest{0};
    int input = 0;
    for (const auto start = Clock::now(); Clock::now() - start < time_;) {
      input = input % 40 + 1;
      const auto asked = Clock::now();
      console_->Use("ID_Take", 60, input);
      const std::string line = "rx take output 60 source " + std::to_string(input);
      longest = std::max(longest, simulator_.WaitForLine(line, kLost) ? Since(asked) : kLost);
      std::this_thread::sleep_for(150ms);
    }
    return longest;
  }

  // The longest time between two polls of the switcher.
  milliseconds LongestSilence() {
    milliseconds longest{0};
    for (const auto start = Clock::now(); Clock::now() - start < time_;) {
      const auto before = Clock::now();
      longest = std::max(
          longest, simulator_.WaitForLine("rx poll keep-alive", kLost) ? Since(before) : kLost);
    }
    return longest;
  }

 private:
  const Clock::duration time_;
  const int patience_;
  int port_ = 0;
  test::ConsoleFolder folder_;
  const std::string line_ = folder_ / "line";
  test::SimulatorProcess simulator_{{"--log", "--link", line_}};
  std::unique_ptr<test::ConsoleProcess> console_;
  bool up_ = false;
};

// What is done to the console in a thread of its own, again and again, until the object goes.
class Attack {
 public:
  Attack(milliseconds pause, std::function<void()> blow)
      : thread_([this, pause, blow = std::move(blow)] {
          while (!ending_) {
            blow();
            std::this_thread::sleep_for(pause);
          }
        }) {}
  ~Attack() {
    ending_ = true;
    thread_.join();
  }
  Attack(const Attack&) = delete;
  Attack& operator=(const Attack&) = delete;

 private:
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

bool Flood(House& house) {
  std::vector<RawPanel> flood;
  for (int i = 0; i < 126; ++i) flood.push_back(house.Panel());
  RawPanel panel = house.Panel();
  flood.clear();
  panel.Send("F5");
  const bool served = House::TimeTo(panel, 0xF4) < kLost;
  // What went out to the flood is over when nothing comes any more.
  for (auto quiet = Clock::now(); Since(quiet) < 1500ms; panel.Received().clear()) {
    panel.Poll();
    if (!panel.Received().empty()) quiet = Clock::now();
    std::this_thread::sleep_for(5ms);
  }
  house.Switcher().Command("make 5 7");
  house.Switcher().Command("send-row 5");
  return house.Check("a row to the panel behind the flood", House::TimeTo(panel, 0xF6), 3000ms) &&
         served;
}

bool Churn(House& house) {
  std::deque<RawPanel> crowd;
  const Attack churn(10ms, [&] {
    crowd.push_back(house.Panel());
    if (crowd.size() > 96) crowd.pop_front();
  });
  return house.Check("a poll's answer, longest", house.LongestAnswer(), 1000ms);
}

bool Drip(House& house) {
  RawPanel stranger = house.Panel();
  stranger.Send("FE");
  const Attack drip(100ms, [&] {
    if (stranger.Poll()) {
      stranger.Send("11");
    } else {
      stranger = house.Panel();
      stranger.Send("FE");
    }
  });
  int boxes = 0;
  const auto start = Clock::now();
  while (Clock::now() - start < house.Time()) {
    if (house.Console().Boxes().empty()) {
      std::this_thread::sleep_for(50ms);
    } else {
      ++boxes;
      house.Console().CloseBox();
    }
  }
  const int most = 1 + static_cast<int>(Since(start) / 10s);
  std::printf("  %-44s %6d\n", "boxes that the operator closed", boxes);
  std::printf("  %-44s %6d%s\n", "of at most", most, boxes <= most ? "" : "  FAILED");
  return boxes > 0 && boxes <= most;
}

bool Endless(House& house) {
  std::vector<RawPanel> crowd;
  const std::vector<std::uint8_t> part(60000, 0x11);
  for (int i = 0; i < 120; ++i) {
    crowd.push_back(house.Panel());
    crowd.back().Send("80");
    crowd.back().Send(part);
  }
  const Attack drip(100ms, [&crowd] {
    for (RawPanel& one : crowd) one.Send("11");
  });
  const bool take = house.Check("the operator's take, longest", house.LongestTake(), 100ms);
  return house.Check("a poll's answer, longest", house.LongestAnswer(), 1000ms) && take;
}

bool Takes(House& house) {
  std::vector<RawPanel> crowd;
  for (int i = 0; i < 64; ++i) crowd.push_back(house.Panel());
  const Attack takes(64ms, [&crowd] {
    for (RawPanel& one : crowd) {
      one.Send("FE 24 00 05 00 07 00 30 FF");
      one.Poll();
      one.Received().clear();
    }
  });
  bool ok =
      house.Check("between two polls of the switcher, longest", house.LongestSilence(), 3000ms);
  ok = house.Check("the operator's take, longest", house.LongestTake(), 100ms) && ok;
  house.Switcher().Command("silence on");
  const auto start = Clock::now();
  const bool noticed = test::ConsoleProcess::WaitFor(
      [&house] { return house.Console().LinkText() == "Not Connected - COM 1"; });
  return house.Check("a dead switcher is noticed", noticed ? Since(start) : kLost, 6000ms) && ok;
}

bool FullHouse(House& house) {
  std::vector<RawPanel> silent;
  for (int i = 0; i < 128; ++i) silent.emplace_back(house.Port());
  RawPanel panel = house.Panel();
  panel.Send("F5");
  return house.Check("the first answer to one who comes", House::TimeTo(panel, 0xF4), 3000ms);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const double seconds = argc > 1 ? std::atof(argv[1]) : 20;
  const int patience = argc > 2 ? std::max(std::atoi(argv[2]), 1) : 1;
  const auto time = std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(std::max(seconds, 0.1)));
  const std::string only = argc > 3 ? argv[3] : "";
  int failures = 0;
  const std::pair<const char*, bool (*)(House&)> attacks[] = {
      {"flood", Flood},     {"churn", Churn}, {"drip", Drip},
      {"endless", Endless}, {"takes", Takes}, {"full house", FullHouse},
  };
  for (const auto& [name, attack] : attacks) {
    if (!only.empty() && only != name) continue;
    std::printf("%s\n", name);
    std::fflush(stdout);
    House house(time, patience);
    if (!house.IsUp() || !attack(house) || !house.Console().Lives()) {
      std::printf("FAILED: %s\n", name);
      ++failures;
    }
  }
  return failures == 0 ? 0 : 1;
}
