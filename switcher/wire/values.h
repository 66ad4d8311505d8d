// SPDX-License-Identifier: MIT
//
// The values inside a message to or from the switcher, and their checksum.
//
// A message is a code byte with its top bit set, data bytes of seven bits, a checksum byte of
// seven bits and the end byte 0xFF.  A value of eight bits travels as a pair of data bytes, its
// low seven bits first, its bit 7 second.  The checksum is the sum, modulo 128, of the values
// (of a pair the whole value, so the second byte adds nothing) without the code.

#ifndef SWITCHER_WIRE_VALUES_H_
#define SWITCHER_WIRE_VALUES_H_

#include <cstdint>
#include <span>
#include <vector>

#include "switcher/wire/decode_status.h"

namespace switcher {

using Bytes = std::vector<std::uint8_t>;

inline constexpr std::uint8_t kEndOfMessage = 0xFF;

// Reads the values of one message, front to back, and keeps their checksum.
class WireReader {
 public:
  // `data` is what stands behind the code byte; it must outlive the reader.
  explicit WireReader(std::span<const std::uint8_t> data) : rest_(data) {}

  // Reads a value of one byte and adds it to the checksum.  Returns false, reading nothing,
  // when no byte is left.
  bool GetByte(int* value);

  // Reads a value sent as a pair and adds it to the checksum.  A second byte above 1 gives a
  // value above 255; it is the caller's to judge.  Returns false, reading nothing, when fewer
  // than two bytes are left.
  bool GetPair(int* value);

  // The checksum of the values read so far, 0..127.
  int Checksum() const { return checksum_; }

  // Reads what stands behind the values: the checksum byte, which must be that of those read so
  // far, and the end byte.  Ok, ChecksumFailed or MissingEnd.
  DecodeStatus Finish();

 private:
  // A byte that is no value; -1 when none is left.
  int GetRaw();

  std::span<const std::uint8_t> rest_;
  int checksum_ = 0;
};

// Builds one message: code, values, checksum, end byte.
class WireWriter {
 public:
  explicit WireWriter(std::uint8_t code) : message_{code} {}

  // Appends a value of one byte.  REQUIRES: 0 <= value <= 255
  void PutByte(int value);

  // Appends a value as a pair: its low seven bits, then its bit 7.  Bits above are not sent, but
  // the whole value enters the checksum (which their weight leaves as it is).  A negative value
  // goes as its low eight bits in two's complement.
  void PutPair(int value);

  // Appends values of eight bits, each as a pair.
  void PutPairs(std::span<const std::uint8_t> values);

  // The message with its checksum and end byte.  The writer is spent afterwards.
  Bytes Finish();

 private:
  Bytes message_;
  int checksum_ = 0;
};

}  // namespace switcher

#endif  // SWITCHER_WIRE_VALUES_H_
