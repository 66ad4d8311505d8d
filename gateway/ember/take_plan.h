// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_TAKE_PLAN_H_
#define GATEWAY_EMBER_TAKE_PLAN_H_

#include <optional>
#include <vector>

#include "gateway/ember/channel_texts.h"
#include "gateway/ember/peer_events.h"
#include "model/locks.h"
#include "model/system_model.h"
#include "switcher/known_map.h"
#include "switcher/wire/messages/take.h"

namespace ember {

// What is to be sent for what a consumer wants of a row, as things stand: nothing where the row has
// it already.
struct TakePlan {
  std::optional<Refusal> refusal;
  std::vector<switcher::Take> commands;  // what makes first, then what breaks; none if refused

  bool Stands() const { return !refusal && commands.empty(); }
};

// Whether the row is as wanted.
bool IsAsWanted(const model::SystemModel& model, const Wanted& wanted);

// REQUIRES: the output and the inputs are channels of the system
TakePlan PlanTake(const model::SystemModel& model, const switcher::KnownMap& knownMap,
                  const model::Locks& locks, ChannelTexts& texts, const Wanted& wanted);

}  // namespace ember

#endif  // GATEWAY_EMBER_TAKE_PLAN_H_
