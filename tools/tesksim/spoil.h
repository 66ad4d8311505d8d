// SPDX-License-Identifier: MIT
//
// Chosen messages of a retrieval that go out wrong, or not at all.

#ifndef TESKSIM_SPOIL_H_
#define TESKSIM_SPOIL_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "switcher/wire/values.h"
#include "tools/tesksim/words.h"

namespace tesksim {

// One table message: its code and what it is about.  `number` is the selector of label texts
// (20, 10), the output of inhibits and relays or the station of buttons (from 1), 0 for optos.
struct TableMessage {
  std::uint8_t code = 0;
  int number = 0;

  bool operator==(const TableMessage&) const = default;
};

// "relays 3"; "optos".
std::string Describe(const TableMessage& message);

enum class Harm {
  Checksum,  // the checksum is wrong
  Length,    // the last data byte is missing
  Number,    // the output or station is the first one that the system does not have
  End,       // the end byte is missing: the message runs into what comes next
  Drop,      // it is not sent
};

// "checksum", "length", "number", "end", "drop".
std::string_view HarmName(Harm harm);

struct SpoiledMessage {
  TableMessage message;
  Harm harm = Harm::Checksum;
};

// Reads "relays 3 checksum": the message by its name in the log or by its code in hexadecimal,
// the number (none for optos), what is wrong.  Nothing when there is no such message, number or
// harm; label texts and optos have no number that can be wrong.
std::optional<SpoiledMessage> ParseSpoiledMessage(Words words);

// How it is written: "MESSAGE [NUMBER] HARM" and what each may be, for people.
std::string SpoilUsage();

// Harms a message, code to end byte, of a system with `count` outputs or stations; after Drop
// it is empty.
void Spoil(Harm harm, int count, switcher::Bytes* message);

}  // namespace tesksim

#endif  // TESKSIM_SPOIL_H_
