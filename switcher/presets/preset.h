// SPDX-License-Identifier: MIT
//
// A named state of outputs of the map, and how the map differs from it.

#ifndef SWITCHER_PRESETS_PRESET_H_
#define SWITCHER_PRESETS_PRESET_H_

#include <bitset>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "model/locks.h"
#include "model/system_model.h"

namespace switcher {

// A set of inputs, such as those that an output hears: bit n is input n, bit 0 is unused.
using Sources = std::bitset<model::kMaxChannelCount + 1>;

// A channel as it was called when the preset was stored.
struct NamedChannel {
  int channel = 0;  // from 1
  std::string label;

  bool operator==(const NamedChannel&) const = default;
};

// What an output heard.
struct PresetRow {
  NamedChannel output;
  bool byPriority = false;          // a call or a priority listen stood on it
  std::vector<NamedChannel> hears;  // ascending

  bool operator==(const PresetRow&) const = default;
};

struct Preset {
  int channels = 0;             // of the map that it was stored of
  std::string made;             // when: "2026-04-17 12:03:44"
  std::vector<PresetRow> rows;  // by output, ascending

  bool operator==(const Preset&) const = default;
};

// Who knows of the channels (all from 1) what the map does not say.
struct ChannelFacts {
  std::function<std::string(int output)> outputLabel;
  std::function<std::string(int input)> inputLabel;
  // Nothing when that is not known, because it cannot be read.
  std::function<std::optional<bool>(int output, int input)> isInhibited;
};

// What an output hears as it was last reported.  REQUIRES: an output of the map
Sources SourcesOf(const model::SystemModel& model, int output);

// The state of these outputs of the map as it was last reported; outputs that the map does not have
// are left out.
Preset PresetOf(const model::SystemModel& model, const ChannelFacts& facts,
                const std::vector<int>& outputs, std::string made);

// Why a row of a preset cannot be recalled.
enum class PresetObstacle : std::uint8_t {
  None,
  NoChannel,       // the map does not have its output, or an input that it heard
  OtherLabel,      // its output, or an input that it heard, is called otherwise now
  StoredPriority,  // it was stored of a call or a priority listen
  Priority,        // a call or a priority listen stands on it now
  Locked,          // its output is locked
  Inhibited,       // an input that it does not hear yet is inhibited
  NotKnown,        // whether it is cannot be read
};

// A row that the map differs from a preset in.
struct PresetDifference {
  PresetRow stored;  // as the preset has it
  Sources now;
  Sources wanted;
  PresetObstacle obstacle = PresetObstacle::None;
  NamedChannel concerned = {};  // what the obstacle is about, as the preset calls it
  bool concernsInput = false;   // it is an input, and not the output

  int Output() const { return stored.output.channel; }

  // Whether the obstacle says that the row was stored of another map.
  bool IsMisfit() const {
    return obstacle == PresetObstacle::NoChannel || obstacle == PresetObstacle::OtherLabel;
  }
};

// The rows in which the map differs from a preset, by output.  Rows that were stored of another map
// are always among them.
std::vector<PresetDifference> Differences(const Preset& preset, const model::SystemModel& model,
                                          const model::Locks& locks, const ChannelFacts& facts);

}  // namespace switcher

#endif  // SWITCHER_PRESETS_PRESET_H_
