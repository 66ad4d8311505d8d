// SPDX-License-Identifier: MIT

#include "app/presets/preset_folder.h"

#include <algorithm>
#include <cassert>
#include <regex>
#include <system_error>

#include "db/file_status.h"
#include "files/whole_file.h"
#include "switcher/presets/preset_text.h"

namespace app {
namespace {

namespace fs = std::filesystem;

constexpr char kEnding[] = ".json";
constexpr char kBefore[] = "Before recall of ";

// The time in a name of NameBefore(), and which it is of that time; empty for another name.
std::string OrderOf(const std::string& name) {
  static const std::regex kForm(
      R"(^Before recall of .*, (\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d( \(\d\))?)$)");
  std::smatch found;
  return std::regex_match(name, found, kForm) ? found[1].str() : std::string();
}

// "2026-11-22" of such a name.
std::string DateOf(const std::string& name) {
  constexpr std::size_t kDateLength = 10;
  return OrderOf(name).substr(0, kDateLength);
}

std::string ToText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

fs::path PresetFolder::PathOf(const std::string& name) const {
  return folder_ / std::u8string(name.begin(), name.end()).append(u8".json");
}

model::Status PresetFolder::List(std::vector<Entry>* presets, bool* hasMore) const {
  const model::Status status = ListAll(presets);
  *hasMore = presets->size() > kMostListed;
  if (*hasMore) presets->erase(presets->begin() + kMostListed, presets->end());
  return status;
}

model::Status PresetFolder::ListAll(std::vector<Entry>* presets) const {
  presets->clear();
  std::error_code error;
  for (fs::directory_iterator at(folder_, error), end; !error && at != end; at.increment(error)) {
    std::error_code gone;
    const std::string name = ToText(at->path().stem());
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
  assert(switcher::IsPresetName(name));
  switcher::Preset read;
  if (!switcher::ReadPreset(text, &read)) {
    return {model::kFileAccess, "The labels are too long for a preset"};
  }
  std::error_code error;
  fs::create_directories(folder_, error);
  if (error) return db::StatusOf(files::Failure("make", folder_, error));
  return db::StatusOf(files::Replace(PathOf(name), text));
}

std::string PresetFolder::NameBefore(const std::string& preset, const std::string& time) const {
  std::string name = switcher::PresetNameOf(kBefore, preset, ", " + time);
  for (int next = 2; next < 10 && Has(name); ++next) {
    name = switcher::PresetNameOf(kBefore, preset, ", " + time + " (" + std::to_string(next) + ")");
  }
  return name;
}

model::Status PresetFolder::Keep(const std::string& name, const std::string& text) const {
  const model::Status status = Store(name, text);
  std::vector<Entry> presets;
  if (!status.ok() || !ListAll(&presets).ok()) return status;
  std::erase_if(presets, [](const Entry& preset) { return OrderOf(preset.name).empty(); });
  std::ranges::sort(presets, {}, [](const Entry& preset) { return OrderOf(preset.name); });
  // What is of a later day was named by a clock that went ahead, and counts as old.
  std::stable_partition(presets.begin(), presets.end(), [date = DateOf(name)](const Entry& preset) {
    return DateOf(preset.name) > date;
  });
  // One that stays is deleted the next time.
  for (std::size_t at = 0; at + kMostKept < presets.size(); ++at) (void)Delete(presets[at].name);
  return status;
}

model::Status PresetFolder::Delete(const std::string& name) const {
  return db::StatusOf(files::Remove(PathOf(name)));
}

}  // namespace app
