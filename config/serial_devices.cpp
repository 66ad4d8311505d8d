// SPDX-License-Identifier: MIT

#include "config/serial_devices.h"

namespace config {

std::string SerialDevice(const IniFile& file, int number) {
  const std::string name = "COM" + std::to_string(number);
  if (std::string device = file.Value("SERIAL DEVICES", name); !device.empty()) return device;
#ifdef _WIN32
  return name;
#else
  return "/dev/ttyS" + std::to_string(number - 1);
#endif
}

}  // namespace config
