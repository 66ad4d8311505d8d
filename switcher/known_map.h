// SPDX-License-Identifier: MIT

#ifndef SWITCHER_KNOWN_MAP_H_
#define SWITCHER_KNOWN_MAP_H_

#include <bitset>
#include <cstddef>

#include "model/system_model.h"
#include "switcher/switcher_events.h"

namespace switcher {

// Whether the map is what the switcher holds now: every row was reported since the link last came
// up.  XmapComplete alone does not say so: it stays set when the switcher falls silent while the
// port is open, and what was taken during the silence is not in the map.
//
// After such a silence the poll does not ask for the map, which is complete: the operator's Refresh
// Map does, and the open gateway where controllers may take.
class KnownMap : public SwitcherEvents {
 public:
  // `model` must outlive the object.
  explicit KnownMap(const model::SystemModel& model) : model_(model) {}

  // The link to the switcher may be in another state.  Rows are forgotten when it is lost, not when
  // it comes up: the row that brings it up may have been decoded by then.
  void LinkChanged() {
    if (model_.LinkStatus[0] != 1) rows_.reset();
  }

  bool IsKnown() const { return rows_.count() == static_cast<std::size_t>(model_.ChannelCount); }

  void CrosspointRowChanged(int output, int /*mode*/) override { Row(output) = true; }
  void CrosspointRowSpoiled(int output) override { Row(output) = false; }

 private:
  std::bitset<model::kMaxChannelCount>::reference Row(int output) {
    return rows_[static_cast<std::size_t>(output - 1)];
  }

  const model::SystemModel& model_;
  std::bitset<model::kMaxChannelCount> rows_;  // that are known, by output - 1
};

}  // namespace switcher

#endif  // SWITCHER_KNOWN_MAP_H_
