// SPDX-License-Identifier: MIT
//
// 0xE1, both directions: the programming of all opto inputs.  22 * optos + 3 bytes: code, for
// each opto the pairs type, channel and first station and one pair for every eight target
// stations (bit 0 is the first of them; eight groups), checksum, end byte.

#ifndef SWITCHER_WIRE_MESSAGES_OPTO_DATA_H_
#define SWITCHER_WIRE_MESSAGES_OPTO_DATA_H_

#include <cstdint>
#include <span>
#include <vector>

#include "switcher/wire/decode_status.h"
#include "switcher/wire/values.h"

namespace switcher {

// Target stations of an opto in a received message.
inline constexpr std::size_t kOptoStations = 64;

struct OptoData {
  struct Opto {
    int type = 0;                        // 0..255
    int channel = 0;                     // 0..255
    int first = 0;                       // 0..255
    std::vector<std::uint8_t> stations;  // element 0 is station 1; 1 = the opto acts on it

    bool operator==(const Opto&) const = default;
  };

  std::vector<Opto> optos;  // element 0 is opto 1

  bool operator==(const OptoData&) const = default;
};

// The message.  Each opto brings as many groups as its stations need; a last group that is not
// full has its missing members off.
Bytes EncodeOptoData(const OptoData& data);

// Reads the opto data of a system of `optoCount` opto inputs with kOptoStations stations each.
// The checks come in this order: length, checksum, end byte.  *data is filled only for Ok.  Of a
// value above 255 the low eight bits count.
DecodeStatus ParseOptoData(std::span<const std::uint8_t> message, int optoCount, OptoData* data);

}  // namespace switcher

#endif  // SWITCHER_WIRE_MESSAGES_OPTO_DATA_H_
