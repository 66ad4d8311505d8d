// SPDX-License-Identifier: MIT

#ifndef TESTS_TESKSIM_SIMULATED_LINE_H_
#define TESTS_TESKSIM_SIMULATED_LINE_H_

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/hex.h"
#include "tools/tesksim/simulator.h"

namespace tesksim {

// A console's end of a line to a simulator, with a clock that runs only when told to.
class SimulatedLine {
 public:
  explicit SimulatedLine(const SystemSizes& sizes, const Simulator::Options& options = {})
      : simulator(SwitcherState(sizes), options, now,
                  [this](const std::string& line) { log.push_back(line); }) {
    simulator.SetLogging(true);
  }

  // The console sends these bytes now.
  void Send(std::string_view hex) { simulator.Receive(test::FromHex(hex), now); }

  // Lets time pass, waking the simulator when it asks for it, and returns what came.
  Bytes Run(std::chrono::nanoseconds span) {
    const Time end = now + span;
    Bytes received;
    for (;;) {
      const Bytes bytes = simulator.TakeOutput(now);
      received.insert(received.end(), bytes.begin(), bytes.end());
      if (now == end) return received;
      const auto next = simulator.NextTime();
      now = next.has_value() ? std::clamp(*next, now, end) : end;
    }
  }

  // What comes in ten seconds, as "F3 00 FF".
  std::string Answer() { return test::Hex(Run(std::chrono::seconds(10))); }

  std::string Ask(std::string_view hex) {
    Send(hex);
    return Answer();
  }

  void SetFault(std::string_view name, int value) {
    for (const FaultSetting& setting : kFaultSettings) {
      if (setting.name == name) simulator.SetFault(setting, value, now);
    }
  }

  Time now{};
  std::vector<std::string> log;
  Simulator simulator;
};

}  // namespace tesksim

#endif  // TESTS_TESKSIM_SIMULATED_LINE_H_
