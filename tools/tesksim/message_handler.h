// SPDX-License-Identifier: MIT

#ifndef TESKSIM_MESSAGE_HANDLER_H_
#define TESKSIM_MESSAGE_HANDLER_H_

#include <cstdint>
#include <span>
#include <string>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace tesksim {

// What the switcher made of a message.
struct Outcome {
  enum class Result {
    Done,
    Refused,    // understood, and not done: inhibited, or outside the system
    Malformed,  // wrong length, checksum or end byte
  };
  Result result = Result::Malformed;
  std::string text;   // what it says: "output 6 source 8 action 3"; if malformed: what is wrong
  int answerRow = 0;  // the output whose map row answers the message; 0 for none
};

// The outcome of a table message that failed a check: refused for a wrong number, which `text`
// names, malformed for everything else.  REQUIRES: status is not Ok
Outcome Rejected(switcher::DecodeStatus status, std::string text = {});

// Acts on the messages of one kind.  One class, in a file of its own, for each kind; what it
// keeps for itself alone is its member, what others need is in SwitcherState.
class MessageHandler {
 public:
  virtual ~MessageHandler() = default;

  // Checks a message, code to end byte, and does what it says.
  virtual Outcome Accept(std::span<const std::uint8_t> message) = 0;

  // The message that reports what is kept of one output or station (from 1), of the labels of a
  // selector (20, 10) in the order of the stations, or of all optos; nothing where no such message
  // comes from the switcher.
  virtual switcher::Bytes Report(int /*number*/) const { return {}; }
};

}  // namespace tesksim

#endif  // TESKSIM_MESSAGE_HANDLER_H_
