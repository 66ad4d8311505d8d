// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for the settings file.  Reading must keep every byte; setting a value
// must be readable again and must not disturb the lines before its section.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "config/configuration.h"
#include "config/ini_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  config::IniFile file(text);
  if (file.Text() != text) std::abort();

  model::SystemModel model;
  config::ReadConfiguration(file, model);
  if (model.ComPort < 1 || model.ComPort > 4 || model.IpPort < 1 || model.DownloadInterval < 0) {
    std::abort();
  }
  model.AppPath = "/srv/console\\";
  config::WriteConfiguration(model, model.ComPort, file);
  if (file.Value("CONFIGURATION", "App Path") != model.AppPath) std::abort();

  const config::IniFile reread(file.Text());
  model::SystemModel again;
  config::ReadConfiguration(reread, again);
  if (again.ComPort != model.ComPort || again.IpPort != model.IpPort ||
      again.DemoMode != model.DemoMode || again.SoftpanelSupport != model.SoftpanelSupport) {
    std::abort();
  }
  return 0;
}
