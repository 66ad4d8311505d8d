// SPDX-License-Identifier: MIT

#ifndef GATEWAY_PANEL_SENDERS_H_
#define GATEWAY_PANEL_SENDERS_H_

#include <functional>

#include "db/database_files.h"
#include "db/table.h"
#include "gateway/send_queue.h"
#include "model/error_reporter.h"
#include "model/system_model.h"

namespace gateway {

// Sends map, labels and programming to one panel, or with model::kAll as the slot to all of them.
//
// The map and its rows are sent as they are now: what the switcher says later and is refused for
// does not change what waits.  A table is built when its turn comes, once for all slots that it
// goes to, because that takes milliseconds: many panels that ask at once do not hold the event
// loop.
class PanelSenders {
 public:
  // All must outlive the object.
  struct Services {
    const model::SystemModel& model;
    const db::DatabaseFiles& files;
    SendQueue& queue;
    model::ErrorReporter& reporter;
  };
  explicit PanelSenders(const Services& services) : services_(services) {}

  // The map rows of `count` channels from `first` on (from 1).  Channels that are not there are
  // reported, and nothing is sent.
  void SendCrosspointMapToClients(int first, int count, int slot);

  // The labels of the stations (kind 20) or of the inputs (any other kind, in practice 10).  When
  // they cannot be read that is reported when their turn comes.
  void SendAlphaTableToClients(int kind, int slot);

  // The list of stations, then the programming of their buttons, which is reported like the labels
  // when it cannot be read; the list goes out all the same.
  void SendStationProgrammingToClients(int slot);

 private:
  // The frame that `build` makes of the database; empty, and reported, when it cannot.
  Bytes BuildTable(db::Table table,
                   const std::function<model::Status(jet::Database&, Bytes*)>& build) const;

  const Services services_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_SENDERS_H_
