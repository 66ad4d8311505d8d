// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_PROTOCOL_H_
#define GATEWAY_PANEL_PROTOCOL_H_

#include <cstdint>
#include <span>

#include "gateway/client_table.h"
#include "gateway/panel_requests.h"
#include "gateway/panel_takes.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/system_model.h"

namespace gateway {

// Takes frames off the clients' receive buffers and does what they ask for.
class PanelProtocol {
 public:
  // After so many decode ticks without traffic to or from anybody, frames that have not arrived
  // whole are thrown away.
  static constexpr int kIdleTicks = 201;

  // After so many ticks, half a minute, such a frame is thrown away whatever the traffic.
  static constexpr int kUnfinishedTicks = 6000;

  // A take that has not arrived whole is reported with every tick.  After so many reports its
  // client is dropped, unless a whole frame has come between them.
  static constexpr int kMostTakeReports = 400;

  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    ClientTable& clients;
    SendQueue& queue;
    PanelRequests& requests;
    PanelTakes& takes;
    model::ErrorReporter& reporter;
  };
  explicit PanelProtocol(const Services& services) : services_(services) {}

  // Decodes at most one frame of every client that has sent something, in ascending order, and
  // throws away what will not become a frame any more.  To be called once per decode tick.  False
  // when there was no work.
  bool DecodeClients();

 private:
  // Takes at most one frame off the slot's RxData and handles it.  Bytes that cannot begin a
  // frame are dropped, one per call.
  // REQUIRES: the slot's RxData is not empty
  void DecodeClientMessage(int slot);

  void HandleByte(std::uint8_t byte, int slot);
  void HandleFrame(std::span<const std::uint8_t> frame, int slot);
  void WaitForEnd(int slot);
  void FlushUnfinished();
  void AnswerPoll(int slot);
  bool IsLinkUp() const { return services_.model.LinkStatus[0] == 1; }

  const Services services_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_PROTOCOL_H_
