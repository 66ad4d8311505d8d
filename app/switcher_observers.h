// SPDX-License-Identifier: MIT

#ifndef APP_SWITCHER_OBSERVERS_H_
#define APP_SWITCHER_OBSERVERS_H_

#include "model/observers.h"
#include "switcher/switcher_events.h"

namespace app {

// Who is told of what the switcher reports.
struct SwitcherObservers {
  switcher::SwitcherEvents& knownMap;
  switcher::SwitcherEvents& unsent;
  switcher::SwitcherEvents& log;
  switcher::SwitcherEvents& aids;
  switcher::SwitcherEvents& views;
  switcher::SwitcherEvents& presets;
  switcher::SwitcherEvents& panels;
  switcher::SwitcherEvents& openGateway;
};

// The same in the order in which they are told: what is known first, because the others ask for it;
// the log before the views, so that its line of a row stands before those of what the views report
// about it; and who is on the network last.  All must outlive the result.
inline model::Observers<switcher::SwitcherEvents> InOrder(const SwitcherObservers& observers) {
  return {observers.knownMap, observers.unsent,  observers.log,    observers.aids,
          observers.views,    observers.presets, observers.panels, observers.openGateway};
}

}  // namespace app

#endif  // APP_SWITCHER_OBSERVERS_H_
