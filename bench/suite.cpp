// SPDX-License-Identifier: MIT

#include "bench/suite.h"

#include <algorithm>
#include <utility>

namespace bench {

namespace {

std::string UnitText(benchmark::TimeUnit unit) {
  switch (unit) {
    case benchmark::kNanosecond:
      return "ns";
    case benchmark::kMicrosecond:
      return "µs";
    case benchmark::kMillisecond:
      return "ms";
    case benchmark::kSecond:
      return "s";
  }
  return "";
}

}  // namespace

// Prints as usual and keeps the times of every repetition.
class Suite::Reporter : public benchmark::ConsoleReporter {
 public:
  explicit Reporter(Suite& suite) : ConsoleReporter(OO_Tabular), suite_(suite) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    std::vector<Run> measured;
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const std::string& name = run.run_name.function_name;
      const bool isWall = !run.run_name.time_type.empty();
      if (run.error_occurred) {
        suite_.errors_[name] = run.error_message;
      } else {
        suite_.times_[name].push_back(isWall ? run.GetAdjustedRealTime()
                                             : run.GetAdjustedCPUTime());
      }
      measured.push_back(run);
      measured.back().run_name = {};
      measured.back().run_name.function_name = name;
    }
    ConsoleReporter::ReportRuns(measured);
  }

 private:
  Suite& suite_;
};

Suite::Suite(int* argc, char** argv) : figures_(argc, argv) { benchmark::Initialize(argc, argv); }

Suite::~Suite() { benchmark::Shutdown(); }

void Suite::MeasureOnly(const Measurement& measurement, Clock clock) {
  auto* const registered = benchmark::RegisterBenchmark(measurement.what.c_str(), measurement.run);
  registered->Unit(measurement.unit);
  if (measurement.size) registered->Arg(*measurement.size);
  if (clock == Clock::Wall) registered->UseRealTime();
  registered->MinTime(Quick() ? 0.05 : 0.2)->Repetitions(Quick() ? 1 : 3);
}

void Suite::Measure(const Measurement& measurement, Clock clock) {
  MeasureOnly(measurement, clock);
  planned_.push_back({.measurement = measurement, .rival = {}});
}

void Suite::Compare(const Measurement& measurement, const Rival& rival, Clock clock) {
  MeasureOnly(measurement, clock);
  planned_.push_back({.measurement = measurement, .rival = rival});
  MeasureOnly(RivalOf(planned_.back()), clock);
}

Suite::Measurement Suite::RivalOf(const Planned& planned) {
  Measurement measurement = planned.measurement;
  measurement.what += " (" + planned.rival->name + ")";
  measurement.run = planned.rival->run;
  return measurement;
}

void Suite::Run() {
  Reporter reporter(*this);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  for (const auto& [what, why] : errors_) figures_.AddMissing(what, why);
  for (const Planned& planned : planned_) {
    const Measurement& measurement = planned.measurement;
    const std::optional<double> own = TimeOf(measurement.what);
    if (!own) continue;
    Figure figure{.what = measurement.what,
                  .value = *own,
                  .unit = UnitText(measurement.unit),
                  .limit = measurement.limit};
    if (planned.rival) {
      const std::optional<double> other = TimeOf(RivalOf(planned).what);
      if (!other) continue;
      figure.other = Other{.name = planned.rival->name, .value = *other};
      figure.ratioLimit = planned.rival->ratioLimit;
    }
    figures_.Add(std::move(figure));
  }
}

std::optional<double> Suite::TimeOf(const std::string& what) const {
  const auto found = times_.find(what);
  if (found == times_.end() || errors_.contains(what)) return std::nullopt;
  std::vector<double> repetitions = found->second;
  const auto middle = repetitions.begin() + static_cast<std::ptrdiff_t>(repetitions.size() / 2);
  std::nth_element(repetitions.begin(), middle, repetitions.end());
  return *middle;
}

}  // namespace bench
