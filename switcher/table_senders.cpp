// SPDX-License-Identifier: MIT

#include "switcher/table_senders.h"

#include "db/keep_position.h"
#include "db/schema.h"
#include "switcher/messages/inhibit_row.h"
#include "switcher/send.h"

namespace switcher {

bool TableSenders::SendInhibits(int station) {
  model_.SendBusy = true;
  const bool all = station == model::kAll;
  const model::Status status =
      SendInhibitRows(all ? 1 : station, all ? model_.ChannelCount : station);
  if (!status.ok()) {
    reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                   ErrorText("Error Sending Inhibits Table", status));
    return false;
  }
  port_.SetSendThreshold(1);
  return true;
}

model::Status TableSenders::SendInhibitRows(int first, int last) {
  if (!files_.IsOpen()) return db::NotOpen();
  jet::RecordSet& stations = *files_.Stations();
  const db::KeepPosition keep(stations);
  if (jet::Status status = stations.SetIndex(db::kStationNumIndex); !status.ok()) return status;
  for (int output = first; output <= last; ++output) {
    if (jet::Status status = stations.Seek(output); !status.ok()) return status;
    if (stations.NoMatch()) continue;
    jet::Value inhibits;
    if (jet::Status status = stations.Get("Inhibits", &inhibits); !status.ok()) return status;
    const Bytes message = EncodeInhibitRow(output, inhibits.Text(), model_.ChannelCount);
    if (model::Status status = WriteMessage(port_, message); !status.ok()) return status;
  }
  return {};
}

}  // namespace switcher
