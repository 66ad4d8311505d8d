// SPDX-License-Identifier: MIT

#include "switcher/live_commands.h"

#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/take.h"

namespace switcher {
namespace {

constexpr std::string_view kOutputLockedText = "Action Not Allowed On Locked Output";

}  // namespace

bool LiveCommands::RefusesAll() const {
  if (locks_ == nullptr || !locks_->IsConsoleLocked()) return false;
  model::ShowConsoleLocked(reporter_);
  return true;
}

bool LiveCommands::RefusesTake(int destination) const {
  if (RefusesAll()) return true;
  if (locks_ == nullptr || !locks_->IsLocked(destination)) return false;
  reporter_.Show(model::ErrorReporter::Icon::Exclamation, "Control Error", kOutputLockedText);
  return true;
}

bool LiveCommands::SendTake(int destination, int source, std::uint8_t action) {
  if (RefusesTake(destination)) return false;
  const Take take{.destination = destination, .source = source, .action = action};
  return sender_.Send(EncodeTake(take), "Error Sending Take Command");
}

bool LiveCommands::SendGain(int channel, int gain) {
  if (RefusesAll()) return false;
  const Gain message{.input = channel, .step = gain};
  return sender_.Send(EncodeGain(message), "Error Sending Gain Command");
}

}  // namespace switcher
