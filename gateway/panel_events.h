// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_EVENTS_H_
#define GATEWAY_PANEL_EVENTS_H_

#include <cstdint>
#include <string>

#include "gateway/take_frame.h"

namespace gateway {

// Why the console drops a panel.
enum class DropReason : std::uint8_t {
  Unidentified,    // it did not say what it is, and all connections are taken
  EndlessFrame,    // it sent a frame that does not end
  UnfinishedTake,  // it began a take and did not end it, and was reported for that often enough
  DoesNotRead,     // it does not read what it is sent
};

// Which panel: its slot, from 1, and its address.
struct PanelName {
  int slot = 0;
  std::string address;

  bool operator==(const PanelName&) const = default;
};

// What happens to network panels.  Who is told overrides what concerns it.
class PanelEvents {
 public:
  virtual ~PanelEvents() = default;

  // A panel has connected.  What it is it has not said yet.
  virtual void PanelConnected(const PanelName& /*panel*/) {}

  // A panel has said that it is of this connection `type`, for the first time or another than
  // before; IsAcceptedType() says whether it is served.
  virtual void PanelIdentified(const PanelName& /*panel*/, int /*type*/) {}

  // A panel's take has been handed to the line.
  virtual void PanelTook(const PanelName& /*panel*/, const PanelTake& /*take*/) {}

  // A panel's take was not passed on: none are taken from its address.
  virtual void PanelMayNotTake(const PanelName& /*panel*/, const PanelTake& /*take*/) {}

  // A panel's take was not passed on: its output is locked for panels.
  virtual void PanelTakeIgnored(const PanelName& /*panel*/, const PanelTake& /*take*/) {}

  // The console drops a panel: the operator may want to know but need not act on it.
  // PanelGone() follows.
  virtual void PanelDropped(const PanelName& /*panel*/, DropReason /*reason*/) {}

  // The connection of a panel has ended.
  virtual void PanelGone(const PanelName& /*panel*/) {}
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_EVENTS_H_
