// SPDX-License-Identifier: MIT

#ifndef SWITCHER_WIRE_DECODE_STATUS_H_
#define SWITCHER_WIRE_DECODE_STATUS_H_

#include <string_view>

namespace switcher {

// What came of checking a received message.  The numbers are those of the retrieval's history.
enum class DecodeStatus : int {
  Ok = 0,
  ChecksumFailed = 1,  // the checksum byte differs from the sum of the values
  WrongSize = 2,       // the length is not the one this message must have
  WrongChannel = 3,    // an output, station, channel or kind of labels outside the system
  MissingEnd = 4,      // the byte behind the checksum is not 0xFF
  NotStored = 5,       // all checks passed, but the database could not take the table
};

// The word shown for a status: "OK", "Failed Csum", "Size Error", "Channel Error" or
// "Missing EOM"; empty for NotStored, which has a report of its own, and any other number.
std::string_view StatusWord(DecodeStatus status);

}  // namespace switcher

#endif  // SWITCHER_WIRE_DECODE_STATUS_H_
