// SPDX-License-Identifier: MIT
//
// S101: the frames that carry Ember+ over a stream of bytes.  A frame is FE, a body in which every
// byte from F8 up is escaped, and FF; the body ends with a checksum.  A message is cut into
// packets, each a frame of its own.

#ifndef GATEWAY_EMBER_S101_H_
#define GATEWAY_EMBER_S101_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "gateway/ember/bytes.h"

namespace ember {

// The most of a message that one packet carries, before it is escaped.
inline constexpr std::size_t kPacketSize = 1024;

// The checksum of a body without its checksum: CRC-16/X-25.
std::uint16_t Crc(std::span<const std::uint8_t> bytes);

// The frames of a message, one behind the other; at least one.
Bytes Packets(std::span<const std::uint8_t> message);

// The frame that asks whether the peer is still there, and the one that answers it.
Bytes KeepAliveRequest();
Bytes KeepAliveResponse();

// Takes frames off a stream of bytes that may be cut anywhere.  Frames with a wrong checksum, of
// another kind, or in the other framing that some peers try first are passed over.
class FrameReader {
 public:
  // What ends a connection: longer frames, or messages, than anybody sends.
  static constexpr std::size_t kLongestFrame = std::size_t{64} << 10;
  static constexpr std::size_t kLongestMessage = std::size_t{256} << 10;

  enum class Kind : std::uint8_t { Message, KeepAliveRequest, KeepAliveResponse };

  struct Event {
    Kind kind;
    Bytes message;  // of Kind::Message: its bytes, all packets joined; not empty

    bool operator==(const Event&) const = default;
  };

  // Reads on, and adds what has come whole to *events.  False when a frame or a message is too
  // long: the stream is then of no use any more.
  bool Read(std::span<const std::uint8_t> bytes, std::vector<Event>* events);

  // The bytes that are kept of what is not whole.
  std::size_t Kept() const { return body_.size() + message_.size(); }

 private:
  enum class State : std::uint8_t { Outside, Frame, Escape, LengthSize, Length, Raw };

  bool Take(std::uint8_t byte, std::vector<Event>* events);
  bool EndFrame(std::vector<Event>* events);

  State state_ = State::Outside;
  Bytes body_;               // of the frame that has begun, not escaped any more
  Bytes message_;            // the packets of the message that has begun
  bool isBegun_ = false;     // its first packet has come
  int lengthBytes_ = 0;      // of the other framing: so many are missing
  std::size_t rawLeft_ = 0;  // the length so far, then the bytes still to be passed over
};

}  // namespace ember

#endif  // GATEWAY_EMBER_S101_H_
