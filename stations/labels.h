// SPDX-License-Identifier: MIT
//
// The rows of the grid of station labels: read from the table of stations, and stored there.
// None of these returns to the record where it began: the caller holds a db::KeepPosition.

#ifndef STATIONS_LABELS_H_
#define STATIONS_LABELS_H_

#include <array>
#include <span>
#include <string>
#include <vector>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "model/status.h"
#include "stations/change.h"
#include "stations/label_texts.h"

namespace stations {

// One record as it is stored.
struct LabelRecord {
  struct Field {
    jet::Value value;
    std::string orderKey;     // orders as the database orders the values of the field
    bool isReadable = false;  // false: the field is not there or cannot be read
  };

  const Field& At(LabelColumn column) const { return fields[static_cast<std::size_t>(column)]; }
  Field& At(LabelColumn column) { return fields[static_cast<std::size_t>(column)]; }

  const jet::Value& Station() const { return At(LabelColumn::Station).value; }

  std::array<Field, kLabelColumnCount> fields;
};

// What a cell shows: the text, the number, the word of the hidden flag; "" for null.
std::string CellText(LabelColumn column, const jet::Value& value);

// A new value of a field.
struct LabelChange {
  LabelColumn column;
  jet::Value value;
};

// The new values of one record.
struct LabelEdit {
  jet::Value station;
  std::vector<LabelChange> changes;
};

// Reads all records in the set's order.  What can be read is read: the status is the first
// failure, *records holds what is there.
model::Status ReadLabelRecords(jet::RecordSet& stations, std::vector<LabelRecord>* records);

// Stores the changes of a record in one update and reads it back, as far as it can be read.
// On a failure nothing is stored.
model::Status StoreLabelRecord(jet::RecordSet& stations, const LabelEdit& change,
                               const Author& author, LabelRecord* stored);

// The same of several records: all of them are stored, or none.
model::Status StoreLabelRecords(jet::RecordSet& stations, std::span<const LabelEdit> changes,
                                const Author& author, std::vector<LabelRecord>* stored);

}  // namespace stations

#endif  // STATIONS_LABELS_H_
