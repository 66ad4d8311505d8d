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
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <string>
#include <thread>
#include <vector>

#include "tests/soak/house.h"
#include "tests/support/free_port.h"
#include "tests/support/raw_panel.h"

namespace {

using soak::Attack;
using soak::Clock;
using soak::kLost;
using soak::Since;
using std::chrono::milliseconds;
using namespace std::chrono_literals;
using test::RawPanel;

constexpr char kIdentify[] = "81 35 35 FF";

// One that serves network panels.
class House : public soak::House {
 public:
  House(Clock::duration time, int patience) : House(time, patience, test::FreePort()) {}

  int Port() const { return port_; }

  RawPanel Panel() const {
    RawPanel panel(port_);
    panel.Send(kIdentify);
    return panel;
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
    for (const auto start = Clock::now(); Clock::now() - start < Time();) {
      panel.Received().clear();
      panel.Send("F5");
      longest = std::max(longest, TimeTo(panel, 0xF4));
      std::this_thread::sleep_for(500ms);
    }
    return longest;
  }

 private:
  House(Clock::duration time, int patience, int port)
      : soak::House(time, patience,
                    "Softpanel Support=Yes\r\nIP Port=" + std::to_string(port) + "\r\n"),
        port_(port) {}

  const int port_;
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
  return House::CheckCount("boxes that the operator closed", boxes, 1, most);
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
  const bool take = house.Check("the operator's take, longest", house.Work().longestTake, 100ms);
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
  const soak::Service service = house.Work();
  bool ok =
      house.Check("between two polls of the switcher, longest", service.longestSilence, 3000ms);
  ok = house.Check("the operator's take, longest", service.longestTake, 100ms) && ok;
  ok = House::CheckCount("takes of panels on the line", service.takesOfOthers, 1) && ok;
  house.Switcher().Command("silence on");
  const auto start = Clock::now();
  const auto says = [&house](const char* text) {
    return test::ConsoleProcess::WaitFor([&] { return house.Console().LinkText() == text; });
  };
  const bool noticed = says("Not Connected - COM 1");
  ok = house.Check("a dead switcher is noticed", noticed ? Since(start) : kLost, 6000ms) && ok;
  house.Switcher().Command("silence off");
  return says(test::kConnected) && ok;
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
  return soak::RunAttacks<House>({argc, argv}, {{"flood", Flood},
                                                {"churn", Churn},
                                                {"drip", Drip},
                                                {"endless", Endless},
                                                {"takes", Takes},
                                                {"full house", FullHouse}});
}
