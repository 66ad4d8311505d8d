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
// Forty rows and takes are measured, five with --quick.

#include <poll.h>

#include <QCoreApplication>
#include <QTcpServer>
#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/suite.h"
#include "bench/switcher_line.h"
#include "db/station_fields.h"
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

class NoDecodeTimer : public gateway::DecodeTimer {
 public:
  void StartDecodeTimer() override {}
};

// What one panel can make the console do that asks as fast as it is heard, fifteen ticks to every
// pause behind a send.
void Requests(benchmark::State& state) {
  constexpr int kRequests = 500;
  System& system = SystemOf(state.range(0));
  test::FakeSerialPort port;
  test::RecordingReporter reporter;
  switcher::LiveCommands commands({.model = system.model, .port = port, .reporter = reporter});
  const switcher::LineShare line(port, [] { return milliseconds(500); });
  NoDecodeTimer decodeTimer;
  gateway::PanelEvents events;  // nobody is told
  for (auto _ : state) {
    test::FakePauseTimer timer;
    model::Locks locks;
    gateway::PanelGateway gateway({.model = system.model,
                                   .locks = locks,
                                   .files = system.database.Files(),
                                   .commands = commands,
                                   .line = line,
                                   .timer = timer,
                                   .decodeTimer = decodeTimer,
                                   .events = events,
                                   .reporter = reporter});
    const auto panel = std::make_shared<test::FakePeer>();
    gateway.Accept(std::make_unique<test::FakeClientSocket>(panel));
    panel->Send("81 35 35 FF");
    for (int i = 0; i < kRequests; ++i) panel->Send("F2 00 47 00 00 00 00 00 00 47 FF");
    for (int tick = 0; tick <= kRequests; ++tick) {
      gateway.BeginTick();
      gateway.DecodeTick();
      if (tick % 15 == 0) timer.Elapse();
    }
    panel->written.clear();
  }
}

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

constexpr double kAddedMilliseconds = 6;  // on top of the pauses; a tick of 5 ms is in it
constexpr double kHeldMilliseconds = 10;

void AddTime(bench::Figures& figures, const std::string& what, double time, double limit) {
  figures.Add({.what = "panels: " + what + " (wall)", .value = time, .unit = "ms", .limit = limit});
}

// How long a row takes to the first panel and, on top of the pauses, to the last.
void MeasureRows(House& house, int rounds, bench::Figures& figures) {
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
  const std::string count = std::to_string(house.panels.size());
  AddTime(figures, "a row to panel 1 of " + count + ", median", Median(first), kAddedMilliseconds);
  if (house.panels.size() == 1) return;
  AddTime(figures, "a row to panel " + count + ", added to the pauses, median", Median(last),
          kAddedMilliseconds);
}

void MeasureTakes(House& house, int rounds, bench::Figures& figures) {
  const std::string what = "a panel's take to the line, median";
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    house.panels[0].Send("FE 24 00 05 00 07 00 30 FF");
    const auto sent = Clock::now();
    const auto arrived = house.line.WaitForTake(milliseconds(2000));
    if (!arrived) {
      figures.AddMissing(what, "a take was lost");
      return;
    }
    times.push_back(Milliseconds(*arrived - sent));
    std::this_thread::sleep_for(milliseconds(20 + round % 7));
  }
  AddTime(figures, what, Median(times), kAddedMilliseconds);
}

// The times in which the console's event loop answers.
std::vector<double> Answers(House& house, milliseconds duration) {
  std::vector<double> times;
  for (const auto start = Clock::now(); Clock::now() - start < duration;) {
    const auto asked = Clock::now();
    (void)house.console->Property("sbStatusBar_1", "text");
    times.push_back(Milliseconds(Clock::now() - asked));
  }
  return times;
}

void MeasureHolding(House& house, milliseconds duration, bench::Figures& figures) {
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
  const std::vector<double> times = Answers(house, duration);
  ending = true;
  traffic.join();
  AddTime(figures,
          "event loop held, busy panels: " + std::to_string(house.panels.size()) + ", longest",
          Greatest(times), kHeldMilliseconds);
}

void AddFrames(bench::Suite& suite) {
  constexpr auto kMicroseconds = benchmark::kMicrosecond;
  for (const int channels : {64, 256}) {
    const auto add = [&suite, channels](const std::string& what, const bench::Suite::Function& run,
                                        benchmark::TimeUnit unit) {
      suite.Measure({.what = "panels: " + what + ", " + std::to_string(channels) + " channels",
                     .run = run,
                     .size = channels,
                     .unit = unit});
    };
    add("a row of the map as a frame", MapRow, kMicroseconds);
    add("the map as a frame", Map, kMicroseconds);
    add("the labels as a frame", Labels, kMicroseconds);
    add("the list of stations as a frame", StationList, kMicroseconds);
    add("the button programming as a frame", Buttons, kMicroseconds);
    add("500 requests for everything, from one panel", Requests, benchmark::kMillisecond);
  }
}

void MeasureConsole(bench::Figures& figures, bool quick) {
  const int rounds = quick ? 5 : 40;
  const milliseconds duration{quick ? 1000 : 4000};
  House house;
  if (!house.line.IsUp()) {
    figures.AddMissing("panels", "the console does not come up");
    return;
  }
  AddTime(figures, "event loop held with nothing to do, longest",
          Greatest(Answers(house, duration)), kHeldMilliseconds);
  for (const std::size_t count : {1U, 4U, 16U}) {
    if (!house.Fill(count)) {
      figures.AddMissing("panels", "a panel was not served");
      return;
    }
    MeasureRows(house, rounds, figures);
    if (count == 1) MeasureTakes(house, rounds, figures);
    MeasureHolding(house, duration, figures);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  bench::Suite suite(&argc, argv);
  AddFrames(suite);
  suite.Run();
  MeasureConsole(suite.AllFigures(), suite.Quick());
  return suite.Finish();
}
