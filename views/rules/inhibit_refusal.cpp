// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_refusal.h"

#include <string>

#include "db/station_fields.h"
#include "model/flag_string.h"

namespace rules {
namespace {

bool InhibitsMadeOne(int output, const std::string& from, const std::string& to,
                     const model::SystemModel& model) {
  const int channels = model.CrosspointMap.Size();
  if (output < 1 || output > channels) return false;
  for (int input = 1; input <= channels; ++input) {
    if (model::FlagIsSet(to, input) && !model::FlagIsSet(from, input) &&
        model.CrosspointMap.At(output, input) == 1) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool WouldInhibitCrosspoint(std::span<const stations::Change> changes,
                            stations::Direction direction, const model::SystemModel& model) {
  const bool isAgain = direction == stations::Direction::Again;
  for (const stations::Change& change : changes) {
    for (const stations::FieldChange& field : change.fields) {
      if (field.field != db::kInhibitsField) continue;
      const std::string before = model::PlainFlags(field.before.Text());
      const std::string after = model::PlainFlags(field.after.Text());
      if (InhibitsMadeOne(change.station, isAgain ? before : after, isAgain ? after : before,
                          model)) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace rules
