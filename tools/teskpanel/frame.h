// SPDX-License-Identifier: MIT
//
// The frames between a panel and the console, from the panel's side.
//
// A frame is a type byte with its top bit set, data bytes of seven bits, a checksum byte and the
// terminator 0xFF.  The checksum is the sum of the data bytes as they stand, modulo 128.  A wider
// number travels as a pair of data bytes, its low seven bits first.  Keep-alives are single bytes.

#ifndef TESKPANEL_FRAME_H_
#define TESKPANEL_FRAME_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace teskpanel {

using Bytes = std::vector<std::uint8_t>;

// The largest number of a pair.
inline constexpr int kLargestPair = 16383;

// Cuts the stream from the console into frames.  TCP neither loses nor changes bytes: when
// something is no frame, the other side is no console, or a broken one, and nothing after it can be
// trusted.
class FrameCutter {
 public:
  // No frame is longer.  The programming of 256 stations whose 32 buttons have 256 members each
  // takes 4.3 MB.
  static constexpr std::size_t kLongestFrame = std::size_t{8} << 20;

  enum class Result { NeedMore, Frame, Broken };

  // Appends what has arrived.
  void Append(std::span<const std::uint8_t> bytes);

  // Takes the next frame, type byte to terminator, or the single byte of a keep-alive.  On
  // Broken, Problem() says why, and all further calls say the same.
  Result Next(Bytes* frame);

  const std::string& Problem() const { return problem_; }

 private:
  Result Break(std::string problem);
  Result Check(const Bytes& frame);

  Bytes buffer_;
  std::size_t start_ = 0;    // where the next frame begins
  std::size_t scanned_ = 0;  // it does not end before this place
  std::string problem_;
};

// Builds one frame.
class FrameWriter {
 public:
  explicit FrameWriter(std::uint8_t type) : frame_{type} {}

  // REQUIRES: 0 <= value <= 127
  FrameWriter& Byte(int value);

  // REQUIRES: 0 <= value <= kLargestPair
  FrameWriter& Pair(int value);

  // The frame with its checksum and terminator.  The writer cannot be used again.
  Bytes Finish();

 private:
  Bytes frame_;
  int sum_ = 0;
};

// Reads the data of one frame, front to back.  Each operation reads nothing and returns false
// when too few bytes are left.
class FrameReader {
 public:
  // `frame` is one of FrameCutter's of at least three bytes; it must outlive the reader.
  explicit FrameReader(std::span<const std::uint8_t> frame)
      : rest_(frame.subspan(1, frame.size() - 3)) {}

  bool Byte(int* value);
  bool Pair(int* value);
  bool Text(std::size_t length, std::string* text);
  bool AtEnd() const { return rest_.empty(); }

 private:
  std::span<const std::uint8_t> rest_;
};

}  // namespace teskpanel

#endif  // TESKPANEL_FRAME_H_
