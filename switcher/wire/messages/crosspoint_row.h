// SPDX-License-Identifier: MIT
//
// 0xF3, switcher to console: the crosspoints of one output.  2 * (channels / 8) + 7 bytes: code,
// output pair (0-based), status pair, one pair for every eight sources (bit 0 is the first of
// them), checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_CROSSPOINT_ROW_H_
#define SWITCHER_WIRE_MESSAGES_CROSSPOINT_ROW_H_

#include <cstdint>
#include <span>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

struct CrosspointRow {
  int output = 0;                     // from 1; 0 when the message was too short to name it
  std::uint8_t status = 0;            // 0 ordinary, 1 priority
  std::vector<std::uint8_t> sources;  // element 0 is input 1; 1 = crosspoint made

  bool operator==(const CrosspointRow&) const = default;
};

// Reads a map row of a matrix of `channelCount` channels.
//
// The checks come in this order: length, output number, checksum, end byte.  row->output is
// read before the length is judged, so that a refused message can be named.  row->status and
// row->sources (channelCount elements) are filled for Ok, ChecksumFailed and MissingEnd, and
// untouched for WrongSize and WrongChannel.  A channel count that is no multiple of eight
// cannot be sent in groups of eight; every row is then of the wrong size.
DecodeStatus ParseCrosspointRow(std::span<const std::uint8_t> message, int channelCount,
                                CrosspointRow* row);

// The message for a row.  REQUIRES: the number of sources is a multiple of eight
Bytes EncodeCrosspointRow(const CrosspointRow& row);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_CROSSPOINT_ROW_H_
