// SPDX-License-Identifier: MIT

#include "config/configuration.h"

#include <algorithm>
#include <limits>
#include <string>

#include "config/profile_number.h"

namespace config {

namespace {

constexpr char kSection[] = "CONFIGURATION";

template <typename Field>
Field ReadNumber(const IniFile& file, std::string_view key) {
  using Limits = std::numeric_limits<Field>;
  return static_cast<Field>(ProfileNumber(file.Value(kSection, key), Limits::min(), Limits::max()));
}

// A folder may have a line break in its name, a line of the file not.
std::string OnOneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return text;
}

}  // namespace

void ReadConfiguration(const IniFile& file, model::SystemModel& model) {
  model.ComPort = ReadNumber<std::int16_t>(file, "COM Port");
  model.DownloadInterval = ReadNumber<std::int16_t>(file, "Download Interval");
  model.DemoMode = ReadNumber<std::int16_t>(file, "Demo Mode");
  model.IpPort = ReadNumber<std::int32_t>(file, "IP Port");
  if (model.IpPort < 1) model.IpPort = 1250;
  model.SoftpanelSupport = file.Value(kSection, "Softpanel Support") == "Yes";
  if (model.ComPort < 1 || model.ComPort > 4) model.ComPort = 1;
  model.DownloadInterval = std::max<std::int16_t>(model.DownloadInterval, 0);
}

void WriteConfiguration(const model::SystemModel& model, int comPort, IniFile& file) {
  file.SetValue(kSection, "COM Port", std::to_string(comPort));
  file.SetValue(kSection, "App Path", OnOneLine(model.AppPath));
  file.SetValue(kSection, "Download Interval", std::to_string(model.DownloadInterval));
  file.SetValue(kSection, "Demo Mode", std::to_string(model.DemoMode));
  file.SetValue(kSection, "IP Port", std::to_string(model.IpPort));
  file.SetValue(kSection, "Softpanel Support", model.SoftpanelSupport ? "Yes" : "No");
}

}  // namespace config
