// SPDX-License-Identifier: MIT
//
// How the simulated switcher misbehaves.

#ifndef TESKSIM_FAULTS_H_
#define TESKSIM_FAULTS_H_

#include <string>
#include <string_view>

#include "switcher/wire/values.h"
#include "tools/tesksim/random.h"

namespace tesksim {

using switcher::Bytes;

// Faults that are set by a number; 0 is "none".  "Every n-th" counts the messages sent since
// a fault was last set; single answer bytes are no messages and are not harmed.
struct Faults {
  int noise = 0;        // random bytes a second
  int dataNoise = 0;    // the same, only bytes that a receiver drops between messages
  int gapNoise = 0;     // the same as dataNoise, and never inside a message
  int badChecksum = 0;  // every n-th message
  int cut = 0;          // every n-th message
  int missingEnd = 0;   // every n-th message
  int unknownCode = 0;  // every n-th message
  int delay = 0;        // milliseconds
};

// One fault as the command line and the command input name it.
struct FaultSetting {
  std::string_view name;      // "bad-checksum"; the option is "--bad-checksum"
  std::string_view argument;  // "N"
  std::string_view help;
  int limit;  // the largest value
  int Faults::*value;
};

inline constexpr FaultSetting kFaultSettings[] = {
    {"noise", "RATE", "line noise towards the console: random bytes a second", 5000,
     &Faults::noise},
    {"data-noise", "RATE", "the same, of bytes below 0x80 only", 5000, &Faults::dataNoise},
    {"gap-noise", "RATE", "the same, of bytes below 0x80 between messages", 5000,
     &Faults::gapNoise},
    {"bad-checksum", "N", "every N-th message has a wrong checksum", 1'000'000,
     &Faults::badChecksum},
    {"cut", "N", "every N-th message breaks off before its end", 1'000'000, &Faults::cut},
    {"missing-end", "N", "every N-th message lacks its end byte", 1'000'000, &Faults::missingEnd},
    {"unknown-code", "N", "every N-th message has the unknown code 0xE0", 1'000'000,
     &Faults::unknownCode},
    {"delay", "MS", "what comes is acted on and answered MS milliseconds late", 60'000,
     &Faults::delay},
};

// Harms messages as the settings say.
class FaultInjector {
 public:
  explicit FaultInjector(std::uint32_t seed) : random_(seed) {}

  const Faults& Settings() const { return faults_; }

  // Sets one fault and starts all counts anew.  REQUIRES: 0 <= value <= setting.limit
  void Set(const FaultSetting& setting, int value);

  // Harms `message` when it is its turn.  Returns what was done to it, for the log: "", or
  // " (bad checksum)", " (cut)" and so on.
  // REQUIRES: a whole message of at least four bytes, code to end byte
  std::string Harm(Bytes* message);

 private:
  struct Counts {
    int badChecksum = 0;
    int cut = 0;
    int missingEnd = 0;
    int unknownCode = 0;
  };

  Faults faults_;
  Counts counts_;
  Random random_;
};

}  // namespace tesksim

#endif  // TESKSIM_FAULTS_H_
