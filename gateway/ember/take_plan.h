// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_TAKE_PLAN_H_
#define GATEWAY_EMBER_TAKE_PLAN_H_

#include <optional>
#include <vector>

#include "gateway/ember/expected_rows.h"
#include "gateway/ember/peer_events.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "stations/channel_texts.h"
#include "switcher/known_map.h"
#include "switcher/wire/messages/take.h"

namespace ember {

// What is to be sent for what a consumer wants of a row, as things stand: nothing where the row has
// it already, or will when what was sent is carried out.
struct TakePlan {
  std::optional<Refusal> refusal = {};
  std::vector<switcher::Take> commands = {};  // what makes first, then what breaks; none if refused
  bool isAwaited = false;                     // nothing is to be sent, but a report is to come

  bool Stands() const { return !refusal && commands.empty() && !isAwaited; }
};

// Whether the row, as it was last reported, is as wanted.
bool IsAsWanted(const model::SystemModel& model, const Wanted& wanted);

// Judges by the row that is expected, and everything else as it is now.
// REQUIRES: the output and the inputs are channels of the system
struct PlanServices {
  const model::SystemModel& model;
  const switcher::KnownMap& knownMap;
  const model::Locks& locks;
  stations::ChannelTexts& texts;
};
TakePlan PlanTake(const PlanServices& services, const ExpectedRow& row, const Wanted& wanted);

}  // namespace ember

#endif  // GATEWAY_EMBER_TAKE_PLAN_H_
