// SPDX-License-Identifier: MIT
//
// The whole configuration to the switcher and back, with the real console on the real simulator
// at the pace of 57600 baud, beside what the line itself takes at 5760 bytes a second:
//   download   from OK until the last message is in.  The terminal between the two takes some
//              20 kB ahead, so the pauses pass while the line is still busy.
//   retrieval  from OK until the window says completed; half a second passes before the request
//   comparison from the command until the window lists the differences, with the same half second
// Systems of 64 and of 256 channels; with --quick of 64 only.

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <string>

#include "bench/figures.h"
#include "tests/end_to_end/console_process.h"
#include "tests/end_to_end/system_database.h"
#include "tests/support/simulator_process.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr double kBytesPerSecond = 5760;
constexpr double kDelaySeconds = 0.5;

// So many times the line's own time.
constexpr double kTransferLimit = 1.05;
constexpr double kComparisonLimit = 1.03;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

void AddTransfer(bench::Figures& figures, const std::string& what, int channels, double bytes,
                 double seconds, double waits, double limit) {
  char kilobytes[32];
  std::snprintf(kilobytes, sizeof kilobytes, "%.1f kB", bytes / 1000);
  figures.Add({.what = "transfer: " + what + " of " + std::to_string(channels) + " channels, " +
                       kilobytes + " (wall)",
               .value = seconds,
               .unit = "s",
               .other = bench::Other{.name = "the line", .value = bytes / kBytesPerSecond + waits},
               .ratioLimit = limit});
}

bool Run(int channels, bench::Figures& figures) {
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
  double before = simulator.Stat("rx-bytes");
  auto start = Clock::now();
  console.Click("cmdDownGo");
  if (!simulator.WaitForLine("rx buttons station " + count, 600s)) return false;
  const double download = SecondsSince(start);
  double bytes = simulator.Stat("rx-bytes") - before;
  AddTransfer(figures, "download", channels, bytes, download, 0, kTransferLimit);
  test::ConsoleProcess::WaitFor([&] { return !console.IsShown("frmDownProg"); });

  console.Trigger("ID_RetreiveData");
  if (!test::ConsoleProcess::WaitFor([&] { return console.IsShown("cmdOkSysInf"); })) return false;
  before = simulator.Stat("tx-bytes");
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
  bytes = simulator.Stat("tx-bytes") - before;
  AddTransfer(figures, "retrieval", channels, bytes, retrieval, kDelaySeconds, kTransferLimit);
  console.CloseWindow("frmSysInfo");

  before = simulator.Stat("tx-bytes");
  start = Clock::now();
  console.Trigger("aidCompare");
  const bool compared = test::ConsoleProcess::WaitFor(
      [&] {
        return console.Property("aidCompareSummary", "text")
            .toString()
            .startsWith(QLatin1String("No difference in "));
      },
      600s);
  if (!compared) return false;
  const double comparison = SecondsSince(start);
  bytes = simulator.Stat("tx-bytes") - before;
  AddTransfer(figures, "comparison", channels, bytes, comparison, kDelaySeconds, kComparisonLimit);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  bench::Figures figures(&argc, argv);
  for (const int channels : {64, 256}) {
    if (channels > 64 && figures.Quick()) continue;
    if (!Run(channels, figures)) {
      figures.AddMissing("transfer: " + std::to_string(channels) + " channels", "it did not end");
    }
  }
  return figures.Finish();
}
