// SPDX-License-Identifier: MIT
//
// The fields of one record, read and changed one after the other with one question at the end
// whether all of that went well.

#ifndef STATIONS_RECORD_H_
#define STATIONS_RECORD_H_

#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "model/status.h"
#include "stations/change.h"

namespace stations {

// Reads and changes the current record of a set.
//
// Each field is read when it is asked for, whatever happened to the others; one that is not there
// or cannot be read reads as null, and the first such failure is kept.  Changes are collected:
// nothing is written before Commit(), and nothing at all when a field could not be read, because
// the new values may have been made of it.  A field need not be readable to be changed.
class Record {
 public:
  // On the current record of `records`, which must outlive the record and not move meanwhile.
  explicit Record(jet::RecordSet& records) : records_(records) {}

  // The field as it is stored; null when it cannot be read.
  jet::Value Get(std::string_view field);
  // A number; 0 for null.  `unreadable` when it cannot be read.
  int Number(std::string_view field, int unreadable = 0);
  // A text; empty for null.
  std::string Text(std::string_view field) { return Get(field).Text(); }
  // A flag string as a plain one; empty for null.
  std::string Flags(std::string_view field);

  // Whether everything was read that was asked for: the first failure, or ok.
  const model::Status& Outcome() const { return outcome_; }

  // Changes a field; of several new values the last one counts.
  void Set(std::string_view field, jet::Value value);

  // Writes the fields that get another value in one update, all of them, or on a failure none, and
  // then announces the change.  Where the record has all of the new values already nothing is
  // written or announced.  `stored`, unless null, tells whether something was.  A locked console
  // fails the operator's changes and leaves out those of navigation.
  // REQUIRES: it was not called before.
  model::Status Commit(const Author& author, bool* stored = nullptr);

 private:
  bool Read(std::string_view field, jet::Value* value);
  // The changes that are none dropped, the values before in the others.
  void KeepWhatDiffers();

  jet::RecordSet& records_;
  std::vector<FieldChange> changes_;
  model::Status outcome_;
};

}  // namespace stations

#endif  // STATIONS_RECORD_H_
