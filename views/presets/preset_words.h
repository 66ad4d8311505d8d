// SPDX-License-Identifier: MIT
//
// Presets of the map in words.

#ifndef VIEWS_PRESETS_PRESET_WORDS_H_
#define VIEWS_PRESETS_PRESET_WORDS_H_

#include <QString>
#include <optional>
#include <vector>

#include "switcher/presets/preset.h"
#include "switcher/presets/recall.h"

namespace views {

// An output, as the preset calls it: "Out 06  CAM 4".
QString OutputWords(const switcher::NamedChannel& output);

// What an output hears: "MIC ANCH, VISION"; "nothing".  The second calls it as the preset does.
QString SourceWords(const switcher::Sources& sources, const switcher::ChannelFacts& facts);
QString SourceWords(const std::vector<switcher::NamedChannel>& inputs);

// Why a row cannot be recalled: "Output locked"; empty when it can.  The label is for a narrow
// column: "Locked", or of a row that can, what the difference is about.
QString ObstacleWords(const switcher::PresetDifference& difference);
QString ObstacleLabel(const switcher::PresetDifference& difference);

// Why the map cannot be brought to a preset now, in a sentence.
QString RecallObstacleWords(switcher::RecallObstacle obstacle);

// What became of an output that is not as it was wanted: "Changed by somebody else", and that it
// was left half recalled; the label is for a narrow column.  `obstacle` is what has ended the
// recall.
QString OutcomeWords(const switcher::RecallRow& row,
                     std::optional<switcher::RecallObstacle> obstacle);
QString OutcomeLabel(switcher::RecallOutcome outcome);

// What came of a recall: "3 of 4 outputs recalled", and that it was cancelled if that has kept an
// output from it.
QString RecallSummary(const std::vector<switcher::RecallRow>& rows, bool isCancelled);

}  // namespace views

#endif  // VIEWS_PRESETS_PRESET_WORDS_H_
