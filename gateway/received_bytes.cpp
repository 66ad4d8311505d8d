// SPDX-License-Identifier: MIT

#include "gateway/received_bytes.h"

#include <algorithm>
#include <utility>

namespace gateway {

void ReceivedBytes::Append(std::span<const std::uint8_t> bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

std::size_t ReceivedBytes::LengthToTerminator() {
  const std::span<const std::uint8_t> view = View();
  const auto found =
      std::find(view.begin() + static_cast<std::ptrdiff_t>(searched_), view.end(), kTerminator);
  searched_ = static_cast<std::size_t>(found - view.begin());
  return found == view.end() ? 0 : searched_ + 1;
}

Bytes ReceivedBytes::Cut(std::size_t count) {
  const auto front = View().first(count);
  Bytes taken(front.begin(), front.end());
  begin_ += count;
  searched_ -= std::min(searched_, count);
  // What has been taken off goes when it is the greater part: so each byte is moved once at most.
  if (begin_ > bytes_.size() / 2) {
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(begin_));
    begin_ = 0;
  }
  return taken;
}

void ReceivedBytes::Assign(Bytes bytes) {
  bytes_ = std::move(bytes);
  begin_ = 0;
  searched_ = 0;
}

}  // namespace gateway
