// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_SENDERS_H_
#define GATEWAY_PANEL_SENDERS_H_

#include "db/database_files.h"
#include "gateway/client_table.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/system_model.h"

namespace gateway {

// Sends map, labels and programming to one panel, or with model::kAll as the slot to all of
// them.  What goes to one slot clears that slot's pending flag when it has gone out.
class PanelSenders {
 public:
  // All must outlive the object.
  PanelSenders(const model::SystemModel& model, const db::DatabaseFiles& files,
               ClientTable& clients, SendQueue& queue, model::ErrorReporter& reporter);

  // The map rows of `count` channels from `first` on (from 1).
  void SendCrosspointMapToClients(int first, int count, int slot);

  // The labels of the stations (kind 20) or of the inputs (any other kind, in practice 10).
  void SendAlphaTableToClients(int kind, int slot);

  // The list of stations, then the programming of their buttons.
  void SendStationProgrammingToClients(int slot);

 private:
  void OnSent(int slot, MessageId id);

  const model::SystemModel& model_;
  const db::DatabaseFiles& files_;
  ClientTable& clients_;
  SendQueue& queue_;
  model::ErrorReporter& reporter_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_SENDERS_H_
