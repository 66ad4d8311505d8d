// SPDX-License-Identifier: MIT
//
// A preset as the text of its file, with the labels, so that a person can read it:
//
//   {
//     "channels": 64,
//     "made": "2026-04-17 12:03:44",
//     "outputs": [
//       {"output": 6, "label": "CAM 4", "priority": false, "hears": [
//         {"input": 8, "label": "MIC ANCH"}
//       ]}
//     ]
//   }

#ifndef SWITCHER_PRESETS_PRESET_TEXT_H_
#define SWITCHER_PRESETS_PRESET_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "switcher/presets/preset.h"

namespace switcher {

// No text of a preset is longer: 256 outputs that hear 256 inputs each have room.
inline constexpr std::size_t kMostPresetText = std::size_t{8} << 20;

// Reads a preset.  A text with anything that is not as it is written is refused as a whole, and so
// are channels outside 1..256, rows or inputs out of order, and labels of more than 1,024 bytes.
bool ReadPreset(std::string_view text, Preset* preset);

// What is no UTF-8 in a label is written as a replacement character.
std::string WritePreset(const Preset& preset);

// A preset is called by 1 to 80 characters, in UTF-8, that can be the name of a file on any system
// and can be seen.
bool IsPresetName(std::string_view name);

// `name` between two other texts, shortened at its end by whole characters until IsPresetName().
// REQUIRES: it is without `name`
std::string PresetNameOf(std::string_view before, std::string_view name, std::string_view behind);

// Reads a list of outputs as it is typed, "1-8, 12", into ascending numbers within 1..`most`, each
// once.  An empty one stands for all.  False for anything else.
bool ReadOutputs(std::string_view text, int most, std::vector<int>* outputs);

}  // namespace switcher

#endif  // SWITCHER_PRESETS_PRESET_TEXT_H_
