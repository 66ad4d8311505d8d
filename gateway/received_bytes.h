// SPDX-License-Identifier: MIT

#ifndef GATEWAY_RECEIVED_BYTES_H_
#define GATEWAY_RECEIVED_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <span>

#include "gateway/panel_frame.h"

namespace gateway {

// What a client has sent and what was not decoded yet, in the order of its arrival.  Taking bytes
// off the front and looking for the end of a frame cost the same however much is kept: a client
// that sends without ever ending a frame costs no more than one that is quiet.
class ReceivedBytes {
 public:
  bool empty() const { return size() == 0; }
  std::size_t size() const { return bytes_.size() - begin_; }
  std::span<const std::uint8_t> View() const { return std::span(bytes_).subspan(begin_); }

  // REQUIRES: !empty()
  std::uint8_t front() const { return bytes_[begin_]; }

  void Append(std::span<const std::uint8_t> bytes);

  // How many bytes there are up to the first terminator, that included; 0 while there is none.
  std::size_t LengthToTerminator();

  // So many bytes from the front have been looked at and are no terminator; LengthToTerminator()
  // does not look at them again.
  std::size_t Searched() const { return searched_; }

  // Takes the first `count` bytes off.  REQUIRES: count <= size()
  Bytes Cut(std::size_t count);

  // Keeps these instead of what there is.
  void Assign(Bytes bytes);
  void Clear() { Assign({}); }

 private:
  Bytes bytes_;
  std::size_t begin_ = 0;     // what stands before has been taken off
  std::size_t searched_ = 0;  // counts from begin_
};

}  // namespace gateway

#endif  // GATEWAY_RECEIVED_BYTES_H_
