// SPDX-License-Identifier: MIT
//
// Presets of the map in words.

#ifndef VIEWS_PRESETS_PRESET_WORDS_H_
#define VIEWS_PRESETS_PRESET_WORDS_H_

#include <QString>
#include <vector>

#include "switcher/presets/preset.h"
#include "switcher/presets/recall.h"

namespace views {

// A channel of the map: "Out 06  CAM 4".
QString OutputWords(int output, const switcher::ChannelFacts& facts);

// What an output hears: "MIC ANCH, VISION"; "nothing".
QString SourceWords(const switcher::Sources& sources, const switcher::ChannelFacts& facts);

// Why a row cannot be recalled: "Output locked"; empty when it can.  The label is for a narrow
// column: "Locked", or of a row that can, what the difference is about.
QString ObstacleWords(const switcher::PresetDifference& difference);
QString ObstacleLabel(switcher::PresetObstacle obstacle);

// Why the map cannot be brought to a preset now, in a sentence.
QString RecallObstacleWords(switcher::RecallObstacle obstacle);

// What became of an output that is not as it was wanted: "Changed by somebody else"; the label is
// for a narrow column.
QString OutcomeWords(switcher::RecallOutcome outcome);
QString OutcomeLabel(switcher::RecallOutcome outcome);

// What came of a recall: "3 of 4 outputs recalled", and behind a cancel that it was cancelled.
QString RecallSummary(const std::vector<switcher::RecallRow>& rows, bool isCancelled);

}  // namespace views

#endif  // VIEWS_PRESETS_PRESET_WORDS_H_
