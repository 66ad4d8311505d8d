// SPDX-License-Identifier: MIT
//
// Network panels, in two parts.
//
// Building the frames, for systems of 64 and 256 channels:
//   MapRow, Map, Labels, StationList, Buttons   one frame, out of model and database
//   Requests                                    500 requests for all tables, from one panel
//
// The real console between a line without a pace and panels on this machine:
//   row to panel   from the last byte of a map row on the line to the first byte at each of 1,
//                  4 and 16 panels.  Every slot costs a pause of 75 ms, so panel n cannot have it
//                  before (n - 1) * 75 ms; shown is what comes on top of that.
//   held           how long the console's event loop takes to answer while rows pour in for so
//                  many panels, which ask for all tables and poll, and with nothing to do.  The
//                  way of the question and of its answer is in it: the loop is held for less.
//   take to wire   from the last byte of a panel's take to its last byte on the line
//
// panel_bench [ROUNDS] measures ROUNDS rows and takes (default 40).

#include <benchmark/benchmark.h>
#include <poll.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/switcher_line.h"
#include "gateway/panel_gateway.h"
#include "gateway/panel_tables.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/fake_client_socket.h"
#include "tests/support/fake_pause_timer.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/raw_panel.h"
#include "tests/support/recording_reporter.h"
#include "tests/support/small_database.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

double Milliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

// A system with every fourth crosspoint made and every button acting on sixteen stations.
class System {
 public:
  explicit System(int channels) {
    model.ChannelCount = static_cast<std::int16_t>(channels);
    model.AllocateMap();
    model.LinkStatus[0] = 1;
    for (int output = 1; output <= channels; ++output) {
      for (int input = 1; input <= channels; input += 4) model.CrosspointMap.At(output, input) = 1;
      test::SmallDatabase::Fields fields{{"Label", "Sta. 001"}, {"InLabel", "Inpt 001"}};
      for (int button = 1; button <= db::kButtons; ++button) {
        fields.emplace_back(db::ButtonField(button, "Type"), 0);
        fields.emplace_back(db::ButtonField(button, "First"), button);
        fields.emplace_back(db::ButtonField(button, "Prog"),
                            std::string(16, '1') + std::string(48, '0'));
      }
      database.AddStation(output, fields);
    }
  }

  jet::Database& Stations() { return *database.Files().Database(); }

  model::SystemModel model;
  test::SmallDatabase database;
};

System& SystemOf(std::int64_t channels) {
  static System small(64);
  static System large(256);
  return channels == 64 ? small : large;
}

// Runs `build`, which returns a status, on a system of the size asked for.
template <typename Build>
void Measure(benchmark::State& state, Build build) {
  System& system = SystemOf(state.range(0));
  gateway::Bytes frame;
  for (auto _ : state) {
    if (!build(system, &frame)) state.SkipWithError("no frame");
  }
  state.counters["bytes"] = static_cast<double>(frame.size());
}

void MapRow(benchmark::State& state) {
  Measure(state, [](System& system, gateway::Bytes* frame) {
    return gateway::BuildCrosspointMap(system.model, 7, 1, frame).ok();
  });
}
void Map(benchmark::State& state) {
  Measure(state, [](System& system, gateway::Bytes* frame) {
    return gateway::BuildCrosspointMap(system.model, 1, system.model.ChannelCount, frame).ok();
  });
}
void Labels(benchmark::State& state) {
  Measure(state, [](System& system, gateway::Bytes* frame) {
    return gateway::BuildLabelTable(system.Stations(), system.model, 20, frame).ok();
  });
}
void StationList(benchmark::State& state) {
  Measure(state, [](System& system, gateway::Bytes* frame) {
    *frame = gateway::BuildStationList(system.model);
    return true;
  });
}
void Buttons(benchmark::State& state) {
  Measure(state, [](System& system, gateway::Bytes* frame) {
    return gateway::BuildButtonProgramming(system.Stations(), system.model, frame).ok();
  });
}

class NoDisplay : public gateway::GatewayDisplay {
 public:
  void StartDecodeTimer() override {}
  void ShowPanels(const std::vector<std::string>&) override {}
  void ShowPanelDropped(const std::string&, gateway::DropReason) override {}
};

// What one panel can make the console do that asks as fast as it is heard, fifteen ticks to every
// pause behind a send.
void Requests(benchmark::State& state) {
  constexpr int kRequests = 500;
  System& system = SystemOf(state.range(0));
  test::FakeSerialPort port;
  test::RecordingReporter reporter;
  switcher::LiveCommands commands(system.model, port, reporter);
  NoDisplay display;
  for (auto _ : state) {
    test::FakePauseTimer timer;
    gateway::PanelGateway gateway({.model = system.model,
                                   .files = system.database.Files(),
                                   .commands = commands,
                                   .timer = timer,
                                   .display = display,
                                   .reporter = reporter});
    const auto panel = std::make_shared<test::FakePeer>();
    gateway.Accept(std::make_unique<test::FakeClientSocket>(panel));
    panel->Send("81 35 35 FF");
    for (int i = 0; i < kRequests; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
    for (int tick = 0; tick <= kRequests; ++tick) {
      gateway.DecodeTick([] { return false; });
      if (tick % 15 == 0) timer.Elapse();
    }
    panel->written.clear();
  }
}

BENCHMARK(MapRow)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK(Map)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK(Labels)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK(StationList)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK(Buttons)->Arg(64)->Arg(256)->Unit(benchmark::kMicrosecond);
BENCHMARK(Requests)->Arg(64)->Arg(256)->Unit(benchmark::kMillisecond);

// The console with its line and its panels.
class House {
 public:
  House() {
    QTcpServer server;
    if (server.listen(QHostAddress::Any, 0)) port_ = server.serverPort();
    server.close();
    folder_.WriteSettings(line.Device(),
                          "Softpanel Support=Yes\r\nIP Port=" + std::to_string(port_) + "\r\n");
    console = std::make_unique<test::ConsoleProcess>(folder_);
    test::ConsoleProcess::WaitFor([this] { return line.IsUp(); });
  }

  // Connects panels until there are `count`, and lets the console come to rest.
  bool Fill(std::size_t count) {
    while (panels.size() < count) {
      panels.emplace_back(port_);
      panels.back().Send("81 35 35 FF");
    }
    Rest();
    return std::all_of(panels.begin(), panels.end(), [](auto& panel) { return panel.Poll(); });
  }

  // Waits until nothing has been sent to any panel for a while.
  void Rest() {
    for (auto quiet = Clock::now(); Clock::now() - quiet < milliseconds(400);) {
      std::this_thread::sleep_for(milliseconds(5));
      if (Drain()) quiet = Clock::now();
    }
  }

  // Reads away what the panels have got; whether it was anything.
  bool Drain() {
    bool any = false;
    for (test::RawPanel& panel : panels) {
      panel.Poll();
      any = any || !panel.Received().empty();
      panel.Received().clear();
    }
    return any;
  }

  bench::SwitcherLine line;
  std::unique_ptr<test::ConsoleProcess> console;
  std::vector<test::RawPanel> panels;

 private:
  int port_ = 0;
  test::ConsoleFolder folder_;
};

// When each panel got its first byte after `start`, less the pauses before it.
std::vector<double> Arrivals(House& house, Clock::time_point start) {
  std::vector<double> added(house.panels.size(), -1);
  std::size_t missing = added.size();
  while (missing > 0 && Clock::now() - start < std::chrono::seconds(10)) {
    std::vector<pollfd> waiting;
    for (std::size_t i = 0; i < added.size(); ++i) {
      const bool wanted = added[i] < 0;
      waiting.push_back(
          {.fd = wanted ? house.panels[i].Socket() : -1, .events = POLLIN, .revents = 0});
    }
    poll(waiting.data(), waiting.size(), 1000);
    const auto now = Clock::now();
    for (std::size_t i = 0; i < added.size(); ++i) {
      if (waiting[i].fd < 0 || waiting[i].revents == 0) continue;
      added[i] = Milliseconds(now - start) - 75.0 * static_cast<double>(i);
      --missing;
    }
  }
  return added;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}
double Greatest(const std::vector<double>& values) {
  return *std::max_element(values.begin(), values.end());
}

void Print(const std::string& what, const std::vector<double>& times, const char* aim) {
  std::printf("%-34s %8.2f ms %8.2f ms %8s\n", what.c_str(), Median(times), Greatest(times), aim);
  std::fflush(stdout);
}

// How long a row takes to the first panel and, on top of the pauses, to the last.
void MeasureRows(House& house, int rounds) {
  std::vector<double> first;
  std::vector<double> last;
  for (int round = 0; round < rounds; ++round) {
    const auto start = house.line.SendRow(1 + round % 32, 33 + round * 7 % 32);
    const std::vector<double> added = Arrivals(house, start);
    first.push_back(added.front());
    last.push_back(added.back());
    // The pause behind the last panel, and off the beat of the console's timers.
    std::this_thread::sleep_for(milliseconds(90 + round % 7));
    house.Drain();
  }
  const std::size_t count = house.panels.size();
  Print("row to panel 1 of " + std::to_string(count), first, "6 ms");
  if (count == 1) return;
  Print("row to panel " + std::to_string(count) + ", less " + std::to_string(75 * (count - 1)) +
            " ms",
        last, "6 ms");
}

void MeasureTakes(House& house, int rounds) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    house.panels[0].Send("FE 24 00 05 00 07 00 30 FF");
    const auto sent = Clock::now();
    const auto arrived = house.line.WaitForTake(milliseconds(2000));
    if (!arrived) {
      std::printf("a take was lost\n");
      return;
    }
    times.push_back(Milliseconds(*arrived - sent));
    std::this_thread::sleep_for(milliseconds(20 + round % 7));
  }
  Print("take to wire", times, "6 ms");
}

// The times in which the console's event loop answers.
std::vector<double> Answers(House& house) {
  constexpr milliseconds kTime{4000};
  std::vector<double> times;
  for (const auto start = Clock::now(); Clock::now() - start < kTime;) {
    const auto asked = Clock::now();
    (void)house.console->Property("sbStatusBar_1", "text");
    times.push_back(Milliseconds(Clock::now() - asked));
  }
  return times;
}

void MeasureHolding(House& house) {
  std::atomic<bool> ending = false;
  std::thread traffic([&] {
    for (int round = 0; !ending; ++round) {
      // Few outputs: what waits in the end is to be sent before the next measurement.  An output
      // never hears its own station, which is inhibited: the operator would be warned.
      house.line.SendRow(1 + round % 8, 9 + round % 55);
      for (test::RawPanel& panel : house.panels) {
        if (round % 100 == 0) panel.Send("F2 00 47 00 00 00 00 00 00 47 FF");
        if (round % 10 == 0) panel.Send("F5");
      }
      house.Drain();
      std::this_thread::sleep_for(milliseconds(10));
    }
  });
  const std::vector<double> times = Answers(house);
  ending = true;
  traffic.join();
  Print("held with " + std::to_string(house.panels.size()) + " busy panels", times, "10 ms");
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();

  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 40;
  House house;
  if (!house.line.IsUp()) {
    std::printf("the console does not come up\n");
    return 1;
  }
  std::printf("\n%-34s %11s %11s %8s\n", "", "median", "longest", "aim");
  Print("held with nothing to do", Answers(house), "10 ms");
  for (const std::size_t count : {1U, 4U, 16U}) {
    if (!house.Fill(count)) {
      std::printf("a panel was not served\n");
      return 1;
    }
    MeasureRows(house, rounds);
    if (count == 1) MeasureTakes(house, rounds);
    MeasureHolding(house);
  }
  return 0;
}
