// SPDX-License-Identifier: MIT

#include "app/preset_folder.h"

#include <algorithm>
#include <system_error>

#include "db/file_status.h"
#include "files/whole_file.h"
#include "switcher/presets/preset_text.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr char kEnding[] = ".json";
constexpr std::size_t kMostListed = 1000;

std::string ToText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

fs::path PresetFolder::PathOf(const std::string& name) const {
  return folder_ / std::u8string(name.begin(), name.end()).append(u8".json");
}

model::Status PresetFolder::List(std::vector<Entry>* presets) const {
  presets->clear();
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    std::error_code gone;
    const std::string name = ToText(at->path().stem());
    if (presets->size() == kMostListed) break;
    if (at->path().extension() != kEnding || !switcher::IsPresetName(name)) continue;
    if (!at->is_regular_file(gone)) continue;
    presets->push_back({.name = name, .stored = at->last_write_time(gone)});
  }
  if (error && error != std::errc::no_such_file_or_directory) {
    return db::StatusOf(files::Failure("read", folder_, error));
  }
  std::ranges::sort(*presets, {}, &Entry::name);
  return {};
}

bool PresetFolder::Has(const std::string& name) const {
  std::error_code unseen;
  return fs::exists(PathOf(name), unseen);
}

model::Status PresetFolder::Read(const std::string& name, switcher::Preset* preset) const {
  std::string text;
  const auto read = files::ReadWhole(PathOf(name), switcher::kMostPresetText, &text);
  if (!read.ok()) return db::StatusOf(read);
  if (!switcher::ReadPreset(text, preset)) {
    return {model::kFileAccess, ToText(PathOf(name).filename()) + " is no preset"};
  }
  return {};
}

model::Status PresetFolder::Store(const std::string& name, const std::string& text) const {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) return db::StatusOf(files::Failure("make", folder_, error));
  return db::StatusOf(files::Replace(PathOf(name), text));
}

model::Status PresetFolder::Delete(const std::string& name) const {
  return db::StatusOf(files::Remove(PathOf(name)));
}

}  // namespace app
