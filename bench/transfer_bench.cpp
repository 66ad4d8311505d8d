// SPDX-License-Identifier: MIT
//
// The whole configuration to the switcher and back, with the real console on the real simulator
// at the pace of 57600 baud, beside what the line itself takes:
//   download   from OK until the last message is in; the line's time and the pauses
//   retrieval  from OK until the window says completed; the line's time and the delay
// The line carries 5760 bytes a second.
//
// transfer_bench [CHANNELS...]: systems of these sizes (default 64 256).

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr double kBytesPerSecond = 5760;
constexpr double kPauseSeconds = 0.05;
constexpr double kDelaySeconds = 0.5;
constexpr int kPausesBeforeButtons = 4;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// A number out of the simulator's "stats".
double Stat(test::SimulatorProcess& simulator, const std::string& name) {
  const std::string stats = simulator.Command("stats");
  const std::size_t at = stats.find(" " + name + " ");
  return at == std::string::npos ? 0 : std::stod(stats.substr(at + name.size() + 2));
}

void Print(const char* what, int channels, double bytes, double seconds, double lineSeconds,
           double waits) {
  std::printf("%-9s %4d channels %7.0f bytes  %7.2f s   line %7.2f s + waits %5.2f s   %.3f\n",
              what, channels, bytes, seconds, lineSeconds, waits, seconds / (lineSeconds + waits));
}

bool Run(int channels) {
  const test::ConsoleFolder folder;
  const std::string line = folder / "line";
  folder.WriteSettings(line);
  test::CreateSystem(folder / "Tesk.mdb", channels, 1);
  const std::string count = std::to_string(channels);
  test::SimulatorProcess simulator({"--channels", count, "--stations", count, "--labels",
                                    std::to_string(test::LabelsOf(channels)), "--log", "--link",
                                    line});
  test::ConsoleProcess console(folder);
  if (!console.IsUp() || !simulator.WaitForLine("rx poll keep-alive", 120s)) return false;

  console.Trigger("ID_SendData");
  if (!test::ConsoleProcess::WaitFor([&] { return console.IsShown("cmdDownGo"); })) return false;
  double before = Stat(simulator, "rx-bytes");
  auto start = Clock::now();
  console.Click("cmdDownGo");
  if (!simulator.WaitForLine("rx buttons station " + count, 600s)) return false;
  const double download = SecondsSince(start);
  double bytes = Stat(simulator, "rx-bytes") - before;
  Print("download", channels, bytes, download, bytes / kBytesPerSecond,
        (kPausesBeforeButtons + channels - 1) * kPauseSeconds);
  test::ConsoleProcess::WaitFor([&] { return !console.IsShown("frmDownProg"); });

  console.Trigger("ID_RetreiveData");
  if (!test::ConsoleProcess::WaitFor([&] { return console.IsShown("cmdOkSysInf"); })) return false;
  before = Stat(simulator, "tx-bytes");
  start = Clock::now();
  console.Click("cmdOkSysInf");
  const bool completed = test::ConsoleProcess::WaitFor(
      [&] {
        return console.Property("frmSysInfo", "windowTitle")
            .toString()
            .startsWith(QLatin1String("Retrieval Completed"));
      },
      600s);
  if (!completed) return false;
  const double retrieval = SecondsSince(start);
  bytes = Stat(simulator, "tx-bytes") - before;
  Print("retrieval", channels, bytes, retrieval, bytes / kBytesPerSecond, kDelaySeconds);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  std::vector<int> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
  if (sizes.empty()) sizes = {64, 256};
  for (const int channels : sizes) {
    if (!Run(channels)) {
      std::fprintf(stderr, "no result for %d channels\n", channels);
      return 1;
    }
  }
  return 0;
}
