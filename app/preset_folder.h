// SPDX-License-Identifier: MIT

#ifndef APP_PRESET_FOLDER_H_
#define APP_PRESET_FOLDER_H_

#include <ctime>
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

  // What there is, by name; at most 1,000.  A folder that is not there has none.
  model::Status List(std::vector<Entry>* presets) const;

  bool Has(const std::string& name) const;

  // A file that is no preset is a failure.  REQUIRES: all names are switcher::IsPresetName()
  model::Status Read(const std::string& name, switcher::Preset* preset) const;

  // Makes or replaces a preset, and the folder where that is needed.  May be called by another
  // thread.
  model::Status Store(const std::string& name, const std::string& text) const;

  model::Status Delete(const std::string& name) const;

 private:
  std::filesystem::path PathOf(const std::string& name) const;

  const std::filesystem::path folder_;
};

}  // namespace app

#endif  // APP_PRESET_FOLDER_H_
