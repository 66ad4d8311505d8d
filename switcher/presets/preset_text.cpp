// SPDX-License-Identifier: MIT

#include "switcher/presets/preset_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "db/jet/text_codec.h"

namespace switcher {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kMostLabel = 1024;
constexpr std::size_t kMostMade = 40;
constexpr int kMostNameCharacters = 80;
constexpr std::size_t kMostNameBytes = 200;  // with what a system adds to it

bool IsObjectOf(const Json& json, std::size_t members) {
  return json.is_object() && json.size() == members;
}

bool ReadNumber(const Json& json, const char* member, int last, int* number) {
  const auto found = json.find(member);
  if (found == json.end() || !found->is_number_unsigned()) return false;
  const auto value = found->get<std::uint64_t>();
  if (value > static_cast<std::uint64_t>(last)) return false;
  *number = static_cast<int>(value);
  return true;
}

bool ReadText(const Json& json, const char* member, std::size_t most, std::string* text) {
  const auto found = json.find(member);
  if (found == json.end() || !found->is_string()) return false;
  *text = found->get<std::string>();
  return text->size() <= most;
}

// A channel behind `before`, which is that of the one before it.
bool ReadChannel(const Json& json, const char* member, int before, NamedChannel* channel) {
  return ReadNumber(json, member, model::kMaxChannelCount, &channel->channel) &&
         channel->channel > before && ReadText(json, "label", kMostLabel, &channel->label);
}

bool ReadRow(const Json& json, int before, PresetRow* row) {
  if (!IsObjectOf(json, 4) || !ReadChannel(json, "output", before, &row->output)) return false;
  const auto priority = json.find("priority");
  const auto hears = json.find("hears");
  if (priority == json.end() || !priority->is_boolean()) return false;
  if (hears == json.end() || !hears->is_array()) return false;
  row->byPriority = priority->get<bool>();
  int last = 0;
  for (const Json& each : *hears) {
    NamedChannel input;
    if (!IsObjectOf(each, 2) || !ReadChannel(each, "input", last, &input)) return false;
    last = input.channel;
    row->hears.push_back(std::move(input));
  }
  return true;
}

std::string Quoted(const std::string& text) {
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string ChannelText(const char* member, const NamedChannel& channel) {
  return std::string("\"") + member + "\": " + std::to_string(channel.channel) +
         ", \"label\": " + Quoted(channel.label);
}

// Cuts a number from 1 to `most` off the front of `rest`, with the blanks around it.
bool CutNumber(std::string_view* rest, int most, int* number) {
  const auto skipBlanks = [&] {
    rest->remove_prefix(std::min(rest->find_first_not_of(' '), rest->size()));
  };
  skipBlanks();
  const auto read = std::from_chars(rest->data(), rest->data() + rest->size(), *number);
  if (read.ec != std::errc() || *number < 1 || *number > most) return false;
  rest->remove_prefix(static_cast<std::size_t>(read.ptr - rest->data()));
  skipBlanks();
  return true;
}

bool CutSign(std::string_view* rest, char sign) {
  if (!rest->starts_with(sign)) return false;
  rest->remove_prefix(1);
  return true;
}

bool IsContinued(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

// What no name of a file may hold somewhere, and what nobody sees or what turns the direction of
// the rest, so that two names would look the same.
bool IsRefusedInNames(char16_t unit) {
  constexpr std::u16string_view kNotInNames = u"/\\:*?\"<>|";
  constexpr std::array<std::pair<char16_t, char16_t>, 11> kUnseen = {{{0x00, 0x1F},
                                                                      {0x7F, 0x9F},
                                                                      {0xAD, 0xAD},
                                                                      {0x61C, 0x61C},
                                                                      {0x180E, 0x180E},
                                                                      {0x200B, 0x200F},
                                                                      {0x2028, 0x202E},
                                                                      {0x2060, 0x206F},
                                                                      {0xDB40, 0xDB40},  // tags
                                                                      {0xFEFF, 0xFEFF},
                                                                      {0xFFF9, 0xFFFB}}};
  return kNotInNames.find(unit) != std::u16string_view::npos ||
         std::ranges::any_of(kUnseen, [unit](const auto& range) {
           return unit >= range.first && unit <= range.second;
         });
}

// Names of devices, which some systems find in every folder, whatever the file's name ends in.
bool IsReserved(std::string_view name) {
  std::string stem(name.substr(0, name.find('.')));
  while (stem.ends_with(' ')) stem.pop_back();
  for (char& letter : stem) {
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  }
  if (stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT"))) {
    return stem[3] >= '0' && stem[3] <= '9';
  }
  return stem == "CON" || stem == "PRN" || stem == "AUX" || stem == "NUL";
}

}  // namespace

bool ReadPreset(std::string_view text, Preset* preset) {
  *preset = {};
  if (text.size() > kMostPresetText) return false;
  const Json json = Json::parse(text, nullptr, false);
  Preset read;
  if (!IsObjectOf(json, 3) ||
      !ReadNumber(json, "channels", model::kMaxChannelCount, &read.channels) ||
      !ReadText(json, "made", kMostMade, &read.made)) {
    return false;
  }
  const auto outputs = json.find("outputs");
  if (outputs == json.end() || !outputs->is_array()) return false;
  int last = 0;
  for (const Json& each : *outputs) {
    PresetRow row;
    if (!ReadRow(each, last, &row)) return false;
    last = row.output.channel;
    read.rows.push_back(std::move(row));
  }
  *preset = std::move(read);
  return true;
}

// Written by hand, so that there is a line for each channel.
std::string WritePreset(const Preset& preset) {
  std::string text = "{\n  \"channels\": " + std::to_string(preset.channels) +
                     ",\n  \"made\": " + Quoted(preset.made) + ",\n  \"outputs\": [";
  const char* beforeRow = "\n";
  for (const PresetRow& row : preset.rows) {
    text += beforeRow;
    text += "    {" + ChannelText("output", row.output) +
            ", \"priority\": " + (row.byPriority ? "true" : "false") + ", \"hears\": [";
    const char* beforeInput = "\n";
    for (const NamedChannel& input : row.hears) {
      text += beforeInput;
      text += "      {" + ChannelText("input", input) + "}";
      beforeInput = ",\n";
    }
    text += row.hears.empty() ? "]}" : "\n    ]}";
    beforeRow = ",\n";
  }
  text += preset.rows.empty() ? "]\n}\n" : "\n  ]\n}\n";
  return text;
}

bool IsPresetName(std::string_view name) {
  if (name.empty() || name.size() > kMostNameBytes || IsReserved(name)) return false;
  std::u16string units;
  if (!jet::AppendUnits(name, &units) || std::ranges::any_of(units, IsRefusedInNames)) return false;
  const auto characters =
      static_cast<int>(name.size()) - static_cast<int>(std::ranges::count_if(name, IsContinued));
  return characters <= kMostNameCharacters && name.front() != '.' && name.front() != ' ' &&
         name.back() != '.' && name.back() != ' ';
}

std::string PresetNameOf(std::string_view before, std::string_view name, std::string_view behind) {
  std::string whole;
  for (;;) {
    whole = std::string(before).append(name).append(behind);
    if (name.empty() || IsPresetName(whole)) return whole;
    while (name.size() > 1 && IsContinued(name.back())) name.remove_suffix(1);
    name.remove_suffix(1);
  }
}

bool ReadOutputs(std::string_view text, int most, std::vector<int>* outputs) {
  std::vector<bool> chosen(static_cast<std::size_t>(most) + 1);
  outputs->clear();
  std::string_view rest = text;
  if (rest.find_first_not_of(' ') == std::string_view::npos) {
    chosen.assign(chosen.size(), true);
    rest = {};
  }
  while (!rest.empty()) {
    int first = 0;
    if (!CutNumber(&rest, most, &first)) return false;
    int last = first;
    if (CutSign(&rest, '-') && (!CutNumber(&rest, most, &last) || last < first)) return false;
    for (int output = first; output <= last; ++output) {
      chosen[static_cast<std::size_t>(output)] = true;
    }
    if (!rest.empty() && (!CutSign(&rest, ',') || rest.empty())) return false;
  }
  for (int output = 1; output <= most; ++output) {
    if (chosen[static_cast<std::size_t>(output)]) outputs->push_back(output);
  }
  return true;
}

}  // namespace switcher
