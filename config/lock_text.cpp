// SPDX-License-Identifier: MIT

#include "config/lock_text.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "model/system_model.h"

namespace config {
namespace {

using Json = nlohmann::json;
using model::Locks;

constexpr char kConsole[] = "console";
constexpr char kOutputs[] = "outputs";
constexpr char kOutput[] = "output";
constexpr char kPanels[] = "panels";

bool ReadOutput(const Json& json, Locks::Outputs* outputs) {
  if (!json.is_object() || json.size() != 2) return false;
  const auto output = json.find(kOutput);
  const auto panels = json.find(kPanels);
  if (output == json.end() || !output->is_number_unsigned()) return false;
  if (panels == json.end() || !panels->is_boolean()) return false;
  const auto number = output->get<std::uint64_t>();
  if (number < 1 || number > model::kMaxChannelCount) return false;
  const auto against =
      panels->get<bool>() ? Locks::Against::ConsoleAndPanels : Locks::Against::Console;
  return outputs->emplace(static_cast<int>(number), against).second;
}

}  // namespace

bool ReadLocks(std::string_view text, LockState* state) {
  *state = {};
  if (text.size() > kMostLockText) return false;
  const Json json = Json::parse(text, nullptr, false);
  if (!json.is_object() || json.size() != 2) return false;
  const auto console = json.find(kConsole);
  const auto outputs = json.find(kOutputs);
  if (console == json.end() || !console->is_boolean()) return false;
  if (outputs == json.end() || !outputs->is_array()) return false;
  LockState read{.isConsoleLocked = console->get<bool>(), .outputs = {}};
  for (const Json& each : *outputs) {
    if (!ReadOutput(each, &read.outputs)) return false;
  }
  *state = std::move(read);
  return true;
}

// Written by hand, so that there is a line for each output.
std::string WriteLocks(const LockState& state) {
  const auto word = [](bool value) { return value ? "true" : "false"; };
  std::string text = "{\n  \"console\": ";
  text += word(state.isConsoleLocked);
  text += ",\n  \"outputs\": [";
  const char* before = "\n";
  for (const auto& [output, against] : state.outputs) {
    text += before;
    text += "    {\"output\": " + std::to_string(output) + ", \"panels\": ";
    text += word(against == Locks::Against::ConsoleAndPanels);
    text += '}';
    before = ",\n";
  }
  text += state.outputs.empty() ? "]\n}\n" : "\n  ]\n}\n";
  return text;
}

}  // namespace config
