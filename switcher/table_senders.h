// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_SENDERS_H_
#define SWITCHER_TABLE_SENDERS_H_

#include <optional>
#include <string_view>

#include "db/database_files.h"
#include "model/error_reporter.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/line.h"
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
  };
  explicit TableSenders(const Services& services)
      : model_(services.model),
        files_(services.files),
        line_({.model = services.model, .port = services.port, .reporter = services.reporter}) {}

  // Who is told of each value sent; null for nobody.  Must outlive the object or be taken away.
  void SetProgress(SendProgress* progress) { line_.SetProgress(progress); }

  // The labels of `selector`, kOutputLabels or kInputLabels: their order, then their texts.
  // Both messages are read from the database before the first of them is sent, so that they
  // belong together.
  Transmission Labels(int selector) const;

  // A row of an output (from 1), or with model::kAll one message for each of outputs 1 to
  // ChannelCount.  An output without a record is skipped.
  Transmission Inhibits(int station) const;
  Transmission Relays(int station) const;

  // The button programming of a station (from 1), or with model::kAll one message for each of
  // stations 1 to StationCount.  A station without a record is skipped.
  Transmission Buttons(int station) const;

  // All optos, in one message.
  Transmission Optos() const;

  // The same, each at once and to its end.  They return how many messages were sent, or nothing
  // after a failure, which is reported to the operator.
  std::optional<int> SendLabels(int selector) { return Run(Labels(selector)); }
  std::optional<int> SendInhibits(int station) { return Run(Inhibits(station)); }
  std::optional<int> SendRelays(int station) { return Run(Relays(station)); }
  std::optional<int> SendButtons(int station) { return Run(Buttons(station)); }
  std::optional<int> SendOptos() { return Run(Optos()); }

 private:
  using ReadStation = model::Status (*)(jet::Database& database, const model::SystemModel& model,
                                        int station, std::optional<Bytes>* message);

  // One message for each station of first..last that has a record.
  Transmission Rows(std::string_view failureLine, Table table, int first, int last,
                    ReadStation read) const;
  Transmission Send(std::string_view failureLine, Table table, int first, int last,
                    Transmission::ReadNext readNext) const;
  static std::optional<int> Run(Transmission transmission);

  const model::SystemModel& model_;
  db::DatabaseFiles& files_;
  Line line_;
};

}  // namespace switcher

#endif  // SWITCHER_TABLE_SENDERS_H_
