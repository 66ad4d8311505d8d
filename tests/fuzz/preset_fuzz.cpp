// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for the file of a preset, for the outputs that are to be stored in one, and
// for its name.  What is read must be the same when it was written and read again.

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "switcher/presets/preset_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  (void)switcher::IsPresetName(text);
  std::vector<int> outputs;
  if (switcher::ReadOutputs(text, 256, &outputs)) {
    int last = 0;
    for (const int output : outputs) {
      if (output <= last || output > 256) std::abort();
      last = output;
    }
  }
  switcher::Preset preset;
  if (!switcher::ReadPreset(text, &preset)) {
    if (preset != switcher::Preset()) std::abort();
    return 0;
  }
  switcher::Preset again;
  if (!switcher::ReadPreset(switcher::WritePreset(preset), &again) || again != preset) std::abort();
  return 0;
}
