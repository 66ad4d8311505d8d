// SPDX-License-Identifier: MIT

#include "switcher/presets/preset.h"

#include <utility>

namespace switcher {
namespace {

bool IsChannel(const model::SystemModel& model, int channel) {
  return channel >= 1 && channel <= model.CrosspointMap.Size();
}

// What the row as it was stored has to do with the map of today.
void FindMisfit(const PresetRow& row, const model::SystemModel& model, const ChannelFacts& facts,
                PresetDifference* difference) {
  const auto look = [&](const NamedChannel& stored, const auto& labelNow, bool isInput) {
    if (difference->obstacle != PresetObstacle::None) return;
    if (!IsChannel(model, stored.channel)) {
      difference->obstacle = PresetObstacle::NoChannel;
    } else if (labelNow(stored.channel) != stored.label) {
      difference->obstacle = PresetObstacle::OtherLabel;
    } else {
      return;
    }
    difference->concerned = stored;
    difference->concernsInput = isInput;
  };
  look(row.output, facts.outputLabel, false);
  for (const NamedChannel& input : row.hears) look(input, facts.inputLabel, true);
}

void FindObstacle(const PresetRow& row, const model::SystemModel& model, const model::Locks& locks,
                  const ChannelFacts& facts, PresetDifference* difference) {
  difference->concerned = row.output;
  if (row.byPriority) {
    difference->obstacle = PresetObstacle::StoredPriority;
  } else if (model.ChannelStatus[row.output.channel] != 0) {
    difference->obstacle = PresetObstacle::Priority;
  } else if (locks.IsLocked(row.output.channel)) {
    difference->obstacle = PresetObstacle::Locked;
  } else {
    for (const NamedChannel& input : row.hears) {
      const bool isMissing = !difference->now.test(static_cast<std::size_t>(input.channel));
      if (!isMissing) continue;
      const std::optional<bool> isInhibited = facts.isInhibited(row.output.channel, input.channel);
      if (isInhibited == false) continue;
      difference->obstacle = isInhibited ? PresetObstacle::Inhibited : PresetObstacle::NotKnown;
      difference->concerned = input;
      difference->concernsInput = true;
      return;
    }
  }
}

}  // namespace

Sources SourcesOf(const model::SystemModel& model, int output) {
  Sources sources;
  for (int input = 1; input <= model.CrosspointMap.Size(); ++input) {
    sources.set(static_cast<std::size_t>(input), model.CrosspointMap.At(output, input) == 1);
  }
  return sources;
}

Preset PresetOf(const model::SystemModel& model, const ChannelFacts& facts,
                const std::vector<int>& outputs, std::string made) {
  Preset preset{.channels = model.CrosspointMap.Size(), .made = std::move(made), .rows = {}};
  for (const int output : outputs) {
    if (!IsChannel(model, output)) continue;
    PresetRow row{.output = {output, facts.outputLabel(output)},
                  .byPriority = model.ChannelStatus[output] != 0,
                  .hears = {}};
    for (int input = 1; input <= preset.channels; ++input) {
      if (model.CrosspointMap.At(output, input) != 1) continue;
      row.hears.push_back({input, facts.inputLabel(input)});
    }
    preset.rows.push_back(std::move(row));
  }
  return preset;
}

std::vector<PresetDifference> Differences(const Preset& preset, const model::SystemModel& model,
                                          const model::Locks& locks, const ChannelFacts& facts) {
  std::vector<PresetDifference> differences;
  for (const PresetRow& row : preset.rows) {
    PresetDifference difference{.stored = row, .now = {}, .wanted = {}};
    if (IsChannel(model, row.output.channel)) {
      difference.now = SourcesOf(model, row.output.channel);
    }
    for (const NamedChannel& input : row.hears) {
      difference.wanted.set(static_cast<std::size_t>(input.channel));
    }
    FindMisfit(row, model, facts, &difference);
    if (!difference.IsMisfit()) {
      const bool isPriorityNow = model.ChannelStatus[row.output.channel] != 0;
      if (difference.now == difference.wanted && row.byPriority == isPriorityNow) continue;
      FindObstacle(row, model, locks, facts, &difference);
    }
    differences.push_back(std::move(difference));
  }
  return differences;
}

}  // namespace switcher
