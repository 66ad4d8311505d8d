// SPDX-License-Identifier: MIT

#include "switcher/wire/decode_status.h"

namespace switcher {

std::string_view StatusWord(DecodeStatus status) {
  switch (status) {
    case DecodeStatus::Ok:
      return "OK";
    case DecodeStatus::ChecksumFailed:
      return "Failed Csum";
    case DecodeStatus::WrongSize:
      return "Size Error";
    case DecodeStatus::WrongChannel:
      return "Channel Error";
    case DecodeStatus::MissingEnd:
      return "Missing EOM";
    case DecodeStatus::NotStored:
      break;
  }
  return "";
}

}  // namespace switcher
