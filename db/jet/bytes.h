// SPDX-License-Identifier: MIT
//
// Numbers in byte strings.  The file is little-endian except inside index entries.

#ifndef DB_JET_BYTES_H_
#define DB_JET_BYTES_H_

#include <cstdint>
#include <span>
#include <vector>

namespace jet {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

inline std::uint16_t GetU16(const std::uint8_t* p) {
  return static_cast<std::uint16_t>(p[0] | (p[1] << 8));
}

inline std::uint32_t GetU32(const std::uint8_t* p) {
  return p[0] | (std::uint32_t{p[1]} << 8) | (std::uint32_t{p[2]} << 16) |
         (std::uint32_t{p[3]} << 24);
}

// In one expression, of which the compiler makes one load.
inline std::uint64_t GetU64(const std::uint8_t* p) {
  return p[0] | (std::uint64_t{p[1]} << 8) | (std::uint64_t{p[2]} << 16) |
         (std::uint64_t{p[3]} << 24) | (std::uint64_t{p[4]} << 32) | (std::uint64_t{p[5]} << 40) |
         (std::uint64_t{p[6]} << 48) | (std::uint64_t{p[7]} << 56);
}

inline std::uint32_t GetU24BigEndian(const std::uint8_t* p) {
  return (std::uint32_t{p[0]} << 16) | (std::uint32_t{p[1]} << 8) | p[2];
}

inline std::uint32_t GetU32BigEndian(const std::uint8_t* p) {
  return (std::uint32_t{p[0]} << 24) | GetU24BigEndian(p + 1);
}

inline void PutU16(std::uint8_t* p, std::uint32_t value) {
  p[0] = static_cast<std::uint8_t>(value);
  p[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void PutU32(std::uint8_t* p, std::uint32_t value) {
  PutU16(p, value);
  PutU16(p + 2, value >> 16);
}

inline void PutU64(std::uint8_t* p, std::uint64_t value) {
  PutU32(p, static_cast<std::uint32_t>(value));
  PutU32(p + 4, static_cast<std::uint32_t>(value >> 32));
}

inline void PutU32BigEndian(std::uint8_t* p, std::uint32_t value) {
  p[0] = static_cast<std::uint8_t>(value >> 24);
  p[1] = static_cast<std::uint8_t>(value >> 16);
  p[2] = static_cast<std::uint8_t>(value >> 8);
  p[3] = static_cast<std::uint8_t>(value);
}

inline void AppendU16(Bytes* bytes, std::uint32_t value) {
  const std::uint8_t two[] = {static_cast<std::uint8_t>(value),
                              static_cast<std::uint8_t>(value >> 8)};
  bytes->insert(bytes->end(), two, two + 2);
}

inline void AppendU32(Bytes* bytes, std::uint32_t value) {
  std::uint8_t four[4];
  PutU32(four, value);
  bytes->insert(bytes->end(), four, four + 4);
}

inline void Append(Bytes* bytes, ByteView more) {
  bytes->insert(bytes->end(), more.begin(), more.end());
}

}  // namespace jet

#endif  // DB_JET_BYTES_H_
