// SPDX-License-Identifier: MIT
//
// Tables on their way out of the configuration database: their messages, made of its records.  A
// field that is null counts as 0 or as a text without characters; one that the database does not
// have is a failure.

#ifndef SWITCHER_LOAD_TABLES_H_
#define SWITCHER_LOAD_TABLES_H_

#include <functional>
#include <optional>
#include <vector>

#include "db/jet/database.h"
#include "model/status.h"
#include "model/system_model.h"
#include "switcher/table.h"
#include "switcher/wire/values.h"

namespace switcher {

// The pair of messages for the labels of `selector`: LabelCount labels in the sorted order of
// the label, then of the station number.  Fewer records than that are a failure.
struct LabelMessages {
  Bytes order;
  Bytes texts;
};
model::Status LoadLabels(jet::Database& database, const model::SystemModel& model, int selector,
                         LabelMessages* messages);

// The message of one output or station (from 1); none when it has no record.
model::Status LoadInhibits(jet::Database& database, const model::SystemModel& model, int output,
                           std::optional<Bytes>* message);
model::Status LoadRelays(jet::Database& database, const model::SystemModel& model, int output,
                         std::optional<Bytes>* message);
model::Status LoadButtons(jet::Database& database, const model::SystemModel& model, int station,
                          std::optional<Bytes>* message);

// The messages of a part as they are sent: a pair of labels, of anything else one.  None when it
// has no record, or a number beyond the counts of the model. REQUIRES: MessageOf(part) == part.
model::Status LoadMessages(jet::Database& database, const model::SystemModel& model,
                           const TablePart& part, std::vector<Bytes>* messages);

// All messages that are of one output or station, in the order of the stations, as each of the
// operations above makes it, in one pass over the records.  What cannot be read is left out; the
// status is the first failure of the pass itself.
using TakeRow = std::function<void(const TablePart& part, const Bytes& message)>;
model::Status LoadRows(jet::Database& database, const model::SystemModel& model,
                       const TakeRow& take);

// The message of all optos: opto i is the i-th record in the order of the station numbers.
// Fewer records than OptoCount are a failure.
model::Status LoadOptos(jet::Database& database, const model::SystemModel& model, Bytes* message);

}  // namespace switcher

#endif  // SWITCHER_LOAD_TABLES_H_
