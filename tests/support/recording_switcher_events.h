// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_
#define TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_

#include <string>
#include <vector>

#include "switcher/switcher_events.h"

namespace test {

// Keeps what the decoders announce, in order: "row 5 mode 0", "gains", "tally", and for the
// history "Output 5 Crosspoint Map|11|OK".
class RecordingSwitcherEvents : public switcher::SwitcherEvents, public switcher::MessageHistory {
 public:
  void CrosspointRowChanged(int output, int mode) override {
    seen.push_back("row " + std::to_string(output) + " mode " + std::to_string(mode));
  }
  void GainsChanged() override { seen.emplace_back("gains"); }
  void TallyChanged() override { seen.emplace_back("tally"); }
  void UpdateStatus(std::string_view description, int byteCount,
                    switcher::DecodeStatus status) override {
    seen.push_back(std::string(description) + "|" + std::to_string(byteCount) + "|" +
                   std::string(switcher::StatusWord(status)));
  }

  std::vector<std::string> seen;
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_
