// SPDX-License-Identifier: MIT
//
// The installation's settings: section "CONFIGURATION" of Orvotesk.ini in the console's folder.

#ifndef CONFIG_CONFIGURATION_H_
#define CONFIG_CONFIGURATION_H_

#include "config/ini_file.h"
#include "model/system_model.h"

namespace config {

inline constexpr char kConfigurationFile[] = "Orvotesk.ini";

// Reads ComPort, DownloadInterval, DemoMode, IpPort and SoftpanelSupport.  A missing value
// reads as empty: port 1, interval 0, mode 0, IP port 1250, no panels.  A COM port outside 1..4
// becomes 1, a negative interval 0, an IP port below 1 becomes 1250; panels are served only for
// exactly "Yes".
void ReadConfiguration(const IniFile& file, model::SystemModel& model);

// Sets all six values from the model.  `comPort` is the number set on the serial port.  Line breaks
// in the folder's name are written as blanks.
void WriteConfiguration(const model::SystemModel& model, int comPort, IniFile& file);

}  // namespace config

#endif  // CONFIG_CONFIGURATION_H_
