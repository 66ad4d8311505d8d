// SPDX-License-Identifier: MIT

#include "tests/soak/house.h"

#include <QTcpServer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>
#include <vector>

#include "tests/end_to_end/system_database.h"

namespace soak {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

milliseconds Since(Clock::time_point start) {
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

int FreePort() {
  QTcpServer server;
  return server.listen(QHostAddress::Any, 0) ? server.serverPort() : 0;
}

House::House(Clock::duration time, int patience, const std::string& settings, int channels)
    : time_(time), patience_(patience) {
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
}

bool House::Check(const char* what, milliseconds measured, milliseconds limit) const {
  const bool ok = measured <= limit * patience_;
  std::printf("  %-44s %6lld ms%s\n", what, static_cast<long long>(measured.count()),
              ok ? "" : "  FAILED");
  return ok;
}

milliseconds House::LongestTake() {
  milliseconds longest{0};
  int input = 0;
  for (const auto start = Clock::now(); Clock::now() - start < time_;) {
    input = input % 40 + 1;
    const auto asked = Clock::now();
    console_->Use("ID_Take", 60, input);
    const std::string line = "rx take output 60 source " + std::to_string(input);
    longest = std::max(longest, simulator_->WaitForLine(line, kLost) ? Since(asked) : kLost);
    std::this_thread::sleep_for(150ms);
  }
  return longest;
}

milliseconds House::LongestSilence() {
  milliseconds longest{0};
  for (const auto start = Clock::now(); Clock::now() - start < time_;) {
    const auto before = Clock::now();
    longest = std::max(
        longest, simulator_->WaitForLine("rx poll keep-alive", kLost) ? Since(before) : kLost);
  }
  return longest;
}

milliseconds House::LongestLook() {
  milliseconds longest{0};
  for (const auto start = Clock::now(); Clock::now() - start < time_;) {
    const auto before = Clock::now();
    if (console_->LinkText().empty()) return kLost;
    longest = std::max(longest, Since(before));
    std::this_thread::sleep_for(5ms);
  }
  return longest;
}

double House::Megabytes() {
  std::ifstream status("/proc/" + std::to_string(console_->Id()) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
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
