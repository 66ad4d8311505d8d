// SPDX-License-Identifier: MIT

#ifndef APP_PANEL_FORWARDING_H_
#define APP_PANEL_FORWARDING_H_

#include "gateway/panel_gateway.h"
#include "switcher/switcher_events.h"

namespace app {

// Passes on what the switcher reports: first to the open views, then, if panels are to know it,
// to all panels.
class PanelForwarding : public switcher::SwitcherEvents {
 public:
  // Both must outlive the object.
  PanelForwarding(switcher::SwitcherEvents& views, gateway::PanelGateway& panels)
      : views_(views), panels_(panels) {}

  void CrosspointRowChanged(int output, int mode) override;
  void GainsChanged() override { views_.GainsChanged(); }
  void TallyChanged() override { views_.TallyChanged(); }
  void LabelsChanged(int selector) override;
  void InhibitsChanged(int output) override { views_.InhibitsChanged(output); }
  void RelaysChanged(int output) override { views_.RelaysChanged(output); }
  void ButtonsChanged(int station) override;
  void OptosChanged() override { views_.OptosChanged(); }
  void MessageRefused(std::string_view description, switcher::DecodeStatus status) override {
    views_.MessageRefused(description, status);
  }

 private:
  switcher::SwitcherEvents& views_;
  gateway::PanelGateway& panels_;
};

}  // namespace app

#endif  // APP_PANEL_FORWARDING_H_
