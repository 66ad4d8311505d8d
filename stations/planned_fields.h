// SPDX-License-Identifier: MIT

#ifndef STATIONS_PLANNED_FIELDS_H_
#define STATIONS_PLANNED_FIELDS_H_

#include <string>
#include <string_view>
#include <vector>

#include "db/jet/record_set.h"
#include "db/jet/value.h"
#include "stations/change.h"

namespace stations {

// What the current record of a set is to hold, and what of it would be changed by that.  Nothing is
// stored.
class PlannedFields {
 public:
  // `stations` must outlive the object and not move meanwhile.
  explicit PlannedFields(jet::RecordSet& stations) : stations_(stations) {}

  // A field is to have this value.
  void Add(std::string_view field, const jet::Value& value);

  // A flag string is to begin with these flags, of which a plain text has as many; what stands
  // behind them is kept.  Members beyond the end of what is stored are clear.
  void AddFlags(std::string_view field, const std::string& flags);

  // A button (from 1) is to have this operation and these targets, a plain text, and the lowest of
  // them as its first; without a target it is inactive.
  void AddButton(int button, int type, const std::string& targets);

  // The fields that would get another value, in the order in which they were added.  One that
  // cannot be read gets another value, whatever it is: storing it may mend it.
  std::vector<FieldChange> changes;

 private:
  jet::RecordSet& stations_;
};

}  // namespace stations

#endif  // STATIONS_PLANNED_FIELDS_H_
