// SPDX-License-Identifier: MIT

#include "switcher/live_commands.h"

#include "switcher/send.h"
#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/take.h"

namespace switcher {

bool LiveCommands::SendTake(int destination, int source, std::uint8_t action) {
  return Send(EncodeTake({.destination = destination, .source = source, .action = action}),
              "Error Sending Take Command");
}

bool LiveCommands::SendGain(int channel, int gain) {
  return Send(EncodeGain({.input = channel, .step = gain}), "Error Sending Gain Command");
}

bool LiveCommands::Send(std::span<const std::uint8_t> message, std::string_view failureLine) {
  model_.SendBusy = true;
  const model::Status status = WriteMessage(port_, message);
  AskForSendEvent(port_);
  if (status.ok()) return true;
  reporter_.Show(model::ErrorReporter::Icon::Critical, kSendErrorTitle,
                 ErrorText(failureLine, status));
  return false;
}

}  // namespace switcher
