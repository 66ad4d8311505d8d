// SPDX-License-Identifier: MIT

#ifndef TESKSIM_TRANSMITTER_H_
#define TESKSIM_TRANSMITTER_H_

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "tools/tesksim/clock.h"
#include "tools/tesksim/faults.h"
#include "tools/tesksim/line_pacer.h"
#include "tools/tesksim/random.h"

namespace tesksim {

// One line of the log, without its line end.
using Log = std::function<void(const std::string& line)>;

// Something to be sent, and what the log calls it: "row output 6 status 0 sources 8".
struct Outgoing {
  Bytes bytes;
  std::string text;
  bool mayBeHarmed = true;  // a whole message, which faults apply to
  bool inOnePiece = false;  // no link answer may come between its bytes
};

// Gives messages one by one when the line has nothing else to carry.
struct MessageSource {
  std::function<bool()> hasNext;
  std::function<Outgoing()> next;  // REQUIRES: hasNext()
};

// The switcher's end of the line to the console: puts messages, link answers and noise into one
// stream of bytes, at the pace of the line.
class Transmitter {
 public:
  // What may wait to be sent; what comes on top is dropped and counted.  At 57600 baud it takes
  // the line eleven seconds to carry as much.
  static constexpr std::size_t kLimit = 65536;

  // `log` may be empty.
  Transmitter(int baud, std::uint32_t seed, MessageSource source, Log log);

  // Puts a message behind those that wait; all of them go before the source's next one.
  void Send(Outgoing message);

  // Sends the one-byte link answer before everything else, also between two bytes of a message
  // that is on its way, unless that must stay in one piece: the console takes it out of the
  // stream wherever it stands.
  void SendLinkAnswer();

  // Forgets all that waits, and the rest of the message that is on its way.
  void Clear();

  // The bytes that have reached the far end since the last call.
  Bytes Take(Time now);

  // When Take() has something to give; nothing when the line is idle.
  std::optional<Time> NextTime() const;

  // Sets a fault.  Noise begins at `now`.
  void SetFault(const FaultSetting& setting, int value, Time now);
  const Faults& Settings() const { return faults_.Settings(); }

  std::uint64_t BytesSent() const { return bytesSent_; }
  std::uint64_t MessagesSent() const { return messagesSent_; }
  std::uint64_t MessagesDropped() const { return messagesDropped_; }

 private:
  bool HasOutput() const;
  bool MayInterrupt() const;
  std::size_t Portion() const;
  std::uint8_t NextByte();
  void StartMessage();
  void MakeNoise(Time now);
  void ScheduleNoise(Time from);
  std::uint8_t NoiseByte();
  bool InGap() const { return position_ == current_.size(); }
  void Write(const std::string& line) const;

  LinePacer pacer_;
  FaultInjector faults_;
  Random random_;
  const MessageSource source_;
  Log log_;

  std::size_t linkAnswers_ = 0;  // waiting
  std::size_t noiseBytes_ = 0;   // waiting
  std::size_t gapBytes_ = 0;     // noise waiting for the end of the message on its way
  std::optional<Time> nextNoise_;
  std::deque<Outgoing> waiting_;
  std::size_t waitingBytes_ = 0;
  Bytes current_;             // the message on its way
  bool inOnePiece_ = false;   // it is not to be interrupted
  std::size_t position_ = 0;  // its next byte

  std::uint64_t bytesSent_ = 0;
  std::uint64_t messagesSent_ = 0;
  std::uint64_t messagesDropped_ = 0;
};

}  // namespace tesksim

#endif  // TESKSIM_TRANSMITTER_H_
