// SPDX-License-Identifier: MIT

#ifndef STATIONS_TARGET_LABELS_H_
#define STATIONS_TARGET_LABELS_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "db/jet/record_set.h"
#include "model/status.h"
#include "stations/operations.h"
#include "stations/reading.h"

namespace stations {

// In the place of the label of a target that is no station, or has none.
inline constexpr char kNoTarget[] = "NONE";

// Who can be the target of a button or an opto: the labels of the records, each read once, when it
// is asked for first.
class TargetLabels {
 public:
  // `stations` must outlive the object; every operation goes back to its current record.  Null: the
  // database is not open.
  explicit TargetLabels(jet::RecordSet* stations) : stations_(stations) {}

  // The captions of targets 1 to `count` for an operation's code, as UTF-8: the labels of the
  // first `count` records, or "Chan 01" and so on.  A null label, or a record that is not there,
  // gives "Sta. 001" and so on.  Without a database there are none.
  const Reading<std::vector<std::string>>& Captions(int code, int count) const;

  // The label of a target (from 1) for an operation's code, that of its input if `input`;
  // kNoTarget without a record or a label.
  Reading<std::string> Of(int code, int target, bool input) const;

 private:
  using Texts = Reading<std::vector<std::string>>;

  Texts MakeCaptions(TargetKind targets, int count) const;

  jet::RecordSet* stations_;
  // What was made of what was read, by kind and count, and what was read by field and number.
  mutable std::map<std::pair<TargetKind, int>, Texts> captions_;
  mutable std::map<std::pair<std::string_view, int>, Reading<std::string>> single_;
};

}  // namespace stations

#endif  // STATIONS_TARGET_LABELS_H_
