// SPDX-License-Identifier: MIT

#include "config/serial_devices.h"

namespace config {
namespace {

constexpr char kDevices[] = "SERIAL DEVICES";

std::string KeyOf(int number) { return "COM" + std::to_string(number); }

}  // namespace

std::string SerialDevice(const IniFile& file, int number) {
  if (std::string device = file.Value(kDevices, KeyOf(number)); !device.empty()) return device;
#ifdef _WIN32
  return KeyOf(number);
#else
  return "/dev/ttyS" + std::to_string(number - 1);
#endif
}

void SetSerialDevice(int number, std::string_view device, IniFile& file) {
  file.SetValue(kDevices, KeyOf(number), device);
}

}  // namespace config
