// SPDX-License-Identifier: MIT

#include "tools/tesksim/faults.h"

namespace tesksim {

namespace {

constexpr std::uint8_t kUnknownCode = 0xE0;

// Whether it is the turn of the `every`-th message; 0 is never.
bool Turn(int every, int* count) {
  if (every == 0) return false;
  *count = (*count + 1) % every;
  return *count == 0;
}

}  // namespace

void FaultInjector::Set(const FaultSetting& setting, int value) {
  faults_.*setting.value = value;
  counts_ = {};
}

std::string FaultInjector::Harm(Bytes* message) {
  std::string done;
  if (Turn(faults_.badChecksum, &counts_.badChecksum)) {
    std::uint8_t& checksum = (*message)[message->size() - 2];
    checksum = static_cast<std::uint8_t>((checksum + random_.Between(1, 127)) & 0x7F);
    done += " (bad checksum)";
  }
  if (Turn(faults_.unknownCode, &counts_.unknownCode)) {
    message->front() = kUnknownCode;
    done += " (unknown code)";
  }
  if (Turn(faults_.missingEnd, &counts_.missingEnd)) {
    message->pop_back();
    done += " (no end byte)";
  }
  if (Turn(faults_.cut, &counts_.cut)) {
    // At least the checksum is lost with the end byte, so that this is not the same fault.
    message->resize(
        static_cast<std::size_t>(random_.Between(1, static_cast<int>(message->size()) - 2)));
    done += " (cut)";
  }
  return done;
}

}  // namespace tesksim
