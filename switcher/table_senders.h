// SPDX-License-Identifier: MIT

#ifndef SWITCHER_TABLE_SENDERS_H_
#define SWITCHER_TABLE_SENDERS_H_

#include "db/database_files.h"
#include "model/error_reporter.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/serial_port.h"

namespace switcher {

// Sends tables of the configuration database to the switcher.  The caller switches the poll off
// around a transmission, so that no poll byte stands between two messages.
class TableSenders {
 public:
  // All must outlive the object.
  TableSenders(model::SystemModel& model, db::DatabaseFiles& files, SerialPort& port,
               model::ErrorReporter& reporter)
      : model_(model), files_(files), port_(port), reporter_(reporter) {}

  // Sends the inhibit row of output `station` (from 1), or with model::kAll those of outputs 1
  // to ChannelCount.  An output without a record is skipped.  Each record is read before the
  // first byte of its message is written, and the stations' record set stands where it stood.
  // Reports a failure to the operator and returns false; what was sent by then stays sent.
  bool SendInhibits(int station);

 private:
  model::Status SendInhibitRows(int first, int last);

  model::SystemModel& model_;
  db::DatabaseFiles& files_;
  SerialPort& port_;
  model::ErrorReporter& reporter_;
};

}  // namespace switcher

#endif  // SWITCHER_TABLE_SENDERS_H_
