// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_SENDERS_H_
#define SWITCHER_TABLE_SENDERS_H_

#include <optional>
#include <string>
#include <string_view>

#include "db/database_files.h"
#include "model/error_reporter.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/message_sender.h"
#include "switcher/table.h"
#include "switcher/transmission.h"

namespace switcher {

// Sends tables of the configuration database to the switcher.  The caller switches the poll off
// around a transmission, so that no poll byte stands between two messages.
//
// A table of which a damaged database has not every station is not sent: the switcher would take
// what is left for the whole.
class TableSenders {
 public:
  // All must outlive the object; the object must outlive its transmissions.
  struct Services {
    model::SystemModel& model;
    db::DatabaseFiles& files;
    SerialPort& port;
    model::ErrorReporter& reporter;
    LineEvents* account = nullptr;  // told of each message that went out; null for nobody
  };
  explicit TableSenders(const Services& services)
      : model_(services.model),
        files_(services.files),
        sender_({.model = services.model,
                 .port = services.port,
                 .reporter = services.reporter,
                 .account = services.account}) {}

  // What `part` names, to be sent from its first message on; failures are reported to the operator.
  //
  // Of the inhibits and relays one message for the output, or with model::kAll for each of outputs
  // 1 to ChannelCount; of the buttons likewise for the station, or each of stations 1 to
  // StationCount.  What has no record is skipped.  Of the labels, which have no parts, their order
  // and their texts: both are read from the database before the first of them is sent, so that they
  // belong together.  The optos are one message.
  Transmission Make(const TablePart& part) const;

 private:
  using ReadStation = model::Status (*)(jet::Database& database, const model::SystemModel& model,
                                        int station, std::optional<Bytes>* message);

  Transmission Optos() const;
  Transmission Labels(const char* name, Table table, int selector) const;
  // One message for each station of the part that has a record; of all, up to `last`.
  Transmission Rows(std::string name, std::string_view failureLine, const TablePart& part, int last,
                    ReadStation read) const;
  // A table of which the stations first..last are looked at before.
  Transmission Send(std::string name, std::string_view failureLine, Table table, int first,
                    int last, Transmission::ReadNext readNext) const;

  const model::SystemModel& model_;
  db::DatabaseFiles& files_;
  const MessageSender sender_;
};

}  // namespace switcher

#endif  // SWITCHER_TABLE_SENDERS_H_
