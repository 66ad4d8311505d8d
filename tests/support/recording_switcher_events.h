// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_
#define TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_

#include <string>
#include <vector>

#include "switcher/switcher_events.h"

namespace test {

// Keeps what the decoders announce, in order: "row 5 mode 0", "gains", "tally", "labels 20",
// "inhibits 5", "relays 5", "buttons 5", "optos", and for the history
// "Output 5 Crosspoint Map|11|OK".
class RecordingSwitcherEvents : public switcher::SwitcherEvents, public switcher::MessageHistory {
 public:
  void CrosspointRowChanged(int output, int mode) override {
    seen.push_back("row " + std::to_string(output) + " mode " + std::to_string(mode));
  }
  void GainsChanged() override { seen.emplace_back("gains"); }
  void TallyChanged() override { seen.emplace_back("tally"); }
  void LabelsChanged(int selector) override {
    seen.push_back("labels " + std::to_string(selector));
  }
  void InhibitsChanged(int output) override {
    seen.push_back("inhibits " + std::to_string(output));
  }
  void RelaysChanged(int output) override { seen.push_back("relays " + std::to_string(output)); }
  void ButtonsChanged(int station) override {
    seen.push_back("buttons " + std::to_string(station));
  }
  void OptosChanged() override { seen.emplace_back("optos"); }
  void MessageRefused(std::string_view description, switcher::DecodeStatus status) override {
    refused.push_back(std::string(description) + "|" + std::to_string(static_cast<int>(status)));
  }
  void UpdateStatus(std::string_view description, int byteCount,
                    switcher::DecodeStatus status) override {
    seen.push_back(std::string(description) + "|" + std::to_string(byteCount) + "|" +
                   std::string(switcher::StatusWord(status)));
  }

  std::vector<std::string> seen;
  std::vector<std::string> refused;  // "Output 5 Crosspoint Map|1"
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_SWITCHER_EVENTS_H_
