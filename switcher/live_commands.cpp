// SPDX-License-Identifier: MIT

#include "switcher/live_commands.h"

#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/take.h"

namespace switcher {

bool LiveCommands::SendTake(int destination, int source, std::uint8_t action) {
  const Take take{.destination = destination, .source = source, .action = action};
  return sender_.Send(EncodeTake(take), "Error Sending Take Command");
}

bool LiveCommands::SendGain(int channel, int gain) {
  const Gain message{.input = channel, .step = gain};
  return sender_.Send(EncodeGain(message), "Error Sending Gain Command");
}

}  // namespace switcher
