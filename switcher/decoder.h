// SPDX-License-Identifier: MIT

#ifndef SWITCHER_DECODER_H_
#define SWITCHER_DECODER_H_

#include <cstdint>
#include <span>
#include <string_view>

#include "model/system_model.h"
#include "switcher/decode_status.h"
#include "switcher/switcher_events.h"

namespace switcher {

// Checks whole messages from the switcher and writes what they carry into the model.
class Decoder {
 public:
  // Both must outlive the decoder.
  Decoder(model::SystemModel& model, SwitcherEvents& events) : model_(model), events_(events) {}

  // Who is told of each message while RetrieveActive is set; null for nobody.
  void SetHistory(MessageHistory* history) { history_ = history; }

  // Decodes one message, code to end byte, by its code.  A message that fails its checks is
  // told to the history and otherwise dropped.  A message with another code does nothing.
  void Decode(std::span<const std::uint8_t> message);

 private:
  void DecodeCrosspointRow(std::span<const std::uint8_t> message);
  void DecodeGainReport(std::span<const std::uint8_t> message);
  void DecodeTally(std::span<const std::uint8_t> message);
  void TellHistory(std::string_view description, std::span<const std::uint8_t> message,
                   DecodeStatus status);

  model::SystemModel& model_;
  SwitcherEvents& events_;
  MessageHistory* history_ = nullptr;
};

}  // namespace switcher

#endif  // SWITCHER_DECODER_H_
