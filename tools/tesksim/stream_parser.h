// SPDX-License-Identifier: MIT
//
// Cutting the byte stream from the console into polls and messages.

#ifndef TESKSIM_STREAM_PARSER_H_
#define TESKSIM_STREAM_PARSER_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "switcher/wire/frame.h"
#include "switcher/wire/values.h"
#include "tools/tesksim/clock.h"

namespace tesksim {

using switcher::Bytes;

// Whether this byte, outside any message, asks the switcher for something: 0xE5, 0xE4, 0xED or
// 0xE7.  0xE4 is a poll in this direction only; coming from the switcher it begins a message.
bool IsPoll(std::uint8_t byte);

// What is sent to the switcher under a code, as one word: "take", "inhibits"; empty for a code
// that begins no message in this direction.
std::string_view MessageName(std::uint8_t code);

// The code of a message by that word.
std::optional<std::uint8_t> MessageCodeOf(std::string_view name);

// A piece of what the console sent.
struct Received {
  enum class Kind {
    Poll,     // one byte that asks for something
    Message,  // code to end byte; nothing inside has been checked
    Broken,   // a message that began and did not come to its end
    Noise,    // bytes that belong to nothing
  };
  Kind kind = Kind::Noise;
  Bytes bytes;

  bool operator==(const Received&) const = default;
};

// Finds polls and messages in what arrives, in whatever portions it arrives.
//
// Every byte comes out again, once and in order.  Inside a message only the end byte has its
// top bit set, so any other such byte means that the rest of the message is lost: it is given
// up as broken and the byte is taken as if it stood outside.  A message is also given up when
// it grows beyond kLongestMessage, and when its next byte does not come within kGap, so that no
// poll is swallowed by the remains of a sender that died.
//
// Label texts (0xF9) are the exception: their characters have eight bits, and one of them may be
// 0xFF itself.  They are read by their length.  When there is no checksum and end byte at that
// place, or nothing comes any more, the message ends at its first 0xFF after all, as any other
// does, and what stands behind that is looked at again.
class StreamParser {
 public:
  static constexpr std::size_t kLongestMessage = 8192;
  static constexpr std::chrono::milliseconds kGap{500};

  // `labelCount` is the number of labels in the label texts.  REQUIRES: 1 <= labelCount <= 256
  explicit StreamParser(int labelCount)
      : labelMessageSize_(switcher::MessageLength(switcher::kAlphaLabelsCode, labelCount)) {}

  // What these bytes, which arrived at `now`, complete.
  std::vector<Received> Feed(std::span<const std::uint8_t> bytes, Time now);

  // Gives up a message that waits for its next byte.  Nothing waits afterwards.
  std::vector<Received> GiveUp();

  // When a waiting message is to be given up; nothing when none waits.
  std::optional<Time> Deadline() const;

  // Whoever feeds it could not look until `now` whether bytes have come: a gap begins anew.
  void HeldUp(Time now) { lastByte_ = now; }

 private:
  void Add(std::uint8_t byte, std::vector<Received>* found);
  void AddToLabelTexts(std::uint8_t byte, std::vector<Received>* found);
  void EndAtFirstEndByte(std::vector<Received>* found);
  void Complete(Received::Kind kind, std::vector<Received>* found);
  void GiveUp(std::vector<Received>* found);

  std::size_t labelMessageSize_;
  Bytes message_;                 // empty outside a message
  std::size_t firstEndByte_ = 0;  // where in label texts the first 0xFF stands; 0: there is none
  Time lastByte_{};
};

}  // namespace tesksim

#endif  // TESKSIM_STREAM_PARSER_H_
