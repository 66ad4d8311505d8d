// SPDX-License-Identifier: MIT

#ifndef SWITCHER_LIVE_COMMANDS_H_
#define SWITCHER_LIVE_COMMANDS_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "model/error_reporter.h"
#include "model/system_model.h"
#include "switcher/serial_port.h"

namespace switcher {

// The commands that act on the running switcher at once.  Each writes its message, sets
// SendBusy until the output has drained, and reports a failure to the operator itself; it then
// returns false.
class LiveCommands {
 public:
  // All must outlive the object.
  LiveCommands(model::SystemModel& model, SerialPort& port, model::ErrorReporter& reporter)
      : model_(model), port_(port), reporter_(reporter) {}

  // Makes or breaks the crosspoint of an output and an input channel, both from 1 and at most
  // 256.  `action` is a TakeAction, or what a panel asked for.
  bool SendTake(int destination, int source, std::uint8_t action);

  // Sets the gain of input `channel` (0-based, 0..63) to `gain` (0..127).
  bool SendGain(int channel, int gain);

 private:
  bool Send(std::span<const std::uint8_t> message, std::string_view failureLine);

  model::SystemModel& model_;
  SerialPort& port_;
  model::ErrorReporter& reporter_;
};

}  // namespace switcher

#endif  // SWITCHER_LIVE_COMMANDS_H_
