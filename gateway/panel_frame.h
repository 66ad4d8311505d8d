// SPDX-License-Identifier: MIT
//
// The frame that the console and its network panels exchange: a type byte with its top bit set,
// data bytes of seven bits, a checksum byte of seven bits and the terminator 0xFF.  A wider
// value travels as a pair of data bytes, its low seven bits first.
//
// Unlike on the serial line, the checksum is that of the bytes as they stand, both bytes of a
// pair included.

#ifndef GATEWAY_PANEL_FRAME_H_
#define GATEWAY_PANEL_FRAME_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "switcher/wire/values.h"

namespace gateway {

using Bytes = switcher::Bytes;

inline constexpr std::uint8_t kTerminator = 0xFF;

// Frame types.  Those without a note go to the panel.
inline constexpr std::uint8_t kIgnoredType = 0x80;         // from the panel: read and discarded
inline constexpr std::uint8_t kConnectionType = 0x81;      // request to the panel, and its reply
inline constexpr std::uint8_t kLinkDown = 0xF1;            // keep-alive answer, a single byte
inline constexpr std::uint8_t kServiceRequestType = 0xF2;  // from the panel
inline constexpr std::uint8_t kLinkUp = 0xF4;         // keep-alive answer, a single byte; both ways
inline constexpr std::uint8_t kKeepAlivePoll = 0xF5;  // from the panel, a single byte
inline constexpr std::uint8_t kCrosspointMapType = 0xF6;
inline constexpr std::uint8_t kStationListType = 0xFB;
inline constexpr std::uint8_t kLabelTableType = 0xFC;
inline constexpr std::uint8_t kButtonProgrammingType = 0xFD;  // from the panel: discarded
inline constexpr std::uint8_t kTakeType = 0xFE;               // from the panel

// The bytes of a whole service request.
inline constexpr std::size_t kServiceRequestLength = 11;

// The checksum of a whole frame, 0..127: its bytes without the type byte and without the last
// two, which are the checksum's own place and the terminator.
int TcpChecksum(std::span<const std::uint8_t> frame);

// Whether the frame's checksum byte is right.  False for less than two bytes.
bool ChecksumMatches(std::span<const std::uint8_t> frame);

// Whether a byte may stand among the data of a frame.
constexpr bool IsData(std::uint8_t byte) { return byte < 0x80; }

// How far a frame from a panel reaches, by its type byte.
enum class FrameShape : std::uint8_t {
  Single,      // it is that byte alone
  Terminated,  // up to the terminator
  None,        // no frame from a panel begins so: the byte is dropped
};
FrameShape ShapeOf(std::uint8_t first);

// The whole frames among what a panel has sent: without what cannot begin a frame, and without a
// frame in the end that its terminator is missing from.
Bytes WholeFrames(std::span<const std::uint8_t> bytes);

// The value of a pair as it stands in a frame.
int PairValue(std::uint8_t low, std::uint8_t high);

// Builds one frame.
class FrameBuilder {
 public:
  explicit FrameBuilder(std::uint8_t type) : frame_{type} {}

  // Appends the low seven bits of `value`.
  void PutByte(int value);

  // Appends the low fourteen bits of `value` as a pair.
  void PutPair(int value);

  // The frame with its checksum and terminator.  The builder is spent afterwards.
  Bytes Finish();

 private:
  Bytes frame_;
};

}  // namespace gateway

#endif  // GATEWAY_PANEL_FRAME_H_
