// SPDX-License-Identifier: MIT
//
// What is known of the messages that the switcher holds, and the file that keeps it from run to
// run.  docs/sent-format.md describes the file.

#ifndef SWITCHER_UNSENT_HELD_MESSAGES_H_
#define SWITCHER_UNSENT_HELD_MESSAGES_H_

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "switcher/table.h"
#include "switcher/unsent/digest.h"

namespace switcher {

using Day = std::chrono::year_month_day;

// What is known of one message.
struct HeldMessage {
  enum class State : std::uint8_t {
    Held,   // the switcher has it: it acknowledged it, or sent it itself
    Found,  // so it was found in the database; whether the switcher has it nobody knows
    Open,   // it was sent, or only its beginning; what the switcher made of it is not known
  };

  State state = State::Found;
  Digest digest = 0;         // of the message that `state` is about
  std::optional<Day> since;  // the day from which on the database has had another content

  bool operator==(const HeldMessage&) const = default;
};

using HeldMessages = std::map<TablePart, HeldMessage>;

// The greatest size of the file.
inline constexpr std::uint64_t kMostHeldText = 1 << 22;

// The text of the file: a line for each message, without those that say nothing (found so, and
// still so).
std::string WriteHeld(const HeldMessages& messages);

// What the text says.  A line that cannot be understood is passed over; of two about the same
// message the last one counts.
HeldMessages ReadHeld(std::string_view text);

}  // namespace switcher

#endif  // SWITCHER_UNSENT_HELD_MESSAGES_H_
