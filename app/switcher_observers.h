// SPDX-License-Identifier: MIT

#ifndef APP_SWITCHER_OBSERVERS_H_
#define APP_SWITCHER_OBSERVERS_H_

#include <utility>
#include <vector>

#include "switcher/switcher_events.h"

namespace app {

// Passes on what the decoders announce to each observer, in the order of the list.
class SwitcherObservers : public switcher::SwitcherEvents {
 public:
  // All must outlive the object.
  explicit SwitcherObservers(std::vector<switcher::SwitcherEvents*> observers)
      : observers_(std::move(observers)) {}

  void CrosspointRowChanged(int output, int mode) override {
    for (SwitcherEvents* const each : observers_) each->CrosspointRowChanged(output, mode);
  }
  void GainsChanged() override {
    for (SwitcherEvents* const each : observers_) each->GainsChanged();
  }
  void TallyChanged() override {
    for (SwitcherEvents* const each : observers_) each->TallyChanged();
  }
  void LabelsChanged(int selector) override {
    for (SwitcherEvents* const each : observers_) each->LabelsChanged(selector);
  }
  void InhibitsChanged(int output) override {
    for (SwitcherEvents* const each : observers_) each->InhibitsChanged(output);
  }
  void RelaysChanged(int output) override {
    for (SwitcherEvents* const each : observers_) each->RelaysChanged(output);
  }
  void ButtonsChanged(int station) override {
    for (SwitcherEvents* const each : observers_) each->ButtonsChanged(station);
  }
  void OptosChanged() override {
    for (SwitcherEvents* const each : observers_) each->OptosChanged();
  }
  void MessageRefused(std::string_view description, switcher::DecodeStatus status) override {
    for (SwitcherEvents* const each : observers_) each->MessageRefused(description, status);
  }

 private:
  const std::vector<switcher::SwitcherEvents*> observers_;
};

}  // namespace app

#endif  // APP_SWITCHER_OBSERVERS_H_
