// SPDX-License-Identifier: MIT

#include "stations/copy_programming.h"

#include <algorithm>
#include <string>
#include <utility>

#include "db/jet/status.h"
#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/button_program.h"
#include "stations/navigation.h"
#include "stations/operations.h"
#include "stations/planned_fields.h"
#include "stations/relays.h"

namespace stations {
namespace {

// A button as it is copied; its targets are plain and as long as their count.
struct CopiedButton {
  int button = 0;
  int type = kInactive;
  std::string targets;
};

// All that is copied.
struct Original {
  std::vector<CopiedButton> buttons;
  std::string relays;
};

model::Status ReadOriginal(jet::RecordSet& stations, const CopyOrder& order, Original* original) {
  if (model::Status found = FindStation(stations, order.from); !found.ok()) return found;
  if (stations.NoMatch()) {
    return jet::Status(jet::ErrorNumber::NoCurrentRecord,
                       "There is no station " + std::to_string(order.from));
  }
  for (int button = order.firstButton; button <= order.lastButton; ++button) {
    const ButtonProgram program = ReadButton(stations, button);
    if (!program.Outcome().ok()) return program.Outcome();
    CopiedButton copied{
        .button = button, .type = program.type.value, .targets = program.targets.value};
    copied.targets.resize(static_cast<std::size_t>(order.targetCount), '0');
    original->buttons.push_back(std::move(copied));
  }
  return order.relays ? ReadRelays(stations, &original->relays) : model::Status();
}

// The targets of a copy at station `to`; false when it cannot point at its own station.
bool PointAtOwn(const CopiedButton& button, const CopyOrder& order, int to, std::string* targets) {
  *targets = button.targets;
  const int own = TargetOfStation(button.type, order.from, order.targetCount);
  if (!order.pointsAtOwn || !model::FlagIsSet(button.targets, own)) return true;
  const int copysOwn = TargetOfStation(button.type, to, order.targetCount);
  if (copysOwn == 0) return false;
  (*targets)[static_cast<std::size_t>(own - 1)] = '0';
  (*targets)[static_cast<std::size_t>(copysOwn - 1)] = '1';
  return true;
}

}  // namespace

model::Status PlanCopy(jet::RecordSet& stations, const CopyOrder& order, std::span<const int> to,
                       CopyPlan* plan) {
  *plan = {};
  Original original;
  if (model::Status read = ReadOriginal(stations, order, &original); !read.ok()) return read;
  for (const int station : to) {
    if (station == order.from) continue;
    if (model::Status found = FindStation(stations, station); !found.ok()) return found;
    if (stations.NoMatch()) continue;
    PlannedFields planned(stations);
    bool canPoint = true;
    for (const CopiedButton& button : original.buttons) {
      std::string targets;
      canPoint = canPoint && PointAtOwn(button, order, station, &targets);
      if (!canPoint) break;
      planned.AddButton(button.button, button.type, targets);
    }
    if (order.relays) planned.AddFlags(db::kRelaysField, original.relays);
    if (!canPoint) {
      plan->cannotPoint.push_back(station);
    } else if (!planned.changes.empty()) {
      plan->changes.push_back(
          {.origin = Origin::Operator, .station = station, .fields = std::move(planned.changes)});
    }
  }
  return {};
}

}  // namespace stations
