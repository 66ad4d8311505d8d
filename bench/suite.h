// SPDX-License-Identifier: MIT

#ifndef BENCH_SUITE_H_
#define BENCH_SUITE_H_

#include <benchmark/benchmark.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/figures.h"

namespace bench {

// The measurements of one program, timed by Google Benchmark, each with what it is called in the
// table of figures and what it is held against.
//
// In the table stands the median of three repetitions; with --quick there is one short one.
class Suite {
 public:
  using Function = std::function<void(benchmark::State&)>;

  enum class Clock {
    Cpu,   // what other programs on the machine hardly change
    Wall,  // for what happens in other processes
  };

  struct Measurement {
    std::string what;
    Function run;
    std::optional<std::int64_t> size = {};  // what run() finds in state.range(0)
    benchmark::TimeUnit unit = benchmark::kMillisecond;
    std::optional<double> limit = {};
  };

  // The same done by something else.
  struct Rival {
    std::string name;
    Function run;
    std::optional<double> ratioLimit = {};
  };

  // Takes its own options and those of Google Benchmark out of the command line.
  Suite(int* argc, char** argv);
  ~Suite();
  Suite(const Suite&) = delete;
  Suite& operator=(const Suite&) = delete;

  bool Quick() const { return figures_.Quick(); }

  // For figures that are measured in another way; those of the measurements come with Run().
  Figures& AllFigures() { return figures_; }

  // Adds a measurement, and its figure to the table.
  void Measure(const Measurement& measurement, Clock clock = Clock::Cpu);

  // The same with something to compare it with, measured right after it.
  void Compare(const Measurement& measurement, const Rival& rival, Clock clock = Clock::Cpu);

  // Adds a measurement that is no figure of its own; its time is TimeOf(what) after Run().
  void MeasureOnly(const Measurement& measurement, Clock clock = Clock::Cpu);

  // Runs the measurements that the command line asks for, all of them without --benchmark_filter.
  void Run();

  // In the unit of the measurement; none when it was not asked for or did not come off.
  std::optional<double> TimeOf(const std::string& what) const;

  // The exit status of the program; see Figures.
  int Finish() const { return figures_.Finish(); }

 private:
  class Reporter;
  struct Planned {
    Measurement measurement;
    std::optional<Rival> rival;
  };

  static Measurement RivalOf(const Planned& planned);

  Figures figures_;
  std::vector<Planned> planned_;
  std::map<std::string, std::vector<double>> times_;  // of each repetition
  std::map<std::string, std::string> errors_;
};

}  // namespace bench

#endif  // BENCH_SUITE_H_
