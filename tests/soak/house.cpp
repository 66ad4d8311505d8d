// SPDX-License-Identifier: MIT

#include "tests/soak/house.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

#include "tests/end_to_end/system_database.h"

namespace soak {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using namespace std::chrono_literals;

namespace {

// What the system says that a thread was ready to go on and others had the processor; nothing where
// it does not say.
nanoseconds WaitedForProcessor(const std::string& thread) {
  std::ifstream times("/proc/" + thread + "/schedstat");
  std::int64_t worked = 0;
  std::int64_t waited = 0;
  times >> worked >> waited;
  return nanoseconds(waited);
}

}  // namespace

milliseconds Since(Clock::time_point start) {
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

House::House(Clock::duration time, int patience, const std::string& settings, int channels)
    : time_(time), patience_(patience), channels_(channels) {
  std::vector<std::string> arguments{"--log", "--link", line_};
  if (channels != 64) {
    test::CreateSystem(folder_ / "Tesk.mdb", channels, 1);
    // The operator takes on this output.
    test::SetField(folder_ / "Tesk.mdb", 60, "Inhibits", jet::Value(std::string(64, '0')));
    const std::string count = std::to_string(channels);
    arguments.insert(arguments.end(), {"--channels", count});
  }
  simulator_ = std::make_unique<test::SimulatorProcess>(arguments);
  folder_.WriteSettings(line_, settings);
  console_ = std::make_unique<test::ConsoleProcess>(folder_);
  up_ = console_->IsUp() && simulator_->WaitForLine("rx poll tally").has_value();
  // Only a switcher that reports its tally is watched.
  simulator_->Command("send-tally");
  up_ = up_ && simulator_->WaitForLine("rx poll keep-alive").has_value();
  atFirst_ = console_->ResidentMegabytes();
}

bool House::IsLeftAlone() {
  const auto isNobodyOn = [this](const char* count) {
    const QString text = console_->Property(count, "text").toString();
    return text.isEmpty() || text.endsWith(QLatin1String(" 0"));
  };
  const bool isLeft = test::ConsoleProcess::WaitFor(
      [&] { return isNobodyOn("aidControllers") && isNobodyOn("aidPanels"); }, kLost);
  if (!isLeft) std::printf("  those who attacked before are still there  FAILED\n");
  return isLeft;
}

bool House::Check(const char* what, milliseconds measured, milliseconds limit) const {
  const bool ok = measured <= limit * patience_;
  std::printf("  %-44s %6lld ms%s\n", what, static_cast<long long>(measured.count()),
              ok ? "" : "  FAILED");
  return ok;
}

bool House::CheckCount(const char* what, int counted, int least, int most) {
  const bool ok = counted >= least && counted <= most;
  std::printf("  %-44s %6d%s\n", what, counted, ok ? "" : "  FAILED");
  return ok;
}

// On a busy machine the greater part is what the two that talk to each other wait for a processor.
// They may do so at the same time, so only the longer of the two waits is taken off: so long nobody
// got on for certain.
milliseconds House::Look() {
  const auto console = std::to_string(console_->Id());
  const nanoseconds consoleBefore = WaitedForProcessor(console);
  const nanoseconds ownBefore = WaitedForProcessor("thread-self");
  const auto start = Clock::now();
  if (console_->LinkText().empty()) return kLost;
  const auto end = Clock::now();
  const auto look = end - start -
                    std::max(WaitedForProcessor(console) - consoleBefore,
                             WaitedForProcessor("thread-self") - ownBefore);
  return std::max(std::chrono::duration_cast<milliseconds>(look), 0ms);
}

// In one go, so that all of it is of the same time.  It ends with the first poll after the time,
// and no take is left on its way.
Service House::Work() {
  Service service;
  while (simulator_->WaitForLine("rx ", 0ms)) {
    // What came before is over.
  }
  const auto start = Clock::now();
  auto polled = start;
  auto taken = start;  // the operator's last one: asked for, then on the line
  std::optional<std::string> awaited;
  bool isPolled = false;
  // A poll that falls due while a command leaves waits for the next second.
  bool mayBePutOff = false;
  const auto note = [&](const std::string& line) {
    if (line.starts_with("rx poll keep-alive")) {
      const milliseconds silence = Since(polled) - (mayBePutOff ? 1000ms : 0ms);
      service.longestSilence = std::max(service.longestSilence, silence);
      mayBePutOff = false;
      polled = Clock::now();
      isPolled = polled - start >= time_;
    } else if (awaited && line.starts_with(*awaited)) {
      service.longestTake = std::max(service.longestTake, Since(taken));
      taken = Clock::now();
      awaited.reset();
    } else if (line.starts_with("rx take ")) {
      ++service.takesOfOthers;
    }
  };
  while (!isPolled || awaited) {
    if (!awaited && Clock::now() - start < time_ && Since(taken) >= 150ms) {
      // Through all of them: when the reports of rows are late the map still has one as made that
      // was taken not long ago, and what is made is not sent.
      input_ = input_ % channels_ + 1;
      awaited = "rx take output 60 source " + std::to_string(input_) + " ";
      taken = Clock::now();
      mayBePutOff = mayBePutOff || Since(polled) >= 800ms;
      console_->Use("ID_Take", 60, input_);
    }
    service.longestLook = std::max(service.longestLook, Look());
    for (auto line = simulator_->WaitForLine("rx ", 5ms); line;
         line = simulator_->WaitForLine("rx ", 0ms)) {
      note(*line);
    }
    if (awaited && Since(taken) >= kLost) service.longestTake = kLost;
    if (Since(polled) >= kLost) service.longestSilence = kLost;
    if (service.longestTake >= kLost || service.longestSilence >= kLost ||
        service.longestLook >= kLost) {
      break;
    }
  }
  return service;
}

Attack::Attack(milliseconds pause, std::function<void()> blow)
    : thread_([this, pause, blow = std::move(blow)] {
        while (!ending_) {
          blow();
          std::this_thread::sleep_for(pause);
        }
      }) {}

Attack::~Attack() {
  ending_ = true;
  thread_.join();
}

Options::Options(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 20;
  time = std::chrono::duration_cast<Clock::duration>(
      std::chrono::duration<double>(std::max(seconds, 0.1)));
  if (argc > 2) patience = std::max(std::atoi(argv[2]), 1);
  if (argc > 3) only = argv[3];
}

}  // namespace soak
