// SPDX-License-Identifier: MIT

#ifndef APP_PRESETS_PRESET_FOLDER_H_
#define APP_PRESETS_PRESET_FOLDER_H_

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "model/status.h"
#include "switcher/presets/preset.h"

namespace app {

inline constexpr char kPresetsFolder[] = "Presets";

// The presets of the map: a file for each, which is called as the preset is and may be copied,
// renamed and read by a person.
class PresetFolder {
 public:
  // A preset that is there.
  struct Entry {
    std::string name;
    std::filesystem::file_time_type stored;
  };

  explicit PresetFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // No more are listed.
  static constexpr std::size_t kMostListed = 1000;

  // What there is: the first by name, and whether there are more.  A folder that is not there has
  // none.
  model::Status List(std::vector<Entry>* presets, bool* hasMore) const;

  bool Has(const std::string& name) const;

  // A file that is no preset is a failure.  REQUIRES: all names are switcher::IsPresetName()
  model::Status Read(const std::string& name, switcher::Preset* preset) const;

  // Makes or replaces a preset, and the folder where that is needed.  A text that Read() would
  // refuse is a failure.  May be called by another thread.
  model::Status Store(const std::string& name, const std::string& text) const;

  // How many of the states before a recall are kept.
  static constexpr std::size_t kMostKept = 20;

  // What the map as it is before a recall of `preset` at `time` ("2026-11-22 22.16.03") is kept as:
  // a name that is not taken.
  std::string NameBefore(const std::string& preset, const std::string& time) const;

  // Stores under a name of NameBefore(), and deletes the oldest of those names beyond kMostKept.
  // May be called by another thread.
  model::Status Keep(const std::string& name, const std::string& text) const;

  model::Status Delete(const std::string& name) const;

 private:
  model::Status ListAll(std::vector<Entry>* presets) const;
  std::filesystem::path PathOf(const std::string& name) const;

  const std::filesystem::path folder_;
};

}  // namespace app

#endif  // APP_PRESETS_PRESET_FOLDER_H_
