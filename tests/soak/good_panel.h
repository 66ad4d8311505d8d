// SPDX-License-Identifier: MIT

#ifndef TESTS_SOAK_GOOD_PANEL_H_
#define TESTS_SOAK_GOOD_PANEL_H_

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/raw_panel.h"

namespace soak {

// A panel as it should be: says what it is, asks for the map, keeps it up to date from the
// rows that it is sent, polls every two seconds.
class GoodPanel {
 public:
  explicit GoodPanel(int port) : socket_(port) {}

  // Handles what has arrived and polls when it is time.  False once the console has ended the
  // connection.
  bool Step();

  // Makes or breaks a crosspoint (both from 1, at most 64).
  void Take(int output, int input, bool make);

  // The sources of an output as this panel knows them: "3 17", "none", or "(unknown)".
  std::string Row(int output) const;

  // The longest time so far between a poll and its answer.
  std::chrono::milliseconds LongestAnswer() const { return longest_; }

 private:
  using Clock = test::RawPanel::Clock;

  void Handle(const std::vector<std::uint8_t>& frame);
  void ReadMap(const std::vector<std::uint8_t>& frame);

  test::RawPanel socket_;
  std::vector<std::string> rows_ = std::vector<std::string>(65, "(unknown)");
  Clock::time_point polled_{};
  bool asked_ = false;  // what it is; before, polls are not answered
  bool waiting_ = false;
  std::chrono::milliseconds longest_{0};
};

}  // namespace soak

#endif  // TESTS_SOAK_GOOD_PANEL_H_
