// SPDX-License-Identifier: MIT

#ifndef STATIONS_TARGET_LABELS_H_
#define STATIONS_TARGET_LABELS_H_

#include <optional>
#include <string>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/reading.h"

namespace stations {

// In the place of the label of a target that is no station, or has none.
inline constexpr char kNoTarget[] = "NONE";

// Who can be the target of a button or an opto: the labels of all records, read once.
class TargetLabels {
 public:
  // Reads them and goes back to the current record.  Null `stations`: the database is not open.
  explicit TargetLabels(jet::RecordSet* stations);

  // The captions of targets 1 to `count` for an operation's code, as UTF-8: the labels of the
  // first `count` records, or "Chan 01" and so on.  A null label, or a record that is not there,
  // gives "Sta. 001" and so on.  Without a database there are none.
  Reading<std::vector<std::string>> Captions(int code, int count) const;

  // The label of a target (from 1) for an operation's code, that of its input if `input`;
  // kNoTarget without a record or a label.
  Reading<std::string> Of(int code, int target, bool input) const;

 private:
  using Label = Reading<std::optional<std::string>>;
  struct Record {
    int number;
    Label output;
    Label input;
  };

  bool isOpen_;                  // the database
  std::vector<Record> records_;  // in the set's order
  model::Status end_;            // why there are no more
};

}  // namespace stations

#endif  // STATIONS_TARGET_LABELS_H_
