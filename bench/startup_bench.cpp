// SPDX-License-Identifier: MIT
//
// The console as a process, beside an empty window of the same toolkit:
//   start     from starting the process until its event loop answers with the window shown
//   memory    resident after the start
//   idle      CPU time of ten seconds with the link up and nothing happening, for each second
// The console has an existing database and a simulated switcher on its line.  Medians of nine
// starts, three with --quick.  What a journal costs is the median of what each start with it took
// longer than the one without it beside it, so that a busy machine says the same.

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "bench/figures.h"
#include "stations/journal/act.h"
#include "stations/journal/journal.h"
#include "tests/end_to_end/console_process.h"
#include "tests/support/simulator_process.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kIdleSeconds = 10;
constexpr char kEmptyWindow[] = "an empty Qt window";

struct Sample {
  double startMilliseconds = 0;
  double residentMegabytes = 0;
};

// CPU time of a process so far, in milliseconds.
double CpuMilliseconds(qint64 process) {
  double sum = 0;
  for (const auto& thread :
       std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    std::ifstream stat(thread.path() / "schedstat");
    double nanoseconds = 0;
    stat >> nanoseconds;
    sum += nanoseconds;
  }
  return sum / 1e6;
}

Sample StartOnce(const test::ConsoleFolder& folder) {
  const auto start = Clock::now();
  test::ConsoleProcess console(folder);
  Sample sample;
  sample.startMilliseconds =
      std::chrono::duration<double, std::milli>(Clock::now() - start).count();
  QThread::msleep(300);
  sample.residentMegabytes = console.ResidentMegabytes();
  console.Terminate();
  return sample;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Sample Median(const std::vector<Sample>& samples) {
  const auto median = [&](double Sample::*member) {
    std::vector<double> values;
    for (const Sample& sample : samples) values.push_back(sample.*member);
    return Median(std::move(values));
  };
  return {.startMilliseconds = median(&Sample::startMilliseconds),
          .residentMegabytes = median(&Sample::residentMegabytes)};
}

// A journal as large as one gets, of a run that was saved or of one that was not.
void PutJournal(const test::ConsoleFolder& folder, bool isSaved) {
  constexpr std::size_t kBytes = 2'000'000;
  stations::Journal journal(folder / "Tesk.journal");
  bool made = journal.Read().ok();
  journal.SetBeginning("{}");
  const std::string act = stations::WriteAct(
      {.title = "Label of station 17",
       .time = "2026-11-21T18:05:12+01:00",
       .changes = {{stations::Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}}}}});
  // With what stands before it in its line.
  for (std::size_t bytes = 0; made && bytes < kBytes; bytes += act.size() + 20) {
    made = journal.AddAct(act).ok();
  }
  if (made && isSaved) {
    made = journal.EndRun(journal.ThisRun(), stations::JournalLine::Kind::Saved, "{}").ok();
  }
  if (!made) std::abort();
}

// How much longer a start takes with such a journal.
double LongerWithJournal(const test::ConsoleFolder& without, const std::string& line, bool isSaved,
                         int runs) {
  const test::ConsoleFolder with;
  with.WriteSettings(line);
  StartOnce(with);  // creates the database
  PutJournal(with, isSaved);
  std::vector<double> longer;
  for (int run = 0; run < runs; ++run) {
    const double before = StartOnce(without).startMilliseconds;
    const double journal = StartOnce(with).startMilliseconds;
    const double after = StartOnce(without).startMilliseconds;
    longer.push_back(journal - (before + after) / 2);
  }
  return Median(std::move(longer));
}

// The folder with another program in the console's place.
void PutEmptyWindow(const test::ConsoleFolder& folder) {
  namespace fs = std::filesystem;
  fs::copy_file(fs::path(TESK_EMPTY_WINDOW), folder / "teskctl",
                fs::copy_options::overwrite_existing);
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  bench::Figures figures(&argc, argv);
  const int runs = figures.Quick() ? 3 : 9;

  const test::ConsoleFolder folder;
  const std::string line = folder / "line";
  folder.WriteSettings(line);
  test::SimulatorProcess simulator({"--log", "--link", line});
  const test::ConsoleFolder emptyFolder;
  PutEmptyWindow(emptyFolder);

  StartOnce(folder);  // creates the database
  StartOnce(emptyFolder);
  std::vector<Sample> console;
  std::vector<Sample> empty;
  for (int run = 0; run < runs; ++run) {
    console.push_back(StartOnce(folder));
    empty.push_back(StartOnce(emptyFolder));
  }
  const Sample ours = Median(console);
  const Sample floor = Median(empty);

  test::ConsoleProcess idle(folder);
  simulator.WaitForLine("rx poll tally");
  QThread::sleep(3);
  const double before = CpuMilliseconds(idle.Id());
  QThread::sleep(kIdleSeconds);
  const double idleMilliseconds = CpuMilliseconds(idle.Id()) - before;
  idle.Terminate();

  figures.Add({.what = "console: start to shown window, with a database (wall)",
               .value = ours.startMilliseconds,
               .unit = "ms",
               .limit = 150,
               .other = bench::Other{.name = kEmptyWindow, .value = floor.startMilliseconds}});
  for (const bool isSaved : {true, false}) {
    figures.Add({.what = std::string("console: start, longer with a journal of 2 MB") +
                         (isSaved ? " (wall)" : " that is not saved (wall)"),
                 .value = LongerWithJournal(folder, line, isSaved, runs),
                 .unit = "ms",
                 .limit = 10});
  }
  figures.Add({.what = "console: resident after the start",
               .value = ours.residentMegabytes,
               .unit = "MB",
               .limit = 60,
               .other = bench::Other{.name = kEmptyWindow, .value = floor.residentMegabytes}});
  // Asleep but for the poll and what it makes the console look at.
  figures.Add({.what = "console: CPU of an idle second, link up",
               .value = idleMilliseconds / kIdleSeconds,
               .unit = "ms",
               .limit = 1});
  return figures.Finish();
}
