// SPDX-License-Identifier: MIT

#ifndef CONFIG_SERIAL_DEVICES_H_
#define CONFIG_SERIAL_DEVICES_H_

#include <string>
#include <string_view>

#include "config/ini_file.h"

namespace config {

// The device of serial port `number` (from 1): what the installer named for "COM" and the
// number in section "SERIAL DEVICES", else the platform's own port of that number ("/dev/ttyS0"
// for 1, "COM1" on Windows).
std::string SerialDevice(const IniFile& file, int number);

// Names the device of serial port `number`; an empty one stands for the platform's own.
// REQUIRES: no line break in it
void SetSerialDevice(int number, std::string_view device, IniFile& file);

}  // namespace config

#endif  // CONFIG_SERIAL_DEVICES_H_
