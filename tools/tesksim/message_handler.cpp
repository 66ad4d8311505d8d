// SPDX-License-Identifier: MIT

#include "tools/tesksim/message_handler.h"

#include <utility>

namespace tesksim {

Outcome Rejected(switcher::DecodeStatus status, std::string text) {
  switch (status) {
    case switcher::DecodeStatus::WrongChannel:
      return {.result = Outcome::Result::Refused, .text = std::move(text)};
    case switcher::DecodeStatus::WrongSize:
      return {.text = "wrong length"};
    case switcher::DecodeStatus::ChecksumFailed:
      return {.text = "wrong checksum"};
    default:
      return {.text = "no end byte"};
  }
}

}  // namespace tesksim
