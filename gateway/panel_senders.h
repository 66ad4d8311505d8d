// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_SENDERS_H_
#define GATEWAY_PANEL_SENDERS_H_

#include <functional>
#include <map>
#include <utility>

#include "db/database_files.h"
#include "gateway/client_table.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/system_model.h"

namespace gateway {

// Sends map, labels and programming to one panel, or with model::kAll as the slot to all of
// them.  What goes to one slot clears that slot's pending flag when it has gone out.
//
// A panel is sent a table as often as it asks for it, but only one of a kind waits in the queue:
// each further one is queued when the one before it has gone out.  A table is built when its turn
// comes.  So panels that ask without a pause cost neither memory nor more work than can be sent,
// and the others wait for one of their tables at a time.
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

  // The connection of a slot has ended: what it asked for and has not been sent is forgotten.
  void Forget(int slot);

 private:
  // The frame that `build` makes of the database; empty, and reported, when it cannot.
  Bytes BuildTable(const std::function<model::Status(jet::Database&, Bytes*)>& build) const;

  bool Postpone(int slot, MessageId id);
  void SendPostponed(int slot, MessageId id);
  void OnSent(int slot, MessageId id);

  const model::SystemModel& model_;
  const db::DatabaseFiles& files_;
  ClientTable& clients_;
  SendQueue& queue_;
  model::ErrorReporter& reporter_;
  // How often each table is to be sent to a slot again; of the programming, its second frame.
  std::map<std::pair<int, MessageId>, int> postponed_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_SENDERS_H_
