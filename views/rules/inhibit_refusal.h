// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_INHIBIT_REFUSAL_H_
#define VIEWS_RULES_INHIBIT_REFUSAL_H_

#include <span>

#include "model/system_model.h"
#include "stations/carry_out.h"
#include "stations/change.h"

namespace rules {

// Whether these changes, carried out again or taken back, would inhibit a crosspoint that is made
// now, which the map refuses.
bool WouldInhibitCrosspoint(std::span<const stations::Change> changes,
                            stations::Direction direction, const model::SystemModel& model);

}  // namespace rules

#endif  // VIEWS_RULES_INHIBIT_REFUSAL_H_
