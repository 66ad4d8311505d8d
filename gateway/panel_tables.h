// SPDX-License-Identifier: MIT
//
// The frames that show a panel the state and the configuration of the system.

#ifndef GATEWAY_PANEL_TABLES_H_
#define GATEWAY_PANEL_TABLES_H_

#include <string>
#include <string_view>

#include "db/jet/database.h"
#include "gateway/panel_frame.h"
#include "model/status.h"
#include "model/system_model.h"

namespace gateway {

// Characters of a label in a frame.
inline constexpr int kLabelWidth = 8;

// Error number of a channel that is not there.
inline constexpr int kOutOfRange = 9;

// 0xF6: the made crosspoints of `count` channels from `first` on (from 1).  Fails with kOutOfRange
// when they are not all within the system.
model::Status BuildCrosspointMap(const model::SystemModel& model, int first, int count,
                                 Bytes* frame);

// 0xFC: the labels of the first ChannelCount records, in the order of their numbers.  `kind` is
// switcher::kOutputLabels, or anything else, in practice kInputLabels, for those of the inputs.
// Fails when there are fewer records.
model::Status BuildLabelTable(jet::Database& database, const model::SystemModel& model, int kind,
                              Bytes* frame);

// 0xFB: the numbers of all channels.
Bytes BuildStationList(const model::SystemModel& model);

// 0xFD: the buttons of the first ChannelCount records.  Fails when there are fewer.
model::Status BuildButtonProgramming(jet::Database& database, const model::SystemModel& model,
                                     Bytes* frame);

// The type of a button as panels know it.
int PanelButtonType(int type);

// A label as it stands in a frame: eight characters of seven bits, filled up with spaces.  One
// that seven bits cannot carry becomes "?".
std::string PanelLabel(std::string_view label);

}  // namespace gateway

#endif  // GATEWAY_PANEL_TABLES_H_
